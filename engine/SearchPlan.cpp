#include "engine/SearchPlan.h"

#include "engine/LineMatcher.h"

SearchPlan::SearchPlan(const SearchCondition &condition, const EngineOptions &options)
    : m_condition(condition)
    , m_limits(options.limits)
    , m_visitEveryLine(options.visitEveryLine)
    , m_prefilter(LineMatcher::effectiveKeyword1(condition), condition.regExp(),
                  condition.caseSensitivity())
    , m_finder(LineMatcher::effectiveKeyword1(condition), condition.regExp(),
               condition.caseSensitivity())
{
}
