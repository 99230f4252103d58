#include "tests/settings/SettingsFixture.h"

#include "settings/KeywordHistory.h"

#include <QTest>

// Colours and fonts of the settings.
class AppSettingsLookTest : public SettingsFixture {
    Q_OBJECT

private slots:
    void init();
    void withoutAnyFileEveryColourHasItsDefault();
    void withoutAnyFileTheFontsHaveTheirDefaults();
    void theClassColourIsBlackInTheFileUnlessItWasSet();
    void theClassColourIsNotReadBack();
    void theEditorsColoursWin();
    void aColourThatTheEditorDoesNotNameHasItsDefault();
    void theEditorsFileIsNeverWritten();
    void theMarkerColourIsDarkYellowAfterEveryLoad();
    void anUnknownColourNameGivesAnInvalidColour();
    void aColourMayHaveAName();
    void theAssistFamilyIsReadUnderItsOddKeyOnly();
    void boldMeansAWeightAbove57();
    void aFontSizeThatIsNoSizeIsNotTaken();
    void bothInputFontsAreTheOneThatIsStored();
};

namespace {

const QString kEditorsFile = QStringLiteral("sarvedit.ini");

} // namespace

void AppSettingsLookTest::init()
{
    makeSettings();
}

void AppSettingsLookTest::withoutAnyFileEveryColourHasItsDefault()
{
    m_settings->load(m_folder->path());
    const AppSettings &s = *m_settings;
    QCOMPARE(s.backcolor, QColor(0x0a, 0x1b, 0x34));
    QCOMPARE(s.fnamecolor, QColor(255, 255, 0));
    QCOMPARE(s.readonlybackcolor, QColor(0x0a, 0x2a, 0x0a));
    QCOMPARE(s.paletteHighlightedText, QColor(0, 0, 0));
    QCOMPARE(s.assistWinBackColor, QColor(0x22, 0x33, 0x44));
    QCOMPARE(s.markercolor, QColor(Qt::darkYellow));
    QVERIFY(!s.classcolor.isValid());
}

void AppSettingsLookTest::withoutAnyFileTheFontsHaveTheirDefaults()
{
    m_settings->load(m_folder->path());
    const AppSettings &s = *m_settings;
    for (const QFont &font : {s.grepFont, s.textFont}) {
        QCOMPARE(font.family(), QStringLiteral("IPAゴシック"));
        QCOMPARE(font.pointSize(), 14);
        QCOMPARE(font.weight(), 50);
    }
    QCOMPARE(s.assistFont.family(), QStringLiteral("IPAゴシック"));
    QCOMPARE(s.assistFont.pointSize(), 12);
    QCOMPARE(s.inputFont.family(), QStringLiteral("MS UI Gothic"));
    QCOMPARE(s.inputFont.pointSize(), 9);
    QCOMPARE(s.inputFontCopy, s.inputFont);
}

void AppSettingsLookTest::theClassColourIsBlackInTheFileUnlessItWasSet()
{
    m_settings->load(m_folder->path());
    QCOMPARE(valueIn(saved(), "color/classcolor"), QStringLiteral("#000000"));
    m_settings->classcolor = QColor(0x12, 0x34, 0x56);
    QCOMPARE(valueIn(saved(), "color/classcolor"), QStringLiteral("#123456"));
}

void AppSettingsLookTest::theClassColourIsNotReadBack()
{
    load("[color]\nclasscolor=#123456\n");
    QVERIFY(!m_settings->classcolor.isValid());
    QCOMPARE(valueIn(saved(), "color/classcolor"), QStringLiteral("#000000"));
}

void AppSettingsLookTest::theEditorsColoursWin()
{
    m_folder->write(kEditorsFile, "[color]\nbackcolor=#111111\n[palette]\nWindow=#222222\n");
    load("[color]\nbackcolor=#333333\n");
    QCOMPARE(m_settings->backcolor, QColor(0x11, 0x11, 0x11));
    QCOMPARE(m_settings->paletteWindow, QColor(0x22, 0x22, 0x22));
    m_settings->backcolor = QColor(0x44, 0x44, 0x44);
    QCOMPARE(valueIn(saved(), "color/backcolor"), QStringLiteral("#444444"));
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->backcolor, QColor(0x11, 0x11, 0x11));
}

