#include "engine/FileReader.h"

#include "engine/TextDecoder.h"

#include <algorithm>
#include <cstring>

namespace {

/// A buffer that grew beyond this is given back after the file.
constexpr qint64 kKeptBytes = 8 << 20;
/// At once, so that a stop is not waited for longer than this takes.
constexpr qint64 kLargestRead = 8 << 20;

} // namespace

void FileReader::reserve(qint64 bytes)
{
    m_room = bytes;
    if (m_buffer.size() >= bytes && m_buffer.size() <= std::max(kKeptBytes, bytes))
        return;
    m_buffer = QByteArray(); // never two large ones at once
    m_buffer = QByteArray(static_cast<int>(bytes), Qt::Uninitialized);
}

FileReader::Status FileReader::open(const QString &path, qint64 limit, TypeCheck check,
                                    qint64 atLeast)
{
    m_size = 0;
    m_dropped = 0;
    m_sizeAtOpen = 0;
    m_atEnd = true;
    m_stopped = false;
    m_failed = false;
    m_file.emplace(path, check);
    if (!m_file->isOpen())
        return Status::CannotOpen;
    m_sizeAtOpen = m_file->size();
    m_limit = std::min(limit, kLargestText);
    if (m_sizeAtOpen > m_limit) {
        m_file.reset();
        return Status::TooLarge;
    }
    m_atEnd = false;
    // One byte more than the file has: see fill().
    reserve(std::max(std::min(atLeast, m_sizeAtOpen) + 1, kPieceSize));
    fill();
    if (m_atEnd)
        m_file.reset();
    return m_failed && m_size == 0 ? Status::CannotOpen : Status::Read;
}

FileReader::Status FileReader::read(const QString &path, qint64 limit, TypeCheck check)
{
    const Status status = open(path, limit, check);
    if (status == Status::Read)
        readWhole();
    return status;
}

/// Reads until there is no more room or no more file. A read that leaves room
/// unused has met the end, which saves the further call that would say so. A
/// virtual file that tells no size hands out a page a call and ends only with
/// nothing.
void FileReader::fill()
{
    while (!m_atEnd && m_size < m_room) {
        const qint64 wanted = std::min(m_room - m_size, kLargestRead);
        const qint64 count = m_file->readSome(m_buffer.data() + m_size, wanted);
        m_failed = count < 0;
        m_size += std::max<qint64>(count, 0);
        const qint64 total = m_dropped + m_size;
        m_atEnd = count <= 0 || (count < wanted && m_sizeAtOpen > 0 && total >= m_sizeAtOpen)
            || total > m_limit;
        if (!m_atEnd && m_stop && m_stop())
            m_atEnd = m_stopped = true;
    }
    if (m_atEnd)
        m_size = std::min(m_size, std::max(m_limit, m_sizeAtOpen) - m_dropped);
}

void FileReader::advance(qint64 used)
{
    m_dropped += used;
    m_size -= used;
    std::memmove(m_buffer.data(), m_buffer.constData() + used, static_cast<size_t>(m_size));
    if (m_size == m_room) {
        m_room = std::min(m_room * 2, std::max(m_limit, m_size) + 1);
        m_buffer.resize(static_cast<int>(std::max<qint64>(m_room, m_buffer.size())));
    }
    fill();
}

void FileReader::readWhole()
{
    if (m_atEnd && m_dropped == 0)
        return;
    m_file->rewind();
    m_size = 0;
    m_dropped = 0;
    m_atEnd = false;
    reserve(std::max(m_sizeAtOpen + 1, kPieceSize));
    fill();
    while (!m_atEnd)
        advance(0);
    m_file.reset();
}
