#include "settings/dialogs/OptionColours.h"

#include "settings/AppSettings.h"

#include <QTest>

#include <iterator>

Q_DECLARE_METATYPE(OptionColours::Index)
Q_DECLARE_METATYPE(QColor AppSettings::*)

namespace {

using Member = QColor AppSettings::*;

struct Row {
    const char *name;
    OptionColours::Index index;
    Member member;
    /// What the dark preset makes of it; null leaves it as it is.
    const char *dark;
};

const Row kRows[] = {
    {"background", OptionColours::Background, &AppSettings::backcolor, "#21212b"},
    {"text", OptionColours::Text, &AppSettings::forecolor, "#ffffff"},
    {"selection background", OptionColours::SelectionBackground, &AppSettings::hlbackcolor,
     "#4682b4"},
    {"selection text", OptionColours::SelectionText, &AppSettings::hlforecolor, "#ffffff"},
    {"cursor", OptionColours::Cursor, &AppSettings::cursorcolor, "#ffffff"},
    {"find 1", OptionColours::Find1, &AppSettings::findcolor1, "#ff0000"},
    {"literal", OptionColours::Literal, &AppSettings::reteralcolor, "#ffff7f"},
    {"reserved word", OptionColours::ReservedWord, &AppSettings::reservecolor, "#00ffff"},
    {"file name", OptionColours::FileName, &AppSettings::fnamecolor, "#fcf401"},
    {"value", OptionColours::Value, &AppSettings::valuecolor, "#ffaa00"},
    {"line-number text", OptionColours::LineNumberText, &AppSettings::lnumforecolor, "#7e7e7e"},
    {"line-number background", OptionColours::LineNumberBackground, &AppSettings::lnumbackcolor,
     "#535353"},
    {"keyword", OptionColours::Keyword, &AppSettings::keywordcolor, nullptr},
    {"class", OptionColours::Class, &AppSettings::classcolor, "#7efff5"},
    {"control", OptionColours::Control, &AppSettings::ctrlcolor, "#7777bb"},
    {"comment", OptionColours::Comment, &AppSettings::commentcolor, "#aaff7f"},
    {"Window", OptionColours::PaletteWindow, &AppSettings::paletteWindow, "#414141"},
    {"WindowText", OptionColours::PaletteWindowText, &AppSettings::paletteWindowText, "#ffffff"},
    {"Base", OptionColours::PaletteBase, &AppSettings::paletteBase, "#414141"},
    {"AlternateBase", OptionColours::PaletteAlternateBase, &AppSettings::paletteAlternateBase,
     "#414141"},
    {"ToolTipBase", OptionColours::PaletteToolTipBase, &AppSettings::paletteToolTipBase, "#ffffff"},
    {"ToolTipText", OptionColours::PaletteToolTipText, &AppSettings::paletteToolTipText, "#ffffff"},
    {"Text", OptionColours::PaletteText, &AppSettings::paletteText, "#ffffff"},
    {"Button", OptionColours::PaletteButton, &AppSettings::paletteButton, "#414141"},
    {"ButtonText", OptionColours::PaletteButtonText, &AppSettings::paletteButtonText, "#ffffff"},
    {"BrightText", OptionColours::PaletteBrightText, &AppSettings::paletteBrightText, "#ff0000"},
    {"Link", OptionColours::PaletteLink, &AppSettings::paletteLink, "#2a82da"},
    {"Highlight", OptionColours::PaletteHighlight, &AppSettings::paletteHighlight, "#2a82da"},
    {"HighlightedText", OptionColours::PaletteHighlightedText, &AppSettings::paletteHighlightedText,
     "#000000"},
};

void addRows()
{
    QTest::addColumn<OptionColours::Index>("index");
    QTest::addColumn<Member>("member");
    QTest::addColumn<QString>("dark");
    for (const Row &row : kRows)
        QTest::newRow(row.name) << row.index << row.member << QString::fromLatin1(row.dark);
}

/// Every colour another one.
void fill(AppSettings &settings)
{
    int i = 0;
    for (const Row &row : kRows)
        settings.*row.member = QColor(1, 2, ++i);
}

} // namespace

class OptionColoursTest : public QObject {
    Q_OBJECT

private slots:
    void thereAreTwentyNineColours();
    void aColourBelongsToItsSetting_data() { addRows(); }
    void aColourBelongsToItsSetting();
    void theDarkPresetSetsAColour_data() { addRows(); }
    void theDarkPresetSetsAColour();
    void theBackgroundLosesOpacity_data();
    void theBackgroundLosesOpacity();
    void theTextSetsFiveColoursAndAStrengthOfRed();
    void anUnchangedPaletteDoesNotDiffer();
    void aChangedPaletteColourDiffers_data() { addRows(); }
    void aChangedPaletteColourDiffers();
    void opacityAloneDiffers();
    void aColourOfAnotherModelDoesNotDiffer();
    void anUnsetColourDiffersFromBlack();
};

void OptionColoursTest::thereAreTwentyNineColours()
{
    QCOMPARE(int(OptionColours::Count), 29);
    QCOMPARE(int(std::size(kRows)), 29);
    for (int i = 0; i < 29; ++i)
        QCOMPARE(int(kRows[i].index), i);
}

