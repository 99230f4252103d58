#include "engine/HitString.h"

#include <QTest>

#include <limits>

class HitStringTest : public QObject {
    Q_OBJECT

private slots:
    void lineAndColumnTakeFivePlacesEach_data();
    void lineAndColumnTakeFivePlacesEach();
    void theLineFollowsUnchanged_data();
    void theLineFollowsUnchanged();
    void aCodeBelow128TakesOneColumn();
    void anyOtherCodeUnitTakesTwoColumns_data();
    void anyOtherCodeUnitTakesTwoColumns();
    void aTabGoesOnToTheNextMultipleOfItsWidth_data();
    void aTabGoesOnToTheNextMultipleOfItsWidth();
    void aTabAfterFullWidthTextStartsFromItsColumns();
    void onlyWhatStandsBeforeThePositionCounts();
    void wideTabsDoNotOverflowTheColumn();
};

void HitStringTest::lineAndColumnTakeFivePlacesEach_data()
{
    QTest::addColumn<qint64>("line");
    QTest::addColumn<qint64>("column");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one digit") << qint64(1) << qint64(1) << "      1:    1:foo";
    QTest::newRow("two digits") << qint64(12) << qint64(5) << "     12:    5:foo";
    QTest::newRow("five digits") << qint64(99999) << qint64(10000) << "  99999:10000:foo";
    QTest::newRow("six digits") << qint64(100000) << qint64(123456) << "  100000:123456:foo";
    QTest::newRow("tens keep their noughts") << qint64(1000) << qint64(10) << "   1000:   10:foo";
    QTest::newRow("beyond 32 bits")
        << qint64(4294967296) << qint64(2147483647) << "  4294967296:2147483647:foo";
    QTest::newRow("largest") << std::numeric_limits<qint64>::max()
                             << std::numeric_limits<qint64>::max()
                             << "  9223372036854775807:9223372036854775807:foo";
}

void HitStringTest::lineAndColumnTakeFivePlacesEach()
{
    QFETCH(qint64, line);
    QFETCH(qint64, column);
    QFETCH(QString, expected);
    QCOMPARE(HitString::format(line, column, QStringView(u"foo")), expected);
}

void HitStringTest::theLineFollowsUnchanged_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("blanks around") << "  foo  ";
    QTest::newRow("tabs") << "\tfoo\t";
    QTest::newRow("carriage return") << "foo\r";
    QTest::newRow("place markers") << "%1 %2 %%";
    QTest::newRow("colons") << "a:b:c";
    QTest::newRow("Japanese") << QStringLiteral("日本語𠮷");
    QTest::newRow("NUL") << QString(QChar(0)) + QLatin1Char('x');
    QTest::newRow("lone surrogate") << QString(QChar(0xD842));
    QTest::newRow("long") << QString(100000, QLatin1Char('x'));
}

void HitStringTest::theLineFollowsUnchanged()
{
    QFETCH(QString, line);
    QCOMPARE(HitString::format(3, 4, line), QLatin1String("      3:    4:") + line);
}

void HitStringTest::aCodeBelow128TakesOneColumn()
{
    QString line;
    for (ushort unit = 0; unit < 128; ++unit) {
        if (unit != '\t')
            line += QChar(unit);
    }
    QCOMPARE(qint64(HitString::displayColumn(line, line.size(), 4)), qint64(127));
}

void HitStringTest::anyOtherCodeUnitTakesTwoColumns_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("columns");
    QTest::newRow("first code above ASCII") << QString(QChar(128)) << qint64(2);
    QTest::newRow("accented Latin") << QStringLiteral("é") << qint64(2);
    QTest::newRow("hiragana") << QStringLiteral("あ") << qint64(2);
    QTest::newRow("full-width Latin") << QStringLiteral("Ａ") << qint64(2);
    QTest::newRow("half-width katakana") << QStringLiteral("ｱ") << qint64(2);
    QTest::newRow("full-width blank") << QStringLiteral("\u3000") << qint64(2);
    QTest::newRow("last code") << QString(QChar(0xFFFF)) << qint64(2);
    QTest::newRow("surrogate pair") << QStringLiteral("𠮷") << qint64(4);
    QTest::newRow("lone surrogate") << QString(QChar(0xD842)) << qint64(2);
    QTest::newRow("letter and combining mark") << QStringLiteral("か\u3099") << qint64(4);
}

