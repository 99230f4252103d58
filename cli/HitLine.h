#pragma once

#include <QString>

/// The parts of a hit string: "  ", the line number, ":", the display column,
/// ":" and the line's text, the numbers right-aligned in five places or wider.
struct HitLine {
    int line = 0; ///< from 1
    int column = 0; ///< display column, from 1
    int textStart = 0; ///< index of the text in the hit string

    /// The numbers are 0 and the text is the whole string where hit is none.
    static HitLine parse(const QString &hit);

    QString text(const QString &hit) const { return hit.mid(textStart); }
};
