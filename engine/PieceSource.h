#pragma once

#include <QtGlobal>

/// The bytes of one file, piece by piece from its beginning.
class PieceSource {
public:
    virtual ~PieceSource() = default;

    /// The present piece; as long as nothing else is called.
    virtual const char *content() const = 0;
    virtual qint64 size() const = 0; ///< of the piece, in bytes
    /// The piece reaches to the end of the file.
    virtual bool atEnd() const = 0;

    /// Goes on to a piece that begins used bytes after the beginning of the
    /// present one. Not at the end. With 0 the new piece is a longer one.
    virtual void advance(qint64 used) = 0;
    /// Makes the whole file the present piece.
    virtual void readWhole() = 0;
};
