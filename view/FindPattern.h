#pragma once

#include <QRegExp>
#include <QString>

/// What the views mark as found for a keyword of the search form.
namespace FindPattern {

struct Options {
    bool regexp = false;
    bool word = false;
    bool ignoreCase = false;
};

/// An empty keyword gives an empty pattern, whatever the options are. A "|" is
/// marked as that character even when the keyword is a pattern: alternatives
/// of a search are not marked. A pattern beyond PatternLimits gives an empty one.
QRegExp forKeyword(const QString &keyword, const Options &options);

} // namespace FindPattern
