#include "engine/FileSearcher.h"

#include "engine/CandidateLines.h"
#include "engine/SearchPlan.h"
#include "engine/TextDecoder.h"

FileSearcher::FileSearcher(const SearchPlan &plan)
    : m_plan(plan), m_matcher(plan.condition(), plan.limits().tabcolm)
{
}

QStringList FileSearcher::search(const char *content, qint64 size, int codeSet)
{
    if (m_plan.visitEveryLine())
        return m_matcher.matchEveryLine(searchableText(content, size, codeSet));
    if (!m_plan.prefilter().mayMatch(content, size, codeSet))
        return {};
    const QString text = searchableText(content, size, codeSet);
    if (!m_plan.finder().usable())
        return m_matcher.matchEveryLine(text);
    return CandidateLines::match(m_matcher, m_plan.finder(), text);
}
