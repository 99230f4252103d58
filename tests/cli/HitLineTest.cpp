#include "cli/HitLine.h"

#include "engine/HitString.h"

#include <QTest>

class HitLineTest : public QObject {
    Q_OBJECT

private slots:
    void theNumbersAndTheTextComeApart_data();
    void theNumbersAndTheTextComeApart();
    void whatIsNoHitStringIsAllText_data();
    void whatIsNoHitStringIsAllText();
};

void HitLineTest::theNumbersAndTheTextComeApart_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::newRow("usual") << 12 << 5 << QStringLiteral("foo");
    QTest::newRow("text with colons") << 1 << 1 << QStringLiteral("a:b:3:c");
    QTest::newRow("text of digits and a colon") << 7 << 3 << QStringLiteral("  42:");
    QTest::newRow("empty text") << 1 << 1 << QString();
    QTest::newRow("numbers of five places") << 99999 << 99999 << QStringLiteral("x");
    QTest::newRow("numbers of six places") << 100000 << 123456 << QStringLiteral("x");
    QTest::newRow("largest numbers") << 2147483647 << 2147483647 << QStringLiteral(" x");
}

void HitLineTest::theNumbersAndTheTextComeApart()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    QFETCH(int, column);
    const QString hit = HitString::format(line, column, text);
    const HitLine parts = HitLine::parse(hit);
    QCOMPARE(parts.line, line);
    QCOMPARE(parts.column, column);
    QCOMPARE(parts.text(hit), text);
}

void HitLineTest::whatIsNoHitStringIsAllText_data()
{
    QTest::addColumn<QString>("hit");
    QTest::newRow("empty") << QString();
    QTest::newRow("one number") << QStringLiteral("     12:");
    QTest::newRow("no colon") << QStringLiteral("     12    5");
    QTest::newRow("no numbers") << QStringLiteral("::path");
    QTest::newRow("letters") << QStringLiteral("    a:    b:c");
}

void HitLineTest::whatIsNoHitStringIsAllText()
{
    QFETCH(QString, hit);
    const HitLine parts = HitLine::parse(hit);
    QCOMPARE(parts.line, 0);
    QCOMPARE(parts.column, 0);
    QCOMPARE(parts.text(hit), hit);
}

QTEST_GUILESS_MAIN(HitLineTest)
#include "HitLineTest.moc"
