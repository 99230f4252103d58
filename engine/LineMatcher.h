#pragma once

#include "engine/SearchCondition.h"

#include <QRegExp>
#include <QStringList>
#include <QStringView>

#include <functional>

/// Turns the text of one file into its list of hit strings: the rule of what a
/// hit is. Feed it the lines in ascending order, then take the hits.
///
/// 1. A line on which keyword1 is found becomes the pending hit; an earlier
///    pending hit that is not yet reported is dropped.
/// 2. Without keyword2 the pending hit is confirmed at once; with it, on the
///    first line that holds keyword2 and is at most plusline lines further.
/// 3. A keyword1 line that also holds keyword3 is not reported, whatever
///    follows.
/// 4. A confirmed hit is reported with its own line's text and the display
///    column of where keyword1 was found. A hit on an empty line is not.
///
/// A pattern that is invalid, or beyond PatternLimits, never matches.
///
/// Whole words in plain mode: the line's pieces between word boundaries are
/// compared with keyword1, while the column stays that of the first plain
/// occurrence, even when the whole word stands later on the line.
///
/// Lines may be left out that hold no match of keyword1 and do not follow one
/// within plusline lines: the hits stay the same (see CandidateLines).
///
/// Not re-entrant: one object a thread, used for one file after another. The
/// patterns are built once an object, because building them takes a lock that
/// all threads share.
class LineMatcher {
public:
    /// tabWidth in display columns, at least 1.
    LineMatcher(const SearchCondition &condition, int tabWidth);

    /// keyword1 as it is matched: in pattern and word mode together it is
    /// wrapped in word boundaries.
    static QString effectiveKeyword1(const SearchCondition &condition);

    /// Asked again and again, with a pattern before each line. Once it says true,
    /// lines are no longer looked at and wasStopped() is true until begin().
    void stopWhen(const std::function<bool()> &stop) { m_stop = stop; }
    bool wasStopped() const { return m_stopped; }

    /// What NextStart says if it does not know, or there is no such place.
    enum Start : qint64 { Nowhere = -1, Anywhere = -2 };
    /// The first position in a line, at or behind from, where a match of keyword1 may
    /// begin. Anywhere is only said for from 0.
    using NextStart = std::function<qint64(QStringView line, qint64 from)>;

    /// For a keyword1 that is a pattern: it is tried only there.
    void tryAt(const NextStart &nextStart) { m_nextStart = nextStart; }

    /// The hits of a whole text, every line visited.
    QStringList matchEveryLine(const QString &text);

    /// Forgets the pending hit and the hits of the file before.
    void begin();
    /// lineNumber counts from 1 and grows from call to call.
    void visit(qint64 lineNumber, QStringView line);
    /// The last line number that is of interest because of the pending hit; -1
    /// when there is none.
    qint64 lastLineOfInterest() const;
    /// The line whose text a pending hit refers to: it must stay until the hit is
    /// reported or replaced. -1 when there is none.
    qint64 pendingLine() const { return m_pending.lineNumber; }
    QStringList takeHits();

private:
    struct PendingHit {
        qint64 lineNumber = -1; ///< -1: none
        QStringView text; ///< empty once excluded: nothing to report
        qint64 position = -1;
    };

    bool mustStop();
    qint64 find(const QString &keyword, QRegExp &pattern, QStringView line) const;
    bool matchesAt(QStringView line, qint64 start) const;
    qint64 findAtStarts(QStringView line) const;
    qint64 findKeyword1(QStringView line);
    bool holdsWholeWord(QStringView line) const;
    bool confirms(qint64 lineNumber, QStringView line);
    void report();

    SearchCondition m_condition;
    int m_tabWidth;
    QRegExp m_pattern1;
    QRegExp m_pattern2;
    QRegExp m_pattern3;
    QRegExp m_wordBoundary;
    unsigned m_visited = 0; ///< lines of all files, for the yields
    std::function<bool()> m_stop;
    bool m_stopped = false;
    NextStart m_nextStart;
    bool m_asksBefore = false; // m_pattern1, for the unit before a match, as "\b" does
    PendingHit m_pending;
    QStringList m_hits;
};
