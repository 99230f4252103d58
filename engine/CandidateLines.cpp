#include "engine/CandidateLines.h"

#include "engine/CandidateFinder.h"
#include "engine/LineMatcher.h"

#include <QStringView>

#include <algorithm>

namespace {

/// Walks forward through a text and knows the number and bounds of the line
/// that it stands on.
class LineCursor {
public:
    explicit LineCursor(QStringView text) : m_text(text) { findEnd(); }

    qint64 number() const { return m_number; }
    qint64 end() const { return m_end; }
    QStringView line() const { return m_text.mid(m_start, m_end - m_start); }

    bool next()
    {
        if (m_end >= m_text.size())
            return false;
        m_start = m_end + 1;
        ++m_number;
        findEnd();
        return true;
    }

    /// Goes to the line that position, not before the present line, lies on.
    void moveTo(qint64 position)
    {
        if (position <= m_end)
            return;
        const QChar *const from = m_text.data() + m_end;
        const QChar *const to = m_text.data() + position;
        m_number += std::count(from, to, QChar(QLatin1Char('\n')));
        m_start = m_text.lastIndexOf(QLatin1Char('\n'), position - 1) + 1;
        findEnd();
    }

private:
    void findEnd()
    {
        const qint64 end = m_text.indexOf(QLatin1Char('\n'), m_start);
        m_end = end < 0 ? m_text.size() : end;
    }

    QStringView m_text;
    qint64 m_start = 0;
    qint64 m_end = 0;
    qint64 m_number = 1;
};

} // namespace

QStringList CandidateLines::match(LineMatcher &matcher, const CandidateFinder &finder,
                                  const QString &text)
{
    matcher.begin();
    LineCursor cursor{QStringView(text)};
    qint64 candidate = finder.next(text, 0);
    while (candidate >= 0) {
        cursor.moveTo(candidate);
        matcher.visit(cursor.number(), cursor.line());
        while (cursor.number() < matcher.lastLineOfInterest() && cursor.next())
            matcher.visit(cursor.number(), cursor.line());
        if (!cursor.next())
            break;
        candidate = finder.next(text, cursor.end() - cursor.line().size());
    }
    return matcher.takeHits();
}