void HitStringTest::anyOtherCodeUnitTakesTwoColumns()
{
    QFETCH(QString, text);
    QFETCH(qint64, columns);
    QCOMPARE(qint64(HitString::displayColumn(text, text.size(), 4)), columns);
}

void HitStringTest::aTabGoesOnToTheNextMultipleOfItsWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::addColumn<qint64>("columns");
    QTest::newRow("at the start") << "\t" << 4 << qint64(4);
    QTest::newRow("after one") << "a\t" << 4 << qint64(4);
    QTest::newRow("after three") << "abc\t" << 4 << qint64(4);
    QTest::newRow("at a multiple") << "abcd\t" << 4 << qint64(8);
    QTest::newRow("two") << "\t\t" << 4 << qint64(8);
    QTest::newRow("between") << "a\tb\tc" << 4 << qint64(9);
    QTest::newRow("width 8") << "abc\t" << 8 << qint64(8);
    QTest::newRow("width 1") << "abc\t" << 1 << qint64(4);
    QTest::newRow("width 3") << "abcd\t" << 3 << qint64(6);
    QTest::newRow("wider than the text") << "abcd\t" << 100 << qint64(100);
}

void HitStringTest::aTabGoesOnToTheNextMultipleOfItsWidth()
{
    QFETCH(QString, text);
    QFETCH(int, width);
    QFETCH(qint64, columns);
    QCOMPARE(qint64(HitString::displayColumn(text, text.size(), width)), columns);
}

void HitStringTest::aTabAfterFullWidthTextStartsFromItsColumns()
{
    const QString line = QStringLiteral("あ\tあい\ta");
    QCOMPARE(qint64(HitString::displayColumn(line, 1, 4)), qint64(2));
    QCOMPARE(qint64(HitString::displayColumn(line, 2, 4)), qint64(4));
    QCOMPARE(qint64(HitString::displayColumn(line, 4, 4)), qint64(8));
    QCOMPARE(qint64(HitString::displayColumn(line, 5, 4)), qint64(12));
    QCOMPARE(qint64(HitString::displayColumn(QStringLiteral("あ\t"), 2, 3)), qint64(3));
    QCOMPARE(qint64(HitString::displayColumn(QStringLiteral("ああ\t"), 3, 3)), qint64(6));
}

void HitStringTest::onlyWhatStandsBeforeThePositionCounts()
{
    const QString line = QStringLiteral("\tあa");
    QCOMPARE(qint64(HitString::displayColumn(line, 0, 4)), qint64(0));
    QCOMPARE(qint64(HitString::displayColumn(line, 1, 4)), qint64(4));
    QCOMPARE(qint64(HitString::displayColumn(line, 2, 4)), qint64(6));
    QCOMPARE(qint64(HitString::displayColumn(line, 3, 4)), qint64(7));
    QCOMPARE(qint64(HitString::displayColumn(QStringView(), 0, 4)), qint64(0));
}

void HitStringTest::wideTabsDoNotOverflowTheColumn()
{
    const QString line(3, QLatin1Char('\t'));
    QCOMPARE(qint64(HitString::displayColumn(line, 3, std::numeric_limits<int>::max())),
             3 * qint64(std::numeric_limits<int>::max()));
    QCOMPARE(qint64(HitString::displayColumn(QStringLiteral("a\tbあ\tc"), 5, 2000000000)),
             qint64(4000000000));
}

QTEST_GUILESS_MAIN(HitStringTest)
#include "HitStringTest.moc"
