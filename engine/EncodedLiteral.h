#pragma once

#include "engine/ByteSearch.h"

#include <QString>

/// The bytes by which a file shows that its text may hold a literal.
///
/// Every text with the literal comes from bytes that hold the needle or one of
/// the strays. The needle has the usual form of each character, in both cases
/// when case is ignored; the strays are the unusual forms, each alone: a second
/// code of the same character, a character that is the same only without its
/// case (the Kelvin sign for k). They are rare, so a file that has one is not
/// worth a closer look.
struct EncodedLiteral {
    enum Answer {
        Unknown, ///< any file may have the literal
        Impossible, ///< no file of the code set can have it
        Searchable ///< needle and strays tell
    };

    Answer answer = Unknown;
    BytePattern needle;
    QVector<BytePattern> strays;

    /// The needle may be a part of the literal only. It stands in the bytes
    /// without a gap if nothing that decodes to nothing stands in between (a
    /// carriage return, an escape sequence).
    static EncodedLiteral encode(const QString &literal, Qt::CaseSensitivity sensitivity,
                                 int codeSet);
};
