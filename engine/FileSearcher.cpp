#include "engine/FileSearcher.h"

#include "engine/CandidateLines.h"
#include "engine/SearchPlan.h"
#include "engine/TextDecoder.h"

FileSearcher::FileSearcher(const SearchPlan &plan)
    : m_plan(plan)
    , m_matcher(plan.condition(), plan.limits().tabcolm)
    , m_rawLines(m_plan, m_matcher)
{
    const CandidateFinder &finder = m_plan.finder();
    if (finder.isList() && !m_plan.visitEveryLine())
        m_matcher.tryAt([&finder](QStringView line, qint64 from) {
            const bool isUnknown = from == 0 && finder.mayMatchAnywhere(line);
            return isUnknown ? qint64(LineMatcher::Anywhere) : finder.nextStart(line, from);
        });
}

QStringList FileSearcher::search(PieceSource &pieces, int codeSet)
{
    if (!m_plan.visitEveryLine()) {
        if (const std::optional<QStringList> hits = m_rawLines.search(pieces, codeSet))
            return *hits;
    }
    pieces.readWhole();
    const char *const content = pieces.content();
    const qint64 size = pieces.size();
    if (m_plan.visitEveryLine())
        return m_matcher.matchEveryLine(searchableText(content, size, codeSet));
    if (!m_plan.prefilter().mayMatch(content, size, codeSet))
        return {};
    return searchDecoded(searchableText(content, size, codeSet));
}

QStringList FileSearcher::searchDecoded(const QString &text)
{
    if (m_plan.finder().usable())
        return CandidateLines::match(
            m_matcher, [&](qint64 from) { return m_plan.finder().next(text, from); }, text);
    if (m_plan.automaton().isUsable())
        return CandidateLines::match(
            m_matcher, [&](qint64 from) { return m_plan.automaton().next(text, from); }, text);
    return m_matcher.matchEveryLine(text);
}
