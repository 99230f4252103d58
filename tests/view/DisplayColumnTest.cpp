#include "view/DisplayColumn.h"

#include <QtTest>

class DisplayColumnTest : public QObject {
    Q_OBJECT

private slots:
    void aCharacterTakesItsWidth_data();
    void aCharacterTakesItsWidth();
    void aTabGoesOnToTheNextStop_data();
    void aTabGoesOnToTheNextStop();
    void onlyTheTextBeforeThePositionCounts();
    void aPositionBeyondTheLineIsItsEnd();
    void aTabWidthBelowOneIsOne();
};

void DisplayColumnTest::aCharacterTakesItsWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    const auto row = [](const char *name, const QString &text, int columns) {
        QTest::newRow(name) << text << columns;
    };
    row("letter", QStringLiteral("a"), 1);
    row("last ASCII code", QString(QChar(0x7F)), 1);
    row("first code of two columns", QString(QChar(0x80)), 2);
    row("hiragana", QStringLiteral("あ"), 2);
    row("half-width full stop U+FF61", QString(QChar(0xFF61)), 2);
    row("half-width middle dot U+FF65", QString(QChar(0xFF65)), 2);
    row("half-width wo U+FF66", QString(QChar(0xFF66)), 1);
    row("half-width a U+FF71", QString(QChar(0xFF71)), 1);
    row("half-width sound mark U+FF9F", QString(QChar(0xFF9F)), 1);
    row("after the half-width range U+FFA0", QString(QChar(0xFFA0)), 2);
    row("a pair of surrogates is two codes", QStringLiteral("\U00020B9F"), 4);
    row("mixed", QStringLiteral("aあｱb"), 5);
}

void DisplayColumnTest::aCharacterTakesItsWidth()
{
    QFETCH(QString, text);
    QTEST(DisplayColumn::before(text, text.size(), 4), "columns");
}

void DisplayColumnTest::aTabGoesOnToTheNextStop_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("tabWidth");
    QTest::addColumn<int>("columns");
    QTest::newRow("at column 0") << QStringLiteral("\t") << 4 << 4;
    QTest::newRow("at column 3") << QStringLiteral("abc\t") << 4 << 4;
    QTest::newRow("at a stop") << QStringLiteral("abcd\t") << 4 << 8;
    QTest::newRow("after a wide character") << QStringLiteral("あ\t") << 4 << 4;
    QTest::newRow("eight columns") << QStringLiteral("abc\t") << 8 << 8;
    QTest::newRow("one column") << QStringLiteral("a\tb") << 1 << 3;
}

void DisplayColumnTest::aTabGoesOnToTheNextStop()
{
    QFETCH(QString, text);
    QFETCH(int, tabWidth);
    QTEST(DisplayColumn::before(text, text.size(), tabWidth), "columns");
}

void DisplayColumnTest::onlyTheTextBeforeThePositionCounts()
{
    const QString text = QStringLiteral("\tあa");
    QCOMPARE(DisplayColumn::before(text, 0, 4), 0);
    QCOMPARE(DisplayColumn::before(text, 1, 4), 4);
    QCOMPARE(DisplayColumn::before(text, 2, 4), 6);
    QCOMPARE(DisplayColumn::before(text, 3, 4), 7);
}

void DisplayColumnTest::aPositionBeyondTheLineIsItsEnd()
{
    QCOMPARE(DisplayColumn::before(QStringLiteral("ab"), 99, 4), 2);
    QCOMPARE(DisplayColumn::before(QString(), 1, 4), 0);
}

void DisplayColumnTest::aTabWidthBelowOneIsOne()
{
    QCOMPARE(DisplayColumn::before(QStringLiteral("\t\t"), 2, 0), 2);
    QCOMPARE(DisplayColumn::nextTabStop(3, -4), 4);
}

QTEST_GUILESS_MAIN(DisplayColumnTest)

#include "DisplayColumnTest.moc"
