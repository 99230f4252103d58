#pragma once

#include <QStringList>
#include <QStringView>

#include <functional>

class LineMatcher;

namespace CandidateLines {

/// A position on the first line that may match keyword1, of those that begin at
/// or after the given one; -1 if there is none.
using Next = std::function<qint64(qint64 from)>;

/// The hits of text as matcher.matchEveryLine(text) gives them, visiting only
/// the lines that can matter: those that next finds, and those that follow a
/// pending hit within the line distance.
QStringList match(LineMatcher &matcher, const Next &next, const QString &text);

} // namespace CandidateLines
