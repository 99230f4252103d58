#pragma once

#include <QRegExp>
#include <QString>

/// The patterns of language definition files: typed by people, or whatever a
/// broken file holds.
namespace LanguagePattern {

/// QRegExp takes groups by recursion and copies what a counted repetition
/// repeats: a pattern beyond these limits could use up the stack or the memory.
/// Both are far above what a definition needs.
constexpr int kDeepestNesting = 100;
constexpr int kMostElements = 20000;

/// Whether pattern stays within the limits. It need not be valid.
bool isReasonable(const QString &pattern);

/// The pattern as an expression, case-sensitive; an empty one, which is not to
/// be applied, when the pattern is invalid or not reasonable.
QRegExp compiled(const QString &pattern);

} // namespace LanguagePattern
