#include "engine/EncodedLiteral.h"

#include "engine/CodeForms.h"
#include "engine/CodeSet.h"

#include <QTest>

class EncodedLiteralTest : public QObject {
    Q_OBJECT

private slots:
    void aNeedleHasTheBytesOfTheLiteral();
    void bothCasesAreOneNeedle();
    void theUnusualFormsAreStrays();
    void anUnreliableCharacterSplitsTheLiteral_data();
    void anUnreliableCharacterSplitsTheLiteral();
    void aQuestionMarkIsReliableWhereNoSurrogatesAre();
    void aCharacterOfNoFileMakesTheLiteralImpossible();
    void onlyUnreliableCharactersAreUnknown();
    void theDefaultCodeSetIsUnknown();
    void wideUnitsAreAligned();
    void aLongLiteralIsCut();
    void aPairIsOneCharacterInUtf16AndUnknownInUtf32();
};

namespace {

EncodedLiteral encode(const QString &literal, int codeSet,
                      Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    return EncodedLiteral::encode(literal, sensitivity, codeSet);
}

} // namespace

void EncodedLiteralTest::aNeedleHasTheBytesOfTheLiteral()
{
    const QString literal = QStringLiteral("a日");
    QCOMPARE(encode(literal, CodeSet::Utf8).needle.value, QByteArray("a\xE6\x97\xA5"));
    QCOMPARE(encode(literal, CodeSet::ShiftJis).needle.value, QByteArray("a\x93\xFA"));
    QCOMPARE(encode(literal, CodeSet::EucJp).needle.value, QByteArray("a\xC6\xFC"));
    QCOMPARE(encode(literal, CodeSet::Iso2022Jp).needle.value, QByteArray("a\xC6\xFC"));
    QCOMPARE(encode(literal, CodeSet::Utf16Le).needle.value, QByteArray("a\0\xE5\x65", 4));
    QCOMPARE(encode(literal, CodeSet::Utf16Be).needle.value, QByteArray("\0a\x65\xE5", 4));
    QCOMPARE(encode(literal, CodeSet::Utf32Le).needle.value, QByteArray("a\0\0\0\xE5\x65\0\0", 8));
    QCOMPARE(encode(literal, CodeSet::Utf32Be).needle.value, QByteArray("\0\0\0a\0\0\x65\xE5", 8));
    QVERIFY(encode(literal, CodeSet::Utf8).strays.isEmpty());
    QCOMPARE(encode(literal, CodeSet::Utf8).needle.mask, QByteArray(4, '\xFF'));
}

void EncodedLiteralTest::bothCasesAreOneNeedle()
{
    const EncodedLiteral encoded = encode(QStringLiteral("A1"), CodeSet::Utf8, Qt::CaseInsensitive);
    QCOMPARE(encoded.answer, EncodedLiteral::Searchable);
    QCOMPARE(encoded.needle.value, QByteArray("A1"));
    QCOMPARE(encoded.needle.mask, QByteArray("\xDF\xFF"));
    QVERIFY(encoded.strays.isEmpty());
}

void EncodedLiteralTest::theUnusualFormsAreStrays()
{
    const EncodedLiteral encoded = encode(QStringLiteral("ks"), CodeSet::Utf8, Qt::CaseInsensitive);
    QCOMPARE(encoded.needle.value, QByteArray("KS"));
    QCOMPARE(encoded.strays.size(), 2);
    QCOMPARE(encoded.strays.at(0).value, QByteArray("\xE2\x84\xAA"));
    QCOMPARE(encoded.strays.at(1).value, QByteArray("\xC5\xBF"));
    QVERIFY(encode(QStringLiteral("ks"), CodeSet::ShiftJis, Qt::CaseInsensitive).strays.isEmpty());
}

void EncodedLiteralTest::anUnreliableCharacterSplitsTheLiteral_data()
{
    QTest::addColumn<QString>("character");
    QTest::newRow("replacement character") << QStringLiteral("\uFFFD");
    QTest::newRow("byte-order mark") << QStringLiteral("\uFEFF");
    QTest::newRow("carriage return") << QStringLiteral("\r");
    QTest::newRow("control") << QStringLiteral("\x1A");
    QTest::newRow("delete") << QStringLiteral("\x7F");
    QTest::newRow("C1 control") << QStringLiteral("\u0085");
    QTest::newRow("noncharacter") << QStringLiteral("\uFFFE");
    QTest::newRow("another noncharacter") << QStringLiteral("\uFDD0");
    QTest::newRow("NUL") << QString(QChar(0));
    QTest::newRow("lone surrogate") << QString(QChar(0xD83D));
}

