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
/// length for patterns as plain as "\w+\d". So a pattern that repeats something is
/// tried on pieces of a long line, and only where LineAutomaton does not rule a
/// match out:
///
/// 1. A line of up to kPiece + kBeyond UTF-16 code units is seen whole.
/// 2. In a longer one a look sees the line from its start ("^" matches there alone)
///    to kBeyond units behind the piece that it goes through. A match that begins
///    in the piece and would reach farther ends there, or is another one, or none;
///    one of a pattern with "$" is none then. Lookaheads see no farther.
/// 3. A pattern that repeats nothing has no match longer than itself. Its matches
///    are exact in every line.
///
/// Not re-entrant, as QRegExp is not.
class LineFinder {
public:
    struct Match {
        int start = -1;
        int length = 0;
        bool isValid() const { return start >= 0; }
    };

    /// What one look found. Without a match, next says where the next look goes on:
    /// forward from there; backward before it, at the line's start it is 0.
    struct Look {
        Match match;
        int next = 0;
    };

    static constexpr int kPiece = 1024;
    static constexpr int kBeyond = 256;
    static constexpr int kNoLimit = std::numeric_limits<int>::max();

    /// Never finds anything.
    LineFinder() = default;
    explicit LineFinder(const QRegExp &pattern);

    /// The first match, not an empty one, that begins at or behind from and before
    /// limit and before the end of the piece that from lies in. There is nothing more
    /// to look for when next is the lesser of limit and the line's size.
    Look lookForward(const QString &line, int from, int limit = kNoLimit);

    /// The last match, not an empty one, that begins before from, at or behind the
    /// start of the piece that the unit before from lies in, and ends at or before
    /// end.
    Look lookBackward(const QString &line, int from, int end);

private:
    /// Of a line: its units from start on, and up to seen for matches that begin
    /// before end.
    struct Piece {
        int start;
        int end;
        int seen;
    };

    Piece pieceAt(const QString &line, int unit) const;
    bool isRuledOut(const QString &line, int from, int to);
    bool mayBeCut(const Piece &piece, const Match &match, const QString &line) const;

    QRegExp m_pattern;
    bool m_repeats = false;
    bool m_hasEnd = false; // "$"
    std::optional<LineAutomaton> m_automaton; // made for the first long line
};
