#pragma once

#include "cli/Options.h"
#include "cli/RunReport.h"
#include "engine/EngineOptions.h"
#include "engine/SearchCondition.h"

#include <memory>

class LineOutput;

/// The report for the mode and the format asked for. output must outlive it;
/// color: the output is coloured. limits are those of the search, so that the
/// encodings of the hits are told as the search saw them.
std::unique_ptr<RunReport> makeReport(const Options &options, const SearchCondition &condition,
                                      const SearchLimits &limits, bool color, LineOutput &output);
