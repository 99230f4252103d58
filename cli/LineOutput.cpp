#include "cli/LineOutput.h"

namespace {

constexpr int kPieceSize = 64 * 1024;

} // namespace

LineOutput::LineOutput(StandardStreams::Stream stream, const std::function<void()> &beforeWrite,
                       const std::function<bool()> &giveUp)
    : m_stream(stream), m_beforeWrite(beforeWrite), m_giveUp(giveUp)
{
    // Once it was told to keep its room, the buffer does so when it is emptied.
    m_buffer.reserve(2 * kPieceSize);
}

void LineOutput::add(const QByteArray &lines)
{
    // The lines of one file may be nearly all that an array holds.
    if (lines.size() >= kPieceSize) {
        flush();
        write(lines);
        return;
    }
    m_buffer += lines;
    if (m_buffer.size() >= kPieceSize)
        flush();
}

void LineOutput::flush()
{
    write(m_buffer);
    m_buffer.resize(0);
}

void LineOutput::write(const QByteArray &bytes)
{
    if (m_closed || bytes.isEmpty())
        return;
    m_beforeWrite();
    const StandardStreams::WriteResult result =
        StandardStreams::write(m_stream, bytes, m_giveUp, &m_errorText);
    m_closed = result != StandardStreams::WriteResult::Written;
}
