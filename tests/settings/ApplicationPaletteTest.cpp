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

QTEST_GUILESS_MAIN(ApplicationPaletteTest)
#include "ApplicationPaletteTest.moc"
