#pragma once

#include "cli/Options.h"

#include <QString>

/// The engine takes an invalid pattern for one that never matches; a person who
/// typed one wants to be told instead.
namespace KeywordCheck {

/// The first thing wrong with the keywords of a search, as one line that names
/// the keyword; empty when they can be searched.
QString error(const Options &options);

} // namespace KeywordCheck
