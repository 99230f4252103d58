#include "view/LinePattern.h"

#include "view/PatternSplit.h"

#include <algorithm>

LinePattern::LinePattern(const QRegExp &expression, int sight)
    : m_expression(expression), m_sight(sight)
{
}

std::vector<LinePattern::Part> &LinePattern::parts() const
{
    if (!m_parts.empty())
        return m_parts;
    const auto finderOf = [this](const QString &pattern) {
        QRegExp expression = m_expression;
        expression.setPattern(pattern);
        return LineFinder(expression, m_sight);
    };
    const QString pattern = m_expression.pattern();
    const bool isSplit = m_expression.patternSyntax() == QRegExp::RegExp;
    for (const PatternSplit::Part &part :
         isSplit ? PatternSplit::parts(pattern) : PatternSplit::whole(pattern)) {
        const bool isOneText = m_expression.caseSensitivity() == Qt::CaseSensitive;
        m_parts.push_back({finderOf(part.marker),
                           isOneText ? part.literal : QString(),
                           part.longestMatch,
                           {},
                           part.limit});
        if (part.isAtBoundary)
            m_parts.back().marker.setBeginsAtBoundary();
        for (const QString &forbidden : part.forbidden)
            m_parts.back().forbidden.push_back(finderOf(forbidden));
    }
    return m_parts;
}

LinePatternWalk::LinePatternWalk(const LinePattern &pattern, const QString &line, int limit)
    : m_pattern(&pattern), m_line(line), m_limit(std::min(limit, line.size()))
{
    if (line.size() <= LinePattern::kShortLine || pattern.isEmpty())
        return;
    for (const LinePattern::Part &part : pattern.parts())
        m_parts.push_back({{}, std::vector<Search>(part.forbidden.size())});
}

/// Whether it is known what begins at or behind from.
bool LinePatternWalk::Search::isDone(int from, int limit)
{
    if (from < asked)
        *this = {from, from, {}};
    asked = from;
    if (match.isValid() && match.start >= from)
        return true;
    match = {};
    at = std::max(at, from);
    return at >= limit;
}

void LinePatternWalk::Search::step(LineFinder &finder, const QString &line, int limit)
{
    const LineFinder::Look look = finder.lookForward(line, at, limit);
    match = look.match;
    at = match.isValid() ? match.start : look.next;
}

void LinePatternWalk::Search::step(const QString &literal, const QString &line, int limit)
{
    const int start = line.indexOf(literal, at);
    const bool isFound = start >= 0 && start < limit;
    match = isFound ? LineFinder::Match{start, literal.size()} : LineFinder::Match();
    at = isFound ? start : limit;
}

/// Goes on to the next match that may end behind forbiddenStart.
void LinePatternWalk::Search::passMatch(int longest, int forbiddenStart)
{
    at = std::max(match.start, longest <= forbiddenStart ? forbiddenStart - longest : 0) + 1;
    match = {};
}

LinePatternWalk::Look LinePatternWalk::look(int from)
{
    if (m_pattern->isEmpty() || from >= m_limit)
        return {true, {}};
    if (m_parts.empty())
        return lookWhole(from);
    LineFinder::Match best;
    for (std::size_t part = 0; part < m_parts.size(); ++part) {
        if (!lookForPart(part, from))
            return {};
        const LineFinder::Match &match = m_parts[part].marker.match;
        const bool isFirst = match.isValid() && (!best.isValid() || match.start < best.start);
        if (isFirst || (match.start == best.start && match.length > best.length))
            best = match;
    }
    return {true, best};
}

LinePatternWalk::Look LinePatternWalk::lookWhole(int from)
{
    const QRegExp &expression = m_pattern->expression();
    while (!m_whole.isDone(from, m_limit)) {
        const int start = expression.indexIn(m_line, m_whole.at);
        m_whole.at = start < 0 ? m_limit : start + 1;
        if (start >= 0 && start < m_limit && expression.matchedLength() > 0)
            m_whole.match = {start, expression.matchedLength()};
    }
    return {true, m_whole.match};
}

/// Takes one step, or none when the part's match is known. Whether it is.
bool LinePatternWalk::lookForPart(std::size_t part, int from)
{
    LinePattern::Part &finders = m_pattern->parts()[part];
    PartSearch &search = m_parts[part];
    const int limit = std::min(m_limit, finders.limit);
    if (!search.marker.isDone(from, limit)) {
        if (finders.literal.isEmpty())
            search.marker.step(finders.marker, m_line, limit);
        else
            search.marker.step(finders.literal, m_line, limit);
        return false;
    }
    if (!search.marker.match.isValid())
        return true;
    const int end = search.marker.match.start + search.marker.match.length;
    for (std::size_t i = 0; i < search.forbidden.size(); ++i) {
        Search &forbidden = search.forbidden[i];
        if (!forbidden.isDone(end, m_line.size())) {
            forbidden.step(finders.forbidden[i], m_line, m_line.size());
            return false;
        }
        if (forbidden.match.isValid()) {
            search.marker.passMatch(finders.longestMatch, forbidden.match.start);
            return false;
        }
    }
    return true;
}