void EncodedLiteralTest::anUnreliableCharacterSplitsTheLiteral()
{
    QFETCH(QString, character);
    for (const int codeSet : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Utf8}) {
        const EncodedLiteral encoded =
            encode(QStringLiteral("ab") + character + QStringLiteral("cde"), codeSet);
        QCOMPARE(encoded.answer, EncodedLiteral::Searchable);
        QCOMPARE(encoded.needle.value, QByteArray("cde"));
    }
}

void EncodedLiteralTest::aQuestionMarkIsReliableWhereNoSurrogatesAre()
{
    QCOMPARE(encode(QStringLiteral("a?b"), CodeSet::Utf8).needle.value, QByteArray("a?b"));
    QCOMPARE(encode(QStringLiteral("a?bc"), CodeSet::Utf16Le).needle.value,
             QByteArray("b\0c\0", 4));
    QCOMPARE(encode(QStringLiteral("?"), CodeSet::Utf32Le).answer, EncodedLiteral::Unknown);
}

void EncodedLiteralTest::aCharacterOfNoFileMakesTheLiteralImpossible()
{
    const QString literal = QStringLiteral("abc\u00E9\uFFFD");
    QCOMPARE(encode(literal, CodeSet::ShiftJis).answer, EncodedLiteral::Impossible);
    QCOMPARE(encode(literal, CodeSet::Utf8).answer, EncodedLiteral::Searchable);
}

void EncodedLiteralTest::onlyUnreliableCharactersAreUnknown()
{
    QCOMPARE(encode(QStringLiteral("\uFFFD\uFEFF"), CodeSet::Utf8).answer, EncodedLiteral::Unknown);
}

void EncodedLiteralTest::theDefaultCodeSetIsUnknown()
{
    QCOMPARE(CodeForms::unitSize(CodeSet::Default), 0);
    QCOMPARE(encode(QStringLiteral("abc"), CodeSet::Default).answer, EncodedLiteral::Unknown);
    QCOMPARE(encode(QStringLiteral("abc"), 99).answer, EncodedLiteral::Unknown);
}

void EncodedLiteralTest::wideUnitsAreAligned()
{
    QCOMPARE(encode(QStringLiteral("ab"), CodeSet::Utf8).needle.alignment, 1);
    QCOMPARE(encode(QStringLiteral("ab"), CodeSet::Utf16Be).needle.alignment, 2);
    const EncodedLiteral encoded =
        encode(QStringLiteral("k"), CodeSet::Utf32Le, Qt::CaseInsensitive);
    QCOMPARE(encoded.needle.alignment, 4);
    QCOMPARE(encoded.strays.first().alignment, 4);
}

void EncodedLiteralTest::aLongLiteralIsCut()
{
    const EncodedLiteral encoded = encode(QString(1000, QLatin1Char('x')), CodeSet::Utf8);
    QCOMPARE(encoded.needle.value, QByteArray(64, 'x'));
    const EncodedLiteral many =
        encode(QString(1000, QLatin1Char('k')), CodeSet::Utf8, Qt::CaseInsensitive);
    QCOMPARE(many.answer, EncodedLiteral::Searchable);
    QVERIFY(many.strays.size() <= 8);
}

void EncodedLiteralTest::aPairIsOneCharacterInUtf16AndUnknownInUtf32()
{
    const QString literal = QStringLiteral("\U0001F600");
    QCOMPARE(encode(literal, CodeSet::Utf16Be).needle.value, QByteArray("\xD8\x3D\xDE\x00", 4));
    QCOMPARE(encode(literal, CodeSet::Utf8).needle.value, QByteArray("\xF0\x9F\x98\x80"));
    QCOMPARE(encode(literal, CodeSet::Utf32Be).answer, EncodedLiteral::Unknown);
    QCOMPARE(encode(literal, CodeSet::ShiftJis).answer, EncodedLiteral::Unknown);
    QVERIFY(!CodeForms::of(0xD83D, CodeSet::Utf16Be).known);
}

QTEST_GUILESS_MAIN(EncodedLiteralTest)
#include "EncodedLiteralTest.moc"
