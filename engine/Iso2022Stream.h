#pragma once

#include "engine/JapaneseForms.h"

/// ISO-2022-JP as a stream of characters: an escape sequence may stand between
/// any two of them, also one that changes nothing.
namespace Iso2022Stream {

/// A character's byte in the way it is compared: with the high bit set in
/// two-byte characters and clear in others. In a file the high bit may be
/// either, and the codec may or may not mind.
char normalised(char byte, bool twoBytes);

/// The normalised bytes of all characters, without escape sequences and carriage
/// returns. False when the content is not made of whole characters between the
/// given designations, so that bytes may mean something else than they seem to
/// (an unknown escape sequence, a shift, half a character, a control inside
/// two-byte text); *characters is then undefined. The designations' escape
/// sequences have up to four bytes.
bool extractCharacters(const char *bytes, qint64 size,
                       const QVector<JapaneseForms::Designation> &designations,
                       QByteArray *characters);

} // namespace Iso2022Stream
