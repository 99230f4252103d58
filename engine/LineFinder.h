#pragma once

#include "engine/LineAutomaton.h"

#include <QRegExp>
#include <QString>

#include <limits>
#include <optional>

/// Looks for the matches of a pattern in a line by looks that each end soon, so
/// that a window can do something else between two of them.
///
/// QRegExp cannot be interrupted, and its time grows with the square of a line's
/// length for patterns as plain as "\w+\d". So of a pattern that repeats something,
/// LineAutomaton first rules out the pieces of a line where no match can begin; in
/// the others the pattern is tried at one place after the other, and sees no more
/// than kSight UTF-16 code units from there on:
///
/// 1. In a line of up to kSight units, and of matches that are shorter, nothing
///    differs from QRegExp's own search.
/// 2. A longer match ends after kSight units, or is another one, or none; one of a
///    pattern with "$" is none then. Lookaheads see no farther.
/// 3. A pattern that repeats nothing has no match longer than itself. Its matches
///    are those of QRegExp in every line.
///
/// Not re-entrant, as QRegExp is not.
class LineFinder {
public:
    struct Match {
        int start = -1;
        int length = 0;
        bool isValid() const { return start >= 0; }
    };

    /// What one look found. Next says where the next look goes on: forward from there,
    /// backward before it; at the line's start it is 0.
    struct Look {
        Match match;
        int next = 0;
    };

    static constexpr int kPiece = 1024;
    static constexpr int kSight = 1024;
    static constexpr int kNoLimit = std::numeric_limits<int>::max();

    /// Never finds anything.
    LineFinder() = default;
    /// sight stands for kSight in what is said above.
    explicit LineFinder(const QRegExp &pattern, int sight = kSight);

    /// Tells that each match begins where "\b" matches, so that other places are not
    /// tried.
    void setBeginsAtBoundary() { m_beginsAtBoundary = true; }

    /// The first match, not an empty one, that begins at or behind from and before
    /// limit. Without a match the look may have ended anywhere, at the end of the piece
    /// of kPiece units that from lies in at the latest. There is nothing more to look
    /// for when next is the lesser of limit and the line's size.
    Look lookForward(const QString &line, int from, int limit = kNoLimit);

    /// The last match, not an empty one, that begins before from and ends at or before
    /// end. Without a match the look may have ended anywhere, at the start of the piece
    /// at the latest.
    Look lookBackward(const QString &line, int from, int end);

private:
    bool goesByPlaces(const QString &line) const;
    bool isRuledOut(const QString &line, int from, int to);
    int lengthAt(const QString &line, int start, int *units) const;
    Look wholeForward(const QString &line, int from, int limit) const;
    Look wholeBackward(const QString &line, int from, int end) const;

    QRegExp m_pattern;
    int m_sight = kSight;
    bool m_repeats = false;
    bool m_hasEnd = false; // "$"
    bool m_beginsAtBoundary = false;
    bool m_asksBefore = false; // for the unit before a match, as "\b" does
    std::optional<LineAutomaton> m_automaton; // made for the first long line
};
