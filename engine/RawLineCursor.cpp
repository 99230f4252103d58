#include "engine/RawLineCursor.h"

#include "engine/ByteScan.h"

#include <QtEndian>

#include <cstring>

namespace {

quint16 unitAt(const char *bytes)
{
    quint16 unit = 0;
    std::memcpy(&unit, bytes, sizeof unit);
    return unit;
}

} // namespace

RawLineCursor::RawLineCursor(const char *bytes, qint64 size, int unitSize, bool bigEndian,
                             qint64 firstNumber)
    : m_bytes(bytes)
    , m_size(size - size % unitSize)
    , m_unitSize(unitSize)
    , m_lineFeed(bigEndian ? qToBigEndian<quint16>('\n') : qToLittleEndian<quint16>('\n'))
    , m_end(lineFeedFrom(0))
    , m_number(firstNumber)
{
}

bool RawLineCursor::isLineFeed(qint64 at) const
{
    return m_unitSize == 1 ? m_bytes[at] == '\n' : unitAt(m_bytes + at) == m_lineFeed;
}

/// The first line feed at or after at, or the end.
qint64 RawLineCursor::lineFeedFrom(qint64 at) const
{
    while (at < m_size) {
        const auto *found = static_cast<const char *>(
            std::memchr(m_bytes + at, '\n', static_cast<size_t>(m_size - at)));
        if (found == nullptr)
            return m_size;
        at = found - m_bytes;
        at -= at % m_unitSize;
        if (isLineFeed(at))
            return at;
        at += m_unitSize;
    }
    return m_size;
}

qint64 RawLineCursor::lineFeedsBetween(qint64 from, qint64 to) const
{
    if (m_unitSize == 1)
        return ByteScan::count(m_bytes + from, to - from, '\n');
    qint64 found = 0;
    for (qint64 at = from; at + 2 <= to; at += 2)
        found += unitAt(m_bytes + at) == m_lineFeed ? 1 : 0;
    return found;
}

bool RawLineCursor::next()
{
    if (m_end >= m_size)
        return false;
    m_start = m_end + m_unitSize;
    ++m_number;
    m_end = lineFeedFrom(m_start);
    return true;
}

void RawLineCursor::moveTo(qint64 position)
{
    if (position < m_end + m_unitSize)
        return;
    qint64 start = position - position % m_unitSize;
    while (!isLineFeed(start - m_unitSize))
        start -= m_unitSize;
    m_number += lineFeedsBetween(m_end, start);
    m_start = start;
    m_end = lineFeedFrom(start);
}
