#include "engine/CandidateLines.h"

#include "engine/CandidateWalk.h"
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
    qint64 start() const { return m_start; }
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

QStringList CandidateLines::match(LineMatcher &matcher, const Next &next, const QString &text)
{
    matcher.begin();
    LineCursor cursor{QStringView(text)};
    const auto visit = [&matcher, &cursor](LineRole) {
        matcher.visit(cursor.number(), cursor.line());
        return true;
    };
    walkCandidates(matcher, cursor, next, visit);
    return matcher.takeHits();
}
