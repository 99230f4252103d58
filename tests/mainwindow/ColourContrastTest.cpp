#include "settings/ColourContrast.h"

#include "mainwindow/ProgressPanel.h"
#include "mainwindow/SearchForm.h"
#include "settings/AppSettings.h"
#include "settings/ApplicationPalette.h"
#include "settings/dialogs/OptionColours.h"
#include "settings/dialogs/ProgramStyle.h"
#include "tests/support/ScratchFolder.h"
#include "view/HighlightColour.h"
#include "view/TextMarks.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QtTest>

#include <cmath>
#include <functional>

/// Whether each text can be read on its ground, in the colours that the program
/// comes with, in its dark preset and in light ones. The colours of line numbers,
/// differences, tabs and boxes are the companion editor's: nothing here shows them.
class ColourContrastTest : public QObject {
    Q_OBJECT

private slots:
    void theRatioIsThatOfTheGuidelines_data();
    void theRatioIsThatOfTheGuidelines();
    void blackOrWhiteCanBeReadOnEveryGround();
    void everyColourIsReadOnItsGround_data();
    void everyColourIsReadOnItsGround();
};

namespace {

enum class Scheme { Defaults, Dark, Light };

struct Pair {
    QColor front;
    QColor ground;
    double least = ColourContrast::kText;
};

using Colours = const AppSettings &;
using Palette = const QPalette &;

/// What is half transparent is mixed with what is below.
QColor over(const QColor &ground, const QColor &front)
{
    const auto mixed = [&front](int below, int above) {
        return qRound(below + (above - below) * front.alphaF());
    };
    return QColor(mixed(ground.red(), front.red()), mixed(ground.green(), front.green()),
                  mixed(ground.blue(), front.blue()));
}

Pair mark(HighlightColour which, Colours settings)
{
    const QTextCharFormat format =
        HighlightColours::formats(settings)[static_cast<std::size_t>(which)];
    return {format.foreground().color(), format.background().color()};
}

Pair roles(Palette palette, QPalette::ColorRole front, QPalette::ColorRole ground,
           QPalette::ColorGroup group = QPalette::Active)
{
    return {palette.color(group, front), palette.color(group, ground)};
}

Pair toolTip(Palette palette)
{
    return roles(ApplicationPalette::forToolTips(palette), QPalette::ToolTipText,
                 QPalette::ToolTipBase);
}

void addEditorPairs(QMap<QString, Pair> &pairs, Colours settings)
{
    const QColor line = over(settings.backcolor, TextMarks::currentLineFill(settings.backcolor));
    const QPair<const char *, QColor> texts[] = {
        {"text", settings.forecolor},       {"comment", settings.commentcolor},
        {"literal", settings.reteralcolor}, {"reserved word", settings.reservecolor},
        {"keyword", settings.keywordcolor}, {"value", settings.valuecolor},
        {"file line", settings.fnamecolor},
    };
    for (const auto &[name, colour] : texts) {
        pairs.insert(QLatin1String(name), {colour, settings.backcolor});
        pairs.insert(QLatin1String(name) + QStringLiteral(", current line"), {colour, line});
    }
    const QPair<const char *, QColor> signs[] = {
        {"caret", settings.cursorcolor},
        {"tab mark", settings.tabcolor},
        {"line end mark", settings.ctrlcolor},
        {"document end mark", settings.markercolor},
    };
    for (const auto &[name, colour] : signs)
        pairs.insert(QLatin1String(name), {colour, settings.backcolor, ColourContrast::kSign});
    pairs.insert(QStringLiteral("selection"), {settings.hlforecolor, settings.hlbackcolor});
    pairs.insert(QStringLiteral("found 1"), mark(HighlightColour::Find1, settings));
    pairs.insert(QStringLiteral("found 2"), mark(HighlightColour::Find2, settings));
    pairs.insert(QStringLiteral("note"),
                 {settings.assistWinTextColor, settings.assistWinBackColor});
}

void addPalettePairs(QMap<QString, Pair> &pairs, Palette palette)
{
    using P = QPalette;
    const auto add = [&](const char *name, const Pair &pair) {
        pairs.insert(QLatin1String(name), pair);
    };
    add("window", roles(palette, P::WindowText, P::Window));
    add("field", roles(palette, P::Text, P::Base));
    add("every other row", roles(palette, P::Text, P::AlternateBase));
    add("button", roles(palette, P::ButtonText, P::Button));
    add("menu", roles(palette, P::Text, P::Window));
    add("selected entry", roles(palette, P::HighlightedText, P::Highlight));
    add("link", roles(palette, P::Link, P::Window));
    add("bright text", roles(palette, P::BrightText, P::Window));
    add("tool tip", toolTip(palette));
    add("disabled field", roles(palette, P::Text, P::Base, P::Disabled));
    add("disabled button", roles(palette, P::ButtonText, P::Button, P::Disabled));
    add("disabled entry", roles(palette, P::Text, P::Window, P::Disabled));
    const QColor outline = ProgramStyle::boxOutline(palette);
    add("check box", {outline, palette.color(P::Window), ColourContrast::kSign});
    add("check box, inside", {outline, palette.color(P::Base), ColourContrast::kSign});
}

/// What the widgets of the window make of the palette.
void addWidgetPairs(QMap<QString, Pair> &pairs, Palette palette)
{
    QApplication::setPalette(palette);
    const ProgressPanel panel;
    const QPalette bar = panel.findChild<QProgressBar *>(QStringLiteral("dirBar"))->palette();
    pairs.insert(QStringLiteral("empty bar"), {bar.color(QPalette::Text), QColor(0x77, 0, 0)});
    pairs.insert(QStringLiteral("full bar"),
                 roles(bar, QPalette::HighlightedText, QPalette::Highlight));
    SearchForm form;
    form.applyLook();
    const QList<QWidget *> fields{
        form.findChild<QPlainTextEdit *>(QStringLiteral("pathEdit")),
        form.findChild<QComboBox *>(QStringLiteral("maskCombo"))->lineEdit(),
        form.keyword1Combo()->lineEdit()};
    for (int i = 0; i < fields.size(); ++i) {
        const QColor ground = fields[i]->palette().color(QPalette::Base);
        const QColor front = fields[i]->palette().color(QPalette::PlaceholderText);
        pairs.insert(QStringLiteral("example %1").arg(i), {over(ground, front), ground});
    }
}

QMap<QString, Pair> pairsOf(const AppSettings &settings)
{
    const QPalette palette = ApplicationPalette::fromSettings(settings);
    QMap<QString, Pair> pairs;
    addEditorPairs(pairs, settings);
    addPalettePairs(pairs, palette);
    addWidgetPairs(pairs, palette);
    return pairs;
}

void load(Scheme scheme)
{
    ScratchFolder folder;
    if (scheme == Scheme::Light) {
        QFile light(QStringLiteral(LIGHT_SETTINGS));
        if (!light.open(QIODevice::ReadOnly))
            qFatal("no light settings");
        folder.write(QStringLiteral("sarvik.ini"), light.readAll());
    }
    AppSettings &settings = AppSettings::instance();
    settings.load(folder.path());
    if (scheme == Scheme::Dark) {
        OptionColours colours(settings);
        colours.setDark();
        colours.storeEditorColours(settings);
        colours.storePaletteColours(settings);
    }
}

/// The pairs that may have less, and why.
QMap<QString, QString> exceptions(Scheme scheme)
{
    const QString shared =
        QStringLiteral("a default of the settings that both programs of the suite share");
    const QString preset = QStringLiteral("a colour of the preset, which is as it always was");
    const QString disabled =
        QStringLiteral("what is disabled needs no contrast, and is dark green in every scheme");
    const QString unused = QStringLiteral("no text of the program has this colour");
    QMap<QString, QString> reasons{{QStringLiteral("disabled button"), disabled}};
    if (scheme == Scheme::Light)
        return reasons;
    const QString source = scheme == Scheme::Dark ? preset : shared;
    reasons.insert(QStringLiteral("disabled entry"), disabled);
    reasons.insert(QStringLiteral("disabled field"), disabled);
    reasons.insert(QStringLiteral("selection"), source);
    reasons.insert(QStringLiteral("link"), source + QStringLiteral("; ") + unused);
    reasons.insert(QStringLiteral("bright text"), source + QStringLiteral("; ") + unused);
    if (scheme == Scheme::Defaults) {
        for (const char *name : {"comment", "comment, current line"})
            reasons.insert(QLatin1String(name), source);
    }
    return reasons;
}

} // namespace

