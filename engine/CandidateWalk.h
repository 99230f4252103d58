#pragma once

#include "engine/LineMatcher.h"

#include <QtGlobal>

/// Why a line is visited.
enum class LineRole {
    Candidate, ///< it may match keyword1
    Follower ///< it follows a pending hit within the line distance
};

/// Leads cursor, which stands on the first line, over the lines that can matter,
/// in their order. next(from) tells a position on the first candidate, of the
/// lines that begin at or after from, or -1; visit(role) hands the cursor's line
/// to the matcher, or returns false to end the walk, as does this function then.
template <typename Cursor, typename Next, typename Visit>
bool walkCandidates(const LineMatcher &matcher, Cursor &cursor, const Next &next,
                    const Visit &visit)
{
    for (qint64 candidate = next(0); candidate >= 0; candidate = next(cursor.start())) {
        cursor.moveTo(candidate);
        if (!visit(LineRole::Candidate))
            return false;
        while (cursor.number() < matcher.lastLineOfInterest() && cursor.next()) {
            if (!visit(LineRole::Follower))
                return false;
        }
        if (!cursor.next())
            break;
    }
    return true;
}
