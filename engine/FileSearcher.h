#pragma once

#include "engine/LineMatcher.h"
#include "engine/RawLines.h"

#include <QStringList>

class SearchPlan;

/// Finds the hits in the bytes of one file. One object a thread; the plan must
/// outlive it.
class FileSearcher {
    Q_DISABLE_COPY(FileSearcher)

public:
    explicit FileSearcher(const SearchPlan &plan);

    /// See LineMatcher; what was found in a file that was stopped may be a part of
    /// its hits.
    void stopWhen(const std::function<bool()> &stop) { m_matcher.stopWhen(stop); }
    bool wasStopped() const { return m_matcher.wasStopped(); }

    /// The hit strings of a file's content in line order. codeSet as detected.
    QStringList search(PieceSource &pieces, int codeSet);

private:
    QStringList searchDecoded(const QString &text);

    const SearchPlan &m_plan;
    LineMatcher m_matcher;
    RawLines m_rawLines;
};
