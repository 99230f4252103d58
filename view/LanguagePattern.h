#pragma once

#include <QRegExp>
#include <QString>

/// The patterns of language definition files: typed by people, or whatever a
/// broken file holds.
namespace LanguagePattern {

/// The pattern as an expression, case-sensitive; an empty one, which is not to
/// be applied, when the pattern is invalid or beyond PatternLimits.
QRegExp compiled(const QString &pattern);

} // namespace LanguagePattern
