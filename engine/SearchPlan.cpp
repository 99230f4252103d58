#include "engine/SearchPlan.h"

#include "engine/LineMatcher.h"

namespace {

/// A pattern of nothing but characters is looked for as a plain text, which
/// takes other characters for the same than a pattern does. Where the words of a list
/// stand is known without an automaton, which may take long to make of many.
LineAutomaton automatonOf(const SearchCondition &condition, const RequiredLiteral &required)
{
    if (!condition.regExp() || required.isWholePattern() || required.isList()
        || required.neverMatches())
        return LineAutomaton();
    return LineAutomaton(LineMatcher::effectiveKeyword1(condition), condition.caseSensitivity());
}

} // namespace

SearchPlan::SearchPlan(const SearchCondition &condition, const EngineOptions &options)
    : SearchPlan(condition, options,
                 RequiredLiteral(LineMatcher::effectiveKeyword1(condition), condition.regExp(),
                                 condition.caseSensitivity()))
{
}

SearchPlan::SearchPlan(const SearchCondition &condition, const EngineOptions &options,
                       const RequiredLiteral &required)
    : m_condition(condition)
    , m_limits(options.limits)
    , m_visitEveryLine(options.visitEveryLine)
    , m_prefilter(required)
    , m_finder(required)
    , m_automaton(automatonOf(condition, required))
{
}
