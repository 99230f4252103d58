#pragma once

#include "cli/Options.h"
#include "engine/EngineOptions.h"
#include "engine/SearchCondition.h"

/// The command line in the engine's terms. Pure.
namespace SearchRequest {

/// pathlist as PathArguments made it.
SearchCondition condition(const Options &options, const QStringList &pathlist);

/// settings: the limits of the settings file, or the defaults. Exclusions add
/// to those of the settings; size and tab width replace theirs.
EngineOptions engineOptions(const Options &options, const SearchLimits &settings);

} // namespace SearchRequest
