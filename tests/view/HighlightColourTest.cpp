#include "view/HighlightColour.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"

#include <QTest>

class HighlightColourTest : public QObject {
    Q_OBJECT

private slots:
    void eachPartHasTheColourOfItsSetting_data();
    void eachPartHasTheColourOfItsSetting();
    void whatWasFoundIsMarkedByItsBackground();
    void theTextOfAMarkIsReadable_data();
    void theTextOfAMarkIsReadable();
    void noFormatChangesTheLinesMeasures();
};

namespace {

AppSettings &settings()
{
    static AppSettings settings;
    settings.commentcolor = QColor(1, 0, 0);
    settings.keywordcolor = QColor(2, 0, 0);
    settings.reservecolor = QColor(3, 0, 0);
    settings.valuecolor = QColor(4, 0, 0);
    settings.fnamecolor = QColor(5, 0, 0);
    settings.findcolor1 = QColor(6, 0, 0);
    settings.findcolor2 = QColor(7, 0, 0);
    settings.reteralcolor = QColor(8, 0, 0);
    return settings;
}

QTextCharFormat formatOf(HighlightColour colour)
{
    return HighlightColours::formats(settings())[static_cast<std::size_t>(colour)];
}

} // namespace

void HighlightColourTest::eachPartHasTheColourOfItsSetting_data()
{
    QTest::addColumn<int>("part");
    QTest::addColumn<QColor>("colour");
    const auto row = [](const char *name, HighlightColour part, int red) {
        QTest::newRow(name) << static_cast<int>(part) << QColor(red, 0, 0);
    };

    row("block comment", HighlightColour::BlockComment, 1);
    row("line comment", HighlightColour::LineComment, 1);
    row("keyword", HighlightColour::Keyword, 2);
    row("reserved word", HighlightColour::ReservedWord, 3);
    row("value", HighlightColour::Value, 4);
    row("file line", HighlightColour::FileLine, 5);
    row("double-quoted string", HighlightColour::DoubleQuotedString, 8);
    row("single-quoted string", HighlightColour::SingleQuotedString, 8);
}

void HighlightColourTest::eachPartHasTheColourOfItsSetting()
{
    QFETCH(int, part);
    QFETCH(QColor, colour);
    const QTextCharFormat format = formatOf(static_cast<HighlightColour>(part));
    QCOMPARE(format.foreground().color(), colour);
    QVERIFY(!format.hasProperty(QTextFormat::BackgroundBrush));
}

void HighlightColourTest::whatWasFoundIsMarkedByItsBackground()
{
    QCOMPARE(formatOf(HighlightColour::Find1).background().color(), QColor(6, 0, 0));
    QCOMPARE(formatOf(HighlightColour::Find2).background().color(), QColor(7, 0, 0));
}

void HighlightColourTest::theTextOfAMarkIsReadable_data()
{
    QTest::addColumn<QColor>("mark");
    QTest::addColumn<QColor>("letters");

    // 5.25 to 1; white would have 4.
    QTest::newRow("red") << QColor(0xff, 0, 0) << QColor(Qt::black);
    QTest::newRow("dark red") << QColor(0x99, 0, 0) << QColor(Qt::white);
    QTest::newRow("yellow") << QColor(0xff, 0xff, 0) << QColor(Qt::black);
    QTest::newRow("blue") << QColor(0, 0, 0xff) << QColor(Qt::white);
    QTest::newRow("light green") << QColor(0x90, 0xee, 0x90) << QColor(Qt::black);
}

void HighlightColourTest::theTextOfAMarkIsReadable()
{
    QFETCH(QColor, mark);
    QFETCH(QColor, letters);
    AppSettings coloured;
    coloured.findcolor1 = mark;
    const HighlightColours::Formats formats = HighlightColours::formats(coloured);
    QCOMPARE(formats[static_cast<std::size_t>(HighlightColour::Find1)].foreground().color(),
             letters);
}

void HighlightColourTest::noFormatChangesTheLinesMeasures()
{
    for (const QTextCharFormat &format : HighlightColours::formats(settings())) {
        for (int property : format.properties().keys()) {
            QVERIFY(property == QTextFormat::ForegroundBrush
                    || property == QTextFormat::BackgroundBrush);
        }
    }
}

QTEST_GUILESS_MAIN(HighlightColourTest)
#include "HighlightColourTest.moc"
