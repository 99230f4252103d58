#include "engine/CaseFolding.h"

#include <QRegExp>
#include <QString>
#include <QTest>

class CaseFoldingTest : public QObject {
    Q_OBJECT

private slots:
    void variantsAreAllThatFoldAlike_data();
    void variantsAreAllThatFoldAlike();
    void everyCharacterIsItsOwnVariant();
    void theSameLowerCaseMeansTheSameFolding();
    void noCharacterBeyondTheSearchedPlanesFolds();
};

void CaseFoldingTest::variantsAreAllThatFoldAlike_data()
{
    QTest::addColumn<uint>("codePoint");
    QTest::addColumn<QVector<uint>>("expected");
    QTest::newRow("digit") << uint('1') << QVector<uint>{'1'};
    QTest::newRow("a") << uint('a') << QVector<uint>{'A', 'a'};
    QTest::newRow("k") << uint('k') << QVector<uint>{'K', 'k', 0x212A};
    QTest::newRow("Kelvin") << 0x212AU << QVector<uint>{'K', 'k', 0x212A};
    QTest::newRow("S") << uint('S') << QVector<uint>{'S', 's', 0x17F};
    QTest::newRow("sharp s") << 0xDFU << QVector<uint>{0xDF, 0x1E9E};
    QTest::newRow("i") << uint('i') << QVector<uint>{'I', 'i'};
    QTest::newRow("dotless i") << 0x131U << QVector<uint>{0x131};
    QTest::newRow("final sigma") << 0x3C2U << QVector<uint>{0x3A3, 0x3C2, 0x3C3};
    QTest::newRow("Angstrom") << 0x212BU << QVector<uint>{0xC5, 0xE5, 0x212B};
    QTest::newRow("Deseret") << 0x10400U << QVector<uint>{0x10400, 0x10428};
    QTest::newRow("hiragana") << 0x3042U << QVector<uint>{0x3042};
}

void CaseFoldingTest::variantsAreAllThatFoldAlike()
{
    QFETCH(uint, codePoint);
    QFETCH(QVector<uint>, expected);
    QCOMPARE(CaseFolding::variants(codePoint), expected);
}

void CaseFoldingTest::everyCharacterIsItsOwnVariant()
{
    for (uint codePoint = 0; codePoint < 0x3000; ++codePoint)
        QVERIFY(CaseFolding::variants(codePoint).contains(codePoint));
}

/// QRegExp compares lower-case characters; what it takes for the same is among
/// the variants.
void CaseFoldingTest::theSameLowerCaseMeansTheSameFolding()
{
    for (uint codePoint = 0; codePoint < 0x20000; ++codePoint)
        QCOMPARE(QChar::toCaseFolded(QChar::toLower(codePoint)), QChar::toCaseFolded(codePoint));
}

void CaseFoldingTest::noCharacterBeyondTheSearchedPlanesFolds()
{
    for (uint codePoint = 0x20000; codePoint <= QChar::LastValidCodePoint; ++codePoint)
        QVERIFY(QChar::toCaseFolded(codePoint) == codePoint);
}

QTEST_GUILESS_MAIN(CaseFoldingTest)
#include "CaseFoldingTest.moc"
