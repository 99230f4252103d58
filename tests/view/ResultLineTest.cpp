#include "view/ResultLine.h"

#include "engine/HitString.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QtTest>

class ResultLineTest : public QObject {
    Q_OBJECT

private slots:
    void theFirstCharacterTellsTheKind_data();
    void theFirstCharacterTellsTheKind();
    void thePathStartsAtTheThirdCharacter();
    void aFileNameStaysOnOneLine_data();
    void aFileNameStaysOnOneLine();
    void aNameWithAPairOfSurrogatesStays();
    void anyLineThatHoldsAPathMayBeOneLine();
    void aHitThatHoldsABreakStaysOneLine();
    void otherLinesStayAsTheyAre();
    void aHitLineGivesLineAndColumn_data();
    void aHitLineGivesLineAndColumn();
    void aFileLineIsLineOneColumnOne();
    void whatTheEngineWritesIsReadBack();
    void theUpwardSearchEndsAtLettersAndFileLines_data();
    void theUpwardSearchEndsAtLettersAndFileLines();
};

void ResultLineTest::theFirstCharacterTellsTheKind_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("kind");
    const int none = static_cast<int>(ResultLine::Kind::None);
    const int file = static_cast<int>(ResultLine::Kind::File);
    const int hit = static_cast<int>(ResultLine::Kind::Hit);
    QTest::newRow("empty") << QString() << none;
    QTest::newRow("file line") << QStringLiteral("::C:/a/b.txt") << file;
    QTest::newRow("one colon is enough") << QStringLiteral(":") << file;
    QTest::newRow("hit line") << QStringLiteral("     12:    7:text") << hit;
    QTest::newRow("one blank is enough") << QStringLiteral(" ") << hit;
    QTest::newRow("summary") << QStringLiteral("該当行数 12") << none;
    QTest::newRow("hyphens") << QStringLiteral("-----") << none;
    QTest::newRow("a tab is no blank") << QStringLiteral("\t12:7:text") << none;
    QTest::newRow("a full-width space is no blank") << QStringLiteral("\u300012:7:text") << none;
}

void ResultLineTest::theFirstCharacterTellsTheKind()
{
    QFETCH(QString, text);
    QFETCH(int, kind);
    QCOMPARE(static_cast<int>(ResultLine::kind(text)), kind);
}

void ResultLineTest::thePathStartsAtTheThirdCharacter()
{
    QCOMPARE(ResultLine::pathOf(QStringLiteral("::C:/a/b.txt")), QStringLiteral("C:/a/b.txt"));
    QCOMPARE(ResultLine::pathOf(QStringLiteral("::/tmp/a::b")), QStringLiteral("/tmp/a::b"));
    QCOMPARE(ResultLine::pathOf(QStringLiteral("::")), QString());
    QCOMPARE(ResultLine::pathOf(QStringLiteral(":")), QString());
}

void ResultLineTest::aFileNameStaysOnOneLine_data()
{
    QTest::addColumn<QChar>("lineBreak");
    QTest::newRow("line feed") << QChar(QLatin1Char('\n'));
    QTest::newRow("carriage return") << QChar(QLatin1Char('\r'));
    QTest::newRow("line separator") << QChar(0x2028);
    QTest::newRow("paragraph separator") << QChar(0x2029);
    QTest::newRow("start of a frame") << QChar(0xFDD0);
    QTest::newRow("end of a frame") << QChar(0xFDD1);
}

void ResultLineTest::aFileNameStaysOnOneLine()
{
    QFETCH(QChar, lineBreak);
    const QString path =
        QLatin1String("/tmp/a") + lineBreak + QLatin1String("::/etc/passwd") + lineBreak;
    const QString line = ResultLine::onOneLine(QLatin1String("::") + path);
    QVERIFY(!line.contains(lineBreak));
    QCOMPARE(ResultLine::pathOf(line), path);
    QTextDocument document(line);
    QCOMPARE(document.blockCount(), 1);
    QCOMPARE(document.firstBlock().text(), line);
}

void ResultLineTest::aNameWithAPairOfSurrogatesStays()
{
    // U+1F40A ends in the code that stands for a line feed.
    const QString line = QStringLiteral("::/tmp/\U0001F40A") + QChar(0xDC82);
    QCOMPARE(ResultLine::onOneLine(line), line);
    QCOMPARE(ResultLine::pathOf(line), line.mid(2));
}

void ResultLineTest::anyLineThatHoldsAPathMayBeOneLine()
{
    const QString breaks = QStringLiteral("\n\r\u2028\u2029") + QChar(0xFDD0) + QChar(0xFDD1);
    for (const char *start : {"", "/tmp/a", "    12 /tmp/a", "Read Error /tmp/a"}) {
        const QString line = QLatin1String(start) + breaks + QLatin1Char('b');
        const QTextDocument document(ResultLine::withoutBreaks(line));
        QCOMPARE(document.blockCount(), 1);
        QCOMPARE(document.firstBlock().text(), ResultLine::withoutBreaks(line));
        QCOMPARE(ResultLine::pathOf(QLatin1String("::") + ResultLine::withoutBreaks(line)), line);
    }
    QCOMPARE(ResultLine::withoutBreaks(QStringLiteral("a\tb")), QStringLiteral("a\tb"));
}

