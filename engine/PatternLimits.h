#pragma once

#include <QRegExp>
#include <QString>

/// Limits for patterns that people type or that a file holds.
///
/// QRegExp takes groups by recursion, copies what a counted repetition repeats,
/// and joins each part with all that may follow it: a pattern of a few characters
/// could use up the stack, the memory or the user's patience. These limits are far
/// above what a search or a language needs. The worst that was found within them,
/// a thousand optional characters, took 0.3 s and 32 MB to compile.
namespace PatternLimits {

/// Groups inside one another.
constexpr int kDeepestNesting = 100;
/// Parts once all repetitions are copied out.
constexpr int kMostElements = 100000;
/// Pairs of parts that may follow one another: "(a|b)c" has two.
constexpr int kMostConnections = 500000;

/// Whether pattern, in QRegExp's classic syntax, stays within the limits. It need
/// not be valid.
bool isReasonable(const QString &pattern);

/// The pattern as an expression. An invalid one, which never matches, when the
/// pattern is invalid or not reasonable.
QRegExp compiled(const QString &pattern, Qt::CaseSensitivity sensitivity);

} // namespace PatternLimits
