#include "engine/CodeForms.h"

#include "engine/CodeSet.h"
#include "engine/JapaneseForms.h"

#include <QChar>
#include <QString>

namespace {

/// The characters that a decoder also writes where something is broken, and
/// those that it may drop or exchange. Keywords seldom have them, so they are
/// not looked into more closely.
bool isUnreliable(uint codePoint, int unitSize)
{
    if (codePoint < 0x20)
        return codePoint != '\t';
    if (codePoint == '?') // stands for a lone surrogate
        return unitSize > 1;
    return (codePoint >= 0x7F && codePoint < 0xA0) || QChar::isSurrogate(codePoint)
        || QChar::isNonCharacter(codePoint) || codePoint == QChar::ByteOrderMark
        || codePoint == QChar::ReplacementCharacter || codePoint > QChar::LastValidCodePoint;
}

bool isBigEndian(int codeSet)
{
    return codeSet == CodeSet::Utf16Be || codeSet == CodeSet::Utf32Be;
}

QByteArray unitBytes(uint unit, int size, bool bigEndian)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i) {
        const auto byte = static_cast<char>(unit >> (8 * i));
        if (bigEndian)
            bytes.prepend(byte);
        else
            bytes.append(byte);
    }
    return bytes;
}

QByteArray utf16Form(uint codePoint, bool bigEndian)
{
    if (!QChar::requiresSurrogates(codePoint))
        return unitBytes(codePoint, 2, bigEndian);
    return unitBytes(QChar::highSurrogate(codePoint), 2, bigEndian)
        + unitBytes(QChar::lowSurrogate(codePoint), 2, bigEndian);
}

CodeForms japaneseForms(uint codePoint, int codeSet)
{
    const JapaneseForms &forms = JapaneseForms::of(codeSet);
    if (!forms.known() || QChar::requiresSurrogates(codePoint))
        return {};
    const auto character = static_cast<char16_t>(codePoint);
    if (forms.isAmbiguous(character))
        return {};
    return {forms.forms(character), true};
}

} // namespace

int CodeForms::unitSize(int codeSet)
{
    switch (codeSet) {
    case CodeSet::ShiftJis:
    case CodeSet::EucJp:
    case CodeSet::Iso2022Jp:
        return JapaneseForms::of(codeSet).known() ? 1 : 0;
    case CodeSet::Utf8:
        return 1;
    case CodeSet::Utf16Be:
    case CodeSet::Utf16Le:
        return 2;
    case CodeSet::Utf32Be:
    case CodeSet::Utf32Le:
        return 4;
    default:
        return 0;
    }
}

CodeForms CodeForms::of(uint codePoint, int codeSet)
{
    if (isUnreliable(codePoint, unitSize(codeSet)))
        return {};
    switch (codeSet) {
    case CodeSet::ShiftJis:
    case CodeSet::EucJp:
    case CodeSet::Iso2022Jp:
        return japaneseForms(codePoint, codeSet);
    case CodeSet::Utf8:
        return {{QString::fromUcs4(&codePoint, 1).toUtf8()}, true};
    case CodeSet::Utf16Be:
    case CodeSet::Utf16Le:
        return {{utf16Form(codePoint, isBigEndian(codeSet))}, true};
    case CodeSet::Utf32Be:
    case CodeSet::Utf32Le:
        // Many units decode to a surrogate pair, also two of them together.
        if (QChar::requiresSurrogates(codePoint))
            return {};
        return {{unitBytes(codePoint, 4, isBigEndian(codeSet))}, true};
    default:
        return {};
    }
}