void OptionColoursTest::aColourBelongsToItsSetting()
{
    QFETCH(OptionColours::Index, index);
    QFETCH(Member, member);
    AppSettings settings;
    fill(settings);
    OptionColours colours(settings);
    QCOMPARE(colours[index], settings.*member);

    AppSettings stored;
    colours.storeEditorColours(stored);
    const bool isPalette = index >= OptionColours::PaletteWindow;
    QCOMPARE((stored.*member).isValid(), !isPalette);
    colours.storePaletteColours(stored);
    QCOMPARE(stored.*member, settings.*member);
}

void OptionColoursTest::theDarkPresetSetsAColour()
{
    QFETCH(OptionColours::Index, index);
    QFETCH(QString, dark);
    AppSettings settings;
    fill(settings);
    OptionColours colours(settings);
    const QColor before = colours[index];
    colours.setDark();
    QCOMPARE(colours[index], dark.isNull() ? before : QColor(dark));
}

void OptionColoursTest::theBackgroundLosesOpacity_data()
{
    QTest::addColumn<int>("alpha");
    QTest::addColumn<int>("window");
    QTest::addColumn<int>("button");
    QTest::newRow("opaque") << 255 << 170 << 204;
    QTest::newRow("not divisible by 3 or 5") << 128 << 86 << 103;
    QTest::newRow("nearly nothing") << 2 << 2 << 2;
    QTest::newRow("nothing") << 0 << 0 << 0;
}

void OptionColoursTest::theBackgroundLosesOpacity()
{
    QFETCH(int, alpha);
    QFETCH(int, window);
    QFETCH(int, button);
    AppSettings settings;
    fill(settings);
    OptionColours colours(settings);
    const QColor text = colours[OptionColours::PaletteText];
    colours.setPaletteBackground(QColor(10, 20, 30, alpha));
    QCOMPARE(colours[OptionColours::PaletteBase], QColor(10, 20, 30, alpha));
    QCOMPARE(colours[OptionColours::PaletteWindow], QColor(10, 20, 30, window));
    QCOMPARE(colours[OptionColours::PaletteAlternateBase], QColor(10, 20, 30, window));
    QCOMPARE(colours[OptionColours::PaletteButton], QColor(10, 20, 30, button));
    QCOMPARE(colours[OptionColours::PaletteText], text);
}

void OptionColoursTest::theTextSetsFiveColoursAndAStrengthOfRed()
{
    AppSettings settings;
    fill(settings);
    OptionColours colours(settings);
    const QColor window = colours[OptionColours::PaletteWindow];
    const QColor highlighted = colours[OptionColours::PaletteHighlightedText];
    const QColor chosen(10, 20, 30, 40);
    colours.setPaletteText(chosen);
    for (const auto index : {OptionColours::PaletteWindowText, OptionColours::PaletteToolTipBase,
                             OptionColours::PaletteToolTipText, OptionColours::PaletteText,
                             OptionColours::PaletteButtonText})
        QCOMPARE(colours[index], chosen);
    QCOMPARE(colours[OptionColours::PaletteBrightText], QColor(30, 0, 0, 255));
    QCOMPARE(colours[OptionColours::PaletteWindow], window);
    QCOMPARE(colours[OptionColours::PaletteHighlightedText], highlighted);
}

void OptionColoursTest::anUnchangedPaletteDoesNotDiffer()
{
    AppSettings settings;
    fill(settings);
    OptionColours colours(settings);
    colours[OptionColours::Background] = QColor(200, 200, 200);
    colours.storeEditorColours(settings);
    QVERIFY(!colours.storePaletteColours(settings));
}

void OptionColoursTest::aChangedPaletteColourDiffers()
{
    QFETCH(OptionColours::Index, index);
    AppSettings settings;
    fill(settings);
    OptionColours colours(settings);
    colours[index] = QColor(200, 200, 200);
    QCOMPARE(colours.storePaletteColours(settings), index >= OptionColours::PaletteWindow);
}

void OptionColoursTest::opacityAloneDiffers()
{
    AppSettings settings;
    fill(settings);
    OptionColours colours(settings);
    colours[OptionColours::PaletteBase].setAlpha(254);
    QVERIFY(colours.storePaletteColours(settings));
}

void OptionColoursTest::aColourOfAnotherModelDoesNotDiffer()
{
    AppSettings settings;
    fill(settings);
    settings.paletteBase = QColor(Qt::red);
    OptionColours colours(settings);
    colours[OptionColours::PaletteBase] = QColor(Qt::red).toHsv();
    QVERIFY(!colours.storePaletteColours(settings));
}

void OptionColoursTest::anUnsetColourDiffersFromBlack()
{
    AppSettings settings;
    fill(settings);
    settings.paletteBase = QColor();
    OptionColours colours(settings);
    colours[OptionColours::PaletteBase] = QColor(Qt::black);
    QVERIFY(colours.storePaletteColours(settings));
}

QTEST_GUILESS_MAIN(OptionColoursTest)
#include "OptionColoursTest.moc"
