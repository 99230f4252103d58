#pragma once

#include "cli/Options.h"
#include "cli/RunReport.h"
#include "engine/SearchCondition.h"

#include <memory>

class LineOutput;

/// The report for the mode and the format asked for. output must outlive it;
/// color: the output is coloured.
std::unique_ptr<RunReport> makeReport(const Options &options, const SearchCondition &condition,
                                      bool color, LineOutput &output);
