#pragma once

#include "engine/CandidateFinder.h"
#include "engine/EngineOptions.h"
#include "engine/KeywordPrefilter.h"
#include "engine/LineAutomaton.h"
#include "engine/SearchCondition.h"

/// All that the workers of one run read and none of them changes: made when the
/// run starts, shared by its threads.
class SearchPlan {
public:
    SearchPlan(const SearchCondition &condition, const EngineOptions &options);

    const SearchCondition &condition() const { return m_condition; }
    const SearchLimits &limits() const { return m_limits; }
    bool visitEveryLine() const { return m_visitEveryLine; }
    const KeywordPrefilter &prefilter() const { return m_prefilter; }
    const CandidateFinder &finder() const { return m_finder; }
    /// Of a keyword that is a pattern; for any other it is not usable.
    const LineAutomaton &automaton() const { return m_automaton; }

private:
    SearchPlan(const SearchCondition &condition, const EngineOptions &options,
               const RequiredLiteral &required);

    SearchCondition m_condition;
    SearchLimits m_limits;
    bool m_visitEveryLine;
    KeywordPrefilter m_prefilter;
    CandidateFinder m_finder;
    LineAutomaton m_automaton;
};
