#include "engine/LineMatcher.h"

#include "engine/HitString.h"
#include "engine/PatternLimits.h"

#include <QThread>

#include <algorithm>

namespace {

/// Plain lines visited between two questions whether to stop.
constexpr int kLinesPerQuestion = 1024;
/// Lines visited between two yields of the processor: on a busy machine a yield
/// gives away a whole turn, which other programs take.
constexpr int kLinesPerYield = 16 * 1024;

/// A string over the line's own characters, for the functions that take no
/// view; valid as long as the text is.
QString withoutCopy(QStringView line)
{
    return QString::fromRawData(line.data(), static_cast<int>(line.size()));
}

} // namespace

LineMatcher::LineMatcher(const SearchCondition &condition, int tabWidth)
    : m_condition(condition)
    , m_tabWidth(std::max(tabWidth, 1))
    , m_wordBoundary(QStringLiteral("\\b"))
{
    m_condition.keyword1 = effectiveKeyword1(condition);
    if (!condition.regExp()) // building a pattern of a long text takes its time and memory
        return;
    const Qt::CaseSensitivity sensitivity = condition.caseSensitivity();
    m_pattern1 = PatternLimits::compiled(m_condition.keyword1, sensitivity);
    m_asksBefore = m_condition.keyword1.contains(QLatin1String("\\b"), Qt::CaseInsensitive);
    m_pattern2 = PatternLimits::compiled(m_condition.keyword2, sensitivity);
    m_pattern3 = PatternLimits::compiled(m_condition.keyword3, sensitivity);
}

QString LineMatcher::effectiveKeyword1(const SearchCondition &condition)
{
    if (!condition.word() || !condition.regExp())
        return condition.keyword1;
    const QString boundary = QStringLiteral("\\b");
    return boundary + condition.keyword1 + boundary;
}

QStringList LineMatcher::matchEveryLine(const QString &text)
{
    begin();
    const QStringView view(text);
    qint64 lineNumber = 1;
    qint64 start = 0;
    for (;;) {
        const qint64 end = view.indexOf(QLatin1Char('\n'), start);
        if (end < 0)
            break;
        visit(lineNumber++, view.mid(start, end - start));
        start = end + 1;
    }
    visit(lineNumber, view.mid(start));
    return takeHits();
}

void LineMatcher::begin()
{
    m_pending = {};
    m_hits.clear();
    m_stopped = false;
}

/// A pattern may take long for a single line; other lines are over at once.
bool LineMatcher::mustStop()
{
    if (!m_stopped && m_stop && (m_condition.regExp() || m_visited % kLinesPerQuestion == 0))
        m_stopped = m_stop();
    return m_stopped;
}

qint64 LineMatcher::find(const QString &keyword, QRegExp &pattern, QStringView line) const
{
    if (m_condition.regExp())
        return pattern.indexIn(withoutCopy(line));
    return line.indexOf(keyword, 0, m_condition.caseSensitivity());
}

/// By a search backward, which tries its place, what is before that in the text, and
/// nothing else.
bool LineMatcher::matchesAt(QStringView line, qint64 start) const
{
    const qint64 first = m_asksBefore ? std::max<qint64>(start - 1, 0) : start;
    const int place = static_cast<int>(start - first);
    const auto caret = start > 0 ? QRegExp::CaretWontMatch : QRegExp::CaretAtZero;
    return m_pattern1.lastIndexIn(withoutCopy(line.mid(first)), place, caret) == place;
}

qint64 LineMatcher::findAtStarts(QStringView line) const
{
    qint64 start = m_nextStart(line, 0);
    if (start == Anywhere)
        return m_pattern1.indexIn(withoutCopy(line));
    while (start != Nowhere && !matchesAt(line, start))
        start = m_nextStart(line, start + 1);
    return start;
}

bool LineMatcher::holdsWholeWord(QStringView line) const
{
    const QStringList pieces = withoutCopy(line).split(m_wordBoundary);
    return std::any_of(pieces.cbegin(), pieces.cend(), [this](const QString &piece) {
        return piece.compare(m_condition.keyword1, m_condition.caseSensitivity()) == 0;
    });
}

qint64 LineMatcher::findKeyword1(QStringView line)
{
    const qint64 position =
        m_nextStart ? findAtStarts(line) : find(m_condition.keyword1, m_pattern1, line);
    const bool wordWanted = m_condition.word() && !m_condition.regExp();
    if (position >= 0 && wordWanted && !holdsWholeWord(line))
        return -1;
    return position;
}

bool LineMatcher::confirms(qint64 lineNumber, QStringView line)
{
    if (m_pending.lineNumber < 0)
        return false;
    if (m_condition.keyword2.isEmpty())
        return true;
    return lineNumber <= m_pending.lineNumber + m_condition.plusline
        && find(m_condition.keyword2, m_pattern2, line) >= 0;
}

void LineMatcher::visit(qint64 lineNumber, QStringView line)
{
    if (++m_visited % kLinesPerYield == 0)
        QThread::yieldCurrentThread();
    if (mustStop())
        return;
    const qint64 position = findKeyword1(line);
    if (position >= 0)
        m_pending = {lineNumber, line, position};
    const bool confirmed = confirms(lineNumber, line);
    const bool excluded = position >= 0 && !m_condition.keyword3.isEmpty()
        && find(m_condition.keyword3, m_pattern3, line) >= 0;
    if (excluded) {
        m_pending.text = {};
        return;
    }
    if (confirmed && !m_pending.text.isEmpty())
        report();
}

void LineMatcher::report()
{
    const qint64 column =
        HitString::displayColumn(m_pending.text, m_pending.position, m_tabWidth) + 1;
    m_hits.append(HitString::format(m_pending.lineNumber, column, m_pending.text));
    m_pending = {};
}

qint64 LineMatcher::lastLineOfInterest() const
{
    if (m_condition.keyword2.isEmpty() || m_pending.lineNumber < 0 || m_pending.text.isEmpty())
        return -1;
    return m_pending.lineNumber + m_condition.plusline;
}

QStringList LineMatcher::takeHits()
{
    m_pending = {};
    QStringList hits;
    hits.swap(m_hits);
    return hits;
}
