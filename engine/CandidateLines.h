#pragma once

#include <QStringList>

class CandidateFinder;
class LineMatcher;

namespace CandidateLines {

/// The hits of text as matcher.matchEveryLine(text) gives them, visiting only
/// the lines that can matter: those on which finder finds a text that every
/// match of the keyword needs, and those that follow a pending hit within the
/// line distance.
QStringList match(LineMatcher &matcher, const CandidateFinder &finder, const QString &text);

} // namespace CandidateLines
