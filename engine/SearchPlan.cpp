#include "engine/SearchPlan.h"

#include "engine/LineMatcher.h"

namespace {

/// A pattern of nothing but characters is looked for as a plain text, which
/// takes other characters for the same than a pattern does.
LineAutomaton automatonOf(const SearchCondition &condition)
{
    const QString keyword = LineMatcher::effectiveKeyword1(condition);
    const Qt::CaseSensitivity sensitivity = condition.caseSensitivity();
    const RequiredLiteral required(keyword, condition.regExp(), sensitivity);
    if (!condition.regExp() || required.isWholePattern() || required.neverMatches())
        return LineAutomaton();
    return LineAutomaton(keyword, sensitivity);
}

} // namespace

SearchPlan::SearchPlan(const SearchCondition &condition, const EngineOptions &options)
    : m_condition(condition)
    , m_limits(options.limits)
    , m_visitEveryLine(options.visitEveryLine)
    , m_prefilter(LineMatcher::effectiveKeyword1(condition), condition.regExp(),
                  condition.caseSensitivity())
    , m_finder(LineMatcher::effectiveKeyword1(condition), condition.regExp(),
               condition.caseSensitivity())
    , m_automaton(automatonOf(condition))
{
}
