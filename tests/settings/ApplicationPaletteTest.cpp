#include "settings/ApplicationPalette.h"

#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"

#include <QTest>

class ApplicationPaletteTest : public QObject {
    Q_OBJECT

private slots:
    void everyRoleHasItsOwnColourInEveryGroup();
    void disabledTextsAreDarkGreen();
    void brushesAreSolid();
    void otherRolesAreThoseOfTheBasePalette();
    void theDefaultsAreTheDarkScheme();
    void aToolTipsTextCanBeRead_data();
    void aToolTipsTextCanBeRead();
    void aToolTipDiffersInNothingElse();
};

namespace {

struct Role {
    QPalette::ColorRole role;
    QColor AppSettings::*member;
};

const std::vector<Role> kRoles{
    {QPalette::Window, &AppSettings::paletteWindow},
    {QPalette::WindowText, &AppSettings::paletteWindowText},
    {QPalette::Base, &AppSettings::paletteBase},
    {QPalette::AlternateBase, &AppSettings::paletteAlternateBase},
    {QPalette::ToolTipBase, &AppSettings::paletteToolTipBase},
    {QPalette::ToolTipText, &AppSettings::paletteToolTipText},
    {QPalette::Text, &AppSettings::paletteText},
    {QPalette::Button, &AppSettings::paletteButton},
    {QPalette::ButtonText, &AppSettings::paletteButtonText},
    {QPalette::BrightText, &AppSettings::paletteBrightText},
    {QPalette::Link, &AppSettings::paletteLink},
    {QPalette::Highlight, &AppSettings::paletteHighlight},
    {QPalette::HighlightedText, &AppSettings::paletteHighlightedText},
};

const QPalette::ColorGroup kGroups[] = {QPalette::Active, QPalette::Inactive, QPalette::Disabled};

bool isDisabledText(QPalette::ColorGroup group, QPalette::ColorRole role)
{
    return group == QPalette::Disabled && (role == QPalette::Text || role == QPalette::ButtonText);
}

} // namespace

void ApplicationPaletteTest::everyRoleHasItsOwnColourInEveryGroup()
{
    AppSettings settings;
    int shade = 0;
    for (const Role &role : kRoles)
        settings.*(role.member) = QColor(10, 20, ++shade);
    const QPalette palette = ApplicationPalette::fromSettings(settings);
    for (const Role &role : kRoles) {
        for (const QPalette::ColorGroup group : kGroups) {
            if (!isDisabledText(group, role.role))
                QCOMPARE(palette.color(group, role.role), settings.*(role.member));
        }
    }
}

void ApplicationPaletteTest::disabledTextsAreDarkGreen()
{
    AppSettings settings;
    settings.paletteText = settings.paletteButtonText = QColor(Qt::white);
    const QPalette palette = ApplicationPalette::fromSettings(settings);
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::Text), QColor(Qt::darkGreen));
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::ButtonText), QColor(Qt::darkGreen));
    QCOMPARE(palette.color(QPalette::Inactive, QPalette::Text), QColor(Qt::white));
}

void ApplicationPaletteTest::brushesAreSolid()
{
    AppSettings settings;
    settings.paletteBase = QColor(1, 2, 3, 40);
    const QPalette palette = ApplicationPalette::fromSettings(settings);
    QCOMPARE(palette.brush(QPalette::Active, QPalette::Base).style(), Qt::SolidPattern);
    QCOMPARE(palette.color(QPalette::Active, QPalette::Base).alpha(), 40);
    QCOMPARE(palette.brush(QPalette::Disabled, QPalette::Text).style(), Qt::SolidPattern);
}

void ApplicationPaletteTest::otherRolesAreThoseOfTheBasePalette()
{
    const QPalette palette = ApplicationPalette::fromSettings(AppSettings());
    QCOMPARE(palette.color(QPalette::Active, QPalette::Mid),
             QPalette().color(QPalette::Active, QPalette::Mid));
}

void ApplicationPaletteTest::theDefaultsAreTheDarkScheme()
{
    const ScratchFolder folder;
    AppSettings settings;
    settings.load(folder.path());
    const QPalette palette = ApplicationPalette::fromSettings(settings);
    QCOMPARE(palette.color(QPalette::Window), QColor(0x35, 0x35, 0x35));
    QCOMPARE(palette.color(QPalette::HighlightedText), QColor(Qt::black));
    QCOMPARE(palette.color(QPalette::Link), QColor(0x2a, 0x82, 0xda));
}

void ApplicationPaletteTest::aToolTipsTextCanBeRead_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("shown");
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    const ScratchFolder folder;
    AppSettings settings;
    settings.load(folder.path());
    QTest::newRow("the defaults") << settings.paletteToolTipBase << settings.paletteToolTipText
                                  << black;
    QTest::newRow("white on white") << white << white << black;
    QTest::newRow("black on black") << black << black << white;
    QTest::newRow("yellow on white") << white << QColor(Qt::yellow) << black;
    QTest::newRow("dark blue on black") << black << QColor(0, 0, 128) << white;
    QTest::newRow("black on white stays") << white << black << black;
    QTest::newRow("blue on white stays") << white << QColor(Qt::blue) << QColor(Qt::blue);
    // 3.03 and 2.95 to 1.
    QTest::newRow("just enough stays")
        << white << QColor(0x94, 0x94, 0x94) << QColor(0x94, 0x94, 0x94);
    QTest::newRow("just too little") << white << QColor(0x96, 0x96, 0x96) << black;
}

void ApplicationPaletteTest::aToolTipsTextCanBeRead()
{
    QFETCH(QColor, base);
    QFETCH(QColor, text);
    QPalette program;
    program.setColor(QPalette::ToolTipBase, base);
    program.setColor(QPalette::ToolTipText, text);
    const QPalette palette = ApplicationPalette::forToolTips(program);
    for (const QPalette::ColorGroup group : kGroups) {
        QTEST(palette.color(group, QPalette::ToolTipText), "shown");
        QCOMPARE(palette.color(group, QPalette::ToolTipBase), base);
    }
}

void ApplicationPaletteTest::aToolTipDiffersInNothingElse()
{
    const QPalette program = ApplicationPalette::fromSettings(AppSettings());
    QPalette palette = ApplicationPalette::forToolTips(program);
    QVERIFY(palette != program);
    for (const QPalette::ColorGroup group : kGroups)
        palette.setBrush(group, QPalette::ToolTipText, program.brush(group, QPalette::ToolTipText));
    QCOMPARE(palette, program);
}

QTEST_GUILESS_MAIN(ApplicationPaletteTest)
#include "ApplicationPaletteTest.moc"
