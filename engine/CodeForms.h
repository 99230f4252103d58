#pragma once

#include <QByteArray>
#include <QVector>

/// The bytes that stand for one character in a file, as the decoder reads it.
struct CodeForms {
    /// All byte sequences that decode to codePoint; the usual one first. When
    /// known is true and this is empty, no file of the code set has the
    /// character.
    QVector<QByteArray> forms;
    /// False: the character may also come from other bytes (a broken sequence, a
    /// lone surrogate, a control that a codec exchanges for another), or may
    /// come and go without a trace. Nothing can be concluded from the bytes.
    bool known = false;

    static CodeForms of(uint codePoint, int codeSet);

    /// Bytes of a code unit, 0 when nothing is known about the code set: 2 and 4
    /// for UTF-16 and UTF-32, whose units only begin at multiples of that, else
    /// 1.
    static int unitSize(int codeSet);
};
