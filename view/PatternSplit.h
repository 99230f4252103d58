#pragma once

#include <QString>
#include <QStringList>

#include <limits>
#include <vector>

/// Takes apart patterns in QRegExp's classic syntax whose look-aheads reach to the
/// end of the line, such as "//(?!.*\*/)". QRegExp walks to the end of the line for
/// each place that such a pattern begins at.
namespace PatternSplit {

constexpr int kUnbounded = std::numeric_limits<int>::max();

/// A match of marker that ends at e is one of the whole pattern when no match of any
/// of the forbidden patterns begins at e or behind it.
struct Part {
    QString marker;
    QStringList forbidden;
    /// What the marker is when it stands for one text only; else empty.
    QString literal;
    /// No match is longer, in UTF-16 code units; kUnbounded if any may be.
    int longestMatch = kUnbounded;
    /// Each match begins before it, in UTF-16 code units: 1 for one where the line
    /// begins, 0 for none at all.
    int limit = kUnbounded;
    /// A match begins at a word's boundary.
    bool isAtBoundary = false;
};

/// The parts of a pattern that QRegExp accepts. The first place where a part matches
/// is where the pattern does, and the longest match of a part there is as long as the
/// pattern's own. What cannot be taken apart is one part and forbids nothing.
///
/// Also alternatives that forbid nothing are parts of their own: what one repeats, or
/// where it may begin, is not so for the others.
std::vector<Part> parts(const QString &pattern);
/// The pattern as one part.
std::vector<Part> whole(const QString &pattern);

} // namespace PatternSplit
