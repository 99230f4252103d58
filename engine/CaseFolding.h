#pragma once

#include <QVector>

/// Which characters are the same when case is ignored. QString::indexOf()
/// compares the folded code points; QRegExp compares the lower-case ones, and
/// characters with the same lower case also fold to the same.
namespace CaseFolding {

/// All code points that fold to what codePoint folds to, itself included, in
/// ascending order: for 'k' also 'K' and the Kelvin sign U+212A.
QVector<uint> variants(uint codePoint);

} // namespace CaseFolding