void ResultLineTest::aHitThatHoldsABreakStaysOneLine()
{
    QString hit = QStringLiteral("     1:    1:a");
    for (const char16_t code : {u'\n', u'\r', u'\u2028', u'\u2029', u'\uFDD0', u'\uFDD1'})
        hit += QChar(code) + QStringLiteral("::/b");
    const QString expected =
        QStringLiteral("     1:    1:a") + QStringLiteral("\u2424::/b").repeated(6);
    QCOMPARE(ResultLine::onOneLine(hit), expected);
}

void ResultLineTest::otherLinesStayAsTheyAre()
{
    const QString other = QStringLiteral("a\rb");
    QCOMPARE(ResultLine::onOneLine(other), other);
    QCOMPARE(ResultLine::onOneLine(QString()), QString());
}

void ResultLineTest::aHitLineGivesLineAndColumn_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::newRow("short numbers") << QStringLiteral("  12:7:text") << 12 << 7;
    QTest::newRow("padded numbers") << QStringLiteral("     12:    7:text") << 12 << 7;
    QTest::newRow("colons in the text") << QStringLiteral("      1:    2:a:3:4") << 1 << 2;
    QTest::newRow("empty text") << QStringLiteral("      1:    2:") << 1 << 2;
    QTest::newRow("wide numbers") << QStringLiteral("  1234567:1234567:x") << 1234567 << 1234567;
    QTest::newRow("no number") << QStringLiteral("  indented: text") << 0 << 0;
    QTest::newRow("no colon") << QStringLiteral("  12") << 12 << 0;
    QTest::newRow("one colon") << QStringLiteral("  12:7") << 12 << 7;
    QTest::newRow("an empty part stays a part") << QStringLiteral("  12::7:") << 12 << 0;
    QTest::newRow("too large for a number") << QStringLiteral("  99999999999:1:") << 0 << 1;
    QTest::newRow("hexadecimal is no decimal") << QStringLiteral("  0x10:1:") << 0 << 1;
}

void ResultLineTest::aHitLineGivesLineAndColumn()
{
    QFETCH(QString, text);
    const ResultLine::Place place = ResultLine::placeOf(text);
    QTEST(place.line, "line");
    QTEST(place.column, "column");
}

void ResultLineTest::aFileLineIsLineOneColumnOne()
{
    const ResultLine::Place place = ResultLine::placeOf(QStringLiteral("::C:5:6:/x"));
    QCOMPARE(place.line, 1);
    QCOMPARE(place.column, 1);
}

void ResultLineTest::whatTheEngineWritesIsReadBack()
{
    for (const int line : {1, 99999, 100000, 2000000000}) {
        for (const int column : {1, 12345, 123456}) {
            const QString hit = HitString::format(line, column, QStringLiteral("9:9:text"));
            const ResultLine::Place place = ResultLine::placeOf(hit);
            QCOMPARE(place.line, line);
            QCOMPARE(place.column, column);
        }
    }
}

void ResultLineTest::theUpwardSearchEndsAtLettersAndFileLines_data()
{
    QTest::addColumn<QChar>("first");
    QTest::addColumn<QChar>("second");
    QTest::addColumn<bool>("ends");
    const QChar colon = QLatin1Char(':');
    const QChar blank = QLatin1Char(' ');
    QTest::newRow("file line") << colon << colon << true;
    QTest::newRow("one colon only") << colon << blank << false;
    QTest::newRow("colon second") << blank << colon << false;
    QTest::newRow("letter") << QChar(QLatin1Char('C')) << colon << true;
    QTest::newRow("Japanese letter") << QChar(0x8A72) << blank << true;
    QTest::newRow("digit") << QChar(QLatin1Char('1')) << blank << false;
    QTest::newRow("hyphen") << QChar(QLatin1Char('-')) << QChar(QLatin1Char('-')) << false;
    QTest::newRow("blank") << blank << blank << false;
    QTest::newRow("empty line") << QChar(QChar::ParagraphSeparator) << blank << false;
    QTest::newRow("beyond the text") << QChar(QChar::Null) << QChar(QChar::Null) << true;
}

void ResultLineTest::theUpwardSearchEndsAtLettersAndFileLines()
{
    QFETCH(QChar, first);
    QFETCH(QChar, second);
    QTEST(ResultLine::endsUpwardSearch(first, second), "ends");
}

QTEST_MAIN(ResultLineTest)

#include "ResultLineTest.moc"