Q_DECLARE_METATYPE(Scheme)
Q_DECLARE_METATYPE(Pair)

void ColourContrastTest::theRatioIsThatOfTheGuidelines_data()
{
    QTest::addColumn<QColor>("one");
    QTest::addColumn<QColor>("other");
    QTest::addColumn<double>("ratio");
    QTest::newRow("black and white") << QColor(Qt::black) << QColor(Qt::white) << 21.0;
    QTest::newRow("white and black") << QColor(Qt::white) << QColor(Qt::black) << 21.0;
    QTest::newRow("the same") << QColor(12, 34, 56) << QColor(12, 34, 56) << 1.0;
    QTest::newRow("red on white") << QColor(255, 0, 0) << QColor(Qt::white) << 4.0;
    QTest::newRow("just text") << QColor(0x76, 0x76, 0x76) << QColor(Qt::white) << 4.54;
    QTest::newRow("just no text") << QColor(0x77, 0x77, 0x77) << QColor(Qt::white) << 4.48;
}

void ColourContrastTest::theRatioIsThatOfTheGuidelines()
{
    QFETCH(QColor, one);
    QFETCH(QColor, other);
    QFETCH(double, ratio);
    QVERIFY(std::abs(ColourContrast::ratio(one, other) - ratio) < 0.005);
}

