#pragma once

#include "engine/LineMatcher.h"

#include <QtGlobal>

/// Why a line is visited.
enum class LineRole {
    Candidate, ///< it may match keyword1
    Follower ///< it follows a pending hit within the line distance
};

/// Leads cursor from the line that it stands on over the lines that can matter,
/// in their order. next(from) tells a position on the first candidate, of the
/// lines that begin at or after from, or -1; visit(role) hands the cursor's line
/// to the matcher, or returns false to end the walk, as does this function then.
///
/// A text may come in parts, each a walk of its own: what a part's first lines
/// follow may be in the part before.
template <typename Cursor, typename Next, typename Visit>
bool walkCandidates(const LineMatcher &matcher, Cursor &cursor, const Next &next,
                    const Visit &visit)
{
    for (;;) {
        while (cursor.number() <= matcher.lastLineOfInterest()) {
            if (!visit(LineRole::Follower))
                return false;
            if (!cursor.next())
                return true;
        }
        const qint64 candidate = next(cursor.start());
        if (candidate < 0)
            return true;
        cursor.moveTo(candidate);
        if (!visit(LineRole::Candidate))
            return false;
        if (!cursor.next())
            return true;
    }
}