void AppSettingsLookTest::aColourThatTheEditorDoesNotNameHasItsDefault()
{
    m_folder->write(kEditorsFile, "");
    load("[color]\nbackcolor=#333333\n");
    QCOMPARE(m_settings->backcolor, QColor(0x0a, 0x1b, 0x34));
}

void AppSettingsLookTest::theEditorsFileIsNeverWritten()
{
    const QByteArray editors = "[color]\nbackcolor=#111111\n";
    m_folder->write(kEditorsFile, editors);
    m_settings->load(m_folder->path());
    saved();
    QCOMPARE(m_folder->read(kEditorsFile), editors);
}

void AppSettingsLookTest::theMarkerColourIsDarkYellowAfterEveryLoad()
{
    m_settings->load(m_folder->path());
    m_settings->markercolor = QColor(1, 2, 3);
    QVERIFY(!saved().contains("#010203"));
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->markercolor, QColor(128, 128, 0));
}

void AppSettingsLookTest::anUnknownColourNameGivesAnInvalidColour()
{
    load("[color]\nbackcolor=no colour\nforecolor=\nhlbackcolor=#12\n");
    QVERIFY(!m_settings->backcolor.isValid());
    QVERIFY(!m_settings->forecolor.isValid());
    QVERIFY(!m_settings->hlbackcolor.isValid());
    QCOMPARE(m_settings->hlforecolor, QColor(Qt::white));
    QCOMPARE(valueIn(saved(), "color/backcolor"), QStringLiteral("#000000"));
}

void AppSettingsLookTest::aColourMayHaveAName()
{
    load("[color]\nbackcolor=SteelBlue\nforecolor=#80112233\n");
    QCOMPARE(m_settings->backcolor, QColor(0x46, 0x82, 0xb4));
    const QByteArray file = saved();
    QCOMPARE(valueIn(file, "color/backcolor"), QStringLiteral("#4682b4"));
    QCOMPARE(valueIn(file, "color/forecolor"), QStringLiteral("#112233"));
}

void AppSettingsLookTest::theAssistFamilyIsReadUnderItsOddKeyOnly()
{
    load("[font]\nassist_family=right\nassist_pointSize=33\nassit_bold=true\n");
    QCOMPARE(m_settings->assistFont.family(), QStringLiteral("IPAゴシック"));
    QCOMPARE(m_settings->assistFont.pointSize(), 12);
    QCOMPARE(m_settings->assistFont.weight(), 50);
    load("[font]\nassit_family=odd\nassit_pointSize=33\nassist_bold=true\n");
    QCOMPARE(m_settings->assistFont.family(), QStringLiteral("odd"));
    QCOMPARE(m_settings->assistFont.pointSize(), 33);
    QCOMPARE(m_settings->assistFont.weight(), 75);
}

void AppSettingsLookTest::boldMeansAWeightAbove57()
{
    m_settings->load(m_folder->path());
    m_settings->grepFont.setWeight(57);
    m_settings->textFont.setWeight(58);
    const QByteArray file = saved();
    QCOMPARE(valueIn(file, "font/grep_bold"), QStringLiteral("false"));
    QCOMPARE(valueIn(file, "font/text_bold"), QStringLiteral("true"));
    m_settings->load(m_folder->path());
    QCOMPARE(m_settings->grepFont.weight(), 50);
    QCOMPARE(m_settings->textFont.weight(), 75);
}

void AppSettingsLookTest::aFontSizeThatIsNoSizeIsNotTaken()
{
    for (const char *size : {"0", "-3", "x", ""}) {
        load(QByteArray("[font]\ngrep_pointSize=") + size);
        QVERIFY2(m_settings->grepFont.pointSize() > 0, size);
    }
}

void AppSettingsLookTest::bothInputFontsAreTheOneThatIsStored()
{
    load("[font]\ninp_family=x\ninp_pointSize=20\ninp_bold=true\n");
    for (const QFont &font : {m_settings->inputFont, m_settings->inputFontCopy}) {
        QCOMPARE(font.family(), QStringLiteral("x"));
        QCOMPARE(font.pointSize(), 20);
        QCOMPARE(font.weight(), 75);
    }
}

QTEST_GUILESS_MAIN(AppSettingsLookTest)
#include "AppSettingsLookTest.moc"