void ColourContrastTest::blackOrWhiteCanBeReadOnEveryGround()
{
    for (int shade = 0; shade < 256; ++shade) {
        const QColor ground(shade, shade, shade);
        QVERIFY(ColourContrast::ratio(ColourContrast::readableOn(ground), ground)
                >= ColourContrast::kText);
    }
}

void ColourContrastTest::everyColourIsReadOnItsGround_data()
{
    QTest::addColumn<Pair>("pair");
    QTest::addColumn<QString>("reason");
    const QPair<const char *, Scheme> schemes[] = {
        {"defaults", Scheme::Defaults}, {"dark", Scheme::Dark}, {"light", Scheme::Light}};
    for (const auto &[scheme, which] : schemes) {
        load(which);
        const QMap<QString, Pair> pairs = pairsOf(AppSettings::instance());
        const QMap<QString, QString> reasons = exceptions(which);
        for (auto pair = pairs.begin(); pair != pairs.end(); ++pair)
            QTest::addRow("%s: %s", scheme, qPrintable(pair.key()))
                << pair.value() << reasons.value(pair.key());
        for (auto reason = reasons.begin(); reason != reasons.end(); ++reason) {
            if (!pairs.contains(reason.key()))
                qFatal("no pair %s", qPrintable(reason.key()));
        }
    }
}

void ColourContrastTest::everyColourIsReadOnItsGround()
{
    QFETCH(Pair, pair);
    QFETCH(QString, reason);
    QVERIFY(pair.front.isValid() && pair.ground.isValid());
    const double ratio = ColourContrast::ratio(pair.front, pair.ground);
    const QByteArray what = QStringLiteral("%1 on %2: %3 to 1, at least %4")
                                .arg(pair.front.name(), pair.ground.name(),
                                     QString::number(ratio, 'f', 2), QString::number(pair.least))
                                .toUtf8();
    if (reason.isEmpty())
        QVERIFY2(ratio >= pair.least, what.constData());
    else
        QVERIFY2(ratio < pair.least,
                 qPrintable(QStringLiteral("no exception any more: ") + reason));
}

QTEST_MAIN(ColourContrastTest)
#include "ColourContrastTest.moc"
