#pragma once

#include <QtGlobal>

/// Walks forward through the lines of an encoded text and knows the number and
/// bounds of the line that it stands on. Positions are in bytes.
class RawLineCursor {
public:
    /// A line feed is a unit of that many bytes, 1 or 2; it begins at a multiple
    /// of that. bytes must outlive the cursor, which stands on the first line;
    /// firstNumber is that line's number.
    RawLineCursor(const char *bytes, qint64 size, int unitSize, bool bigEndian,
                  qint64 firstNumber = 1);

    qint64 number() const { return m_number; } ///< from 1
    qint64 start() const { return m_start; }
    const char *line() const { return m_bytes + m_start; }
    qint64 length() const { return m_end - m_start; } ///< without the line feed

    /// False, and stays, when there is no further line.
    bool next();
    /// Goes to the line that position, not before the present line, lies on.
    void moveTo(qint64 position);
    /// The number of the last line; the cursor stays where it is.
    qint64 lastNumber() const { return m_number + lineFeedsBetween(m_end, m_size); }

private:
    bool isLineFeed(qint64 at) const;
    qint64 lineFeedFrom(qint64 at) const;
    qint64 lineFeedsBetween(qint64 from, qint64 to) const;

    const char *m_bytes;
    qint64 m_size; // whole units
    int m_unitSize;
    quint16 m_lineFeed; // as it stands in memory, for units of 2
    qint64 m_start = 0;
    qint64 m_end = 0;
    qint64 m_number;
};
