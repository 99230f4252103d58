#include "mainwindow/ProgressPanel.h"

#include "settings/ColourContrast.h"

#include <QLabel>
#include <QProgressBar>
#include <QtTest>

#include <algorithm>

class ProgressPanelTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void thePartsHaveTheirNames();
    void theBarsHaveTheirStyle_data();
    void theBarsHaveTheirStyle();
    void theTextIsReadOnBothPartsOfABar_data();
    void theTextIsReadOnBothPartsOfABar();
    void theBarsTellAReaderWhatTheyAre();
    void thePanelIsHiddenAtFirst();
    void theBarsAreShownAndHidden();
    void theBarsKeepWhatTheyShow();

    void aQueueIsShownWithItsLength_data();
    void aQueueIsShownWithItsLength();
    void aRangeGrowsOnlyFarBeyondIt_data();
    void aRangeGrowsOnlyFarBeyondIt();
    void aLengthBeyondTheRangeFillsTheBar_data() { aRangeGrowsOnlyFarBeyondIt_data(); }
    void aLengthBeyondTheRangeFillsTheBar();
    void theTwoQueuesAreTwoBars();
    void theSpoolIsShownOfItsPeak();
    void thePeakIsTheRangeAlsoWhenItIsSmaller();
    void aSpoolThatIsEmptyFromTheStartDoesNotLookBusy();
    void whileDisplayingTheLinesShownAreCounted();
    void theThreadsAreListed();
};

namespace {

template <typename Widget> Widget *part(const ProgressPanel &panel, const char *name)
{
    auto *widget = panel.findChild<Widget *>(QLatin1String(name));
    Q_ASSERT(widget);
    return widget;
}

QProgressBar *bar(const ProgressPanel &panel, const char *name)
{
    return part<QProgressBar>(panel, name);
}

using ShowQueue = void (ProgressPanel::*)(int);

} // namespace

Q_DECLARE_METATYPE(ShowQueue)

void ProgressPanelTest::init()
{
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
}

void ProgressPanelTest::thePartsHaveTheirNames()
{
    const ProgressPanel panel;
    for (const char *name : {"dirBar", "fileBar", "spoolBar"})
        QVERIFY2(panel.findChild<QProgressBar *>(QLatin1String(name)), name);
    QVERIFY(panel.findChild<QLabel *>(QStringLiteral("threadLabel")));
}

void ProgressPanelTest::theBarsHaveTheirStyle_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"dirBar", "fileBar", "spoolBar"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void ProgressPanelTest::theBarsHaveTheirStyle()
{
    QFETCH(QString, name);
    const ProgressPanel panel;
    QCOMPARE(panel.findChild<QProgressBar *>(name)->styleSheet(),
             QStringLiteral("QProgressBar { text-align: center; background-color: #770000;}"));
}

void ProgressPanelTest::theTextIsReadOnBothPartsOfABar_data()
{
    QTest::addColumn<QColor>("chosen");
    QTest::newRow("the default") << QColor(42, 130, 218);
    QTest::newRow("dark") << QColor(Qt::darkBlue);
    QTest::newRow("light") << QColor(Qt::yellow);
    QTest::newRow("white") << QColor(Qt::white);
}

/// In one colour: two would not meet where the parts do.
void ProgressPanelTest::theTextIsReadOnBothPartsOfABar()
{
    QFETCH(QColor, chosen);
    const QPalette before = QApplication::palette();
    QPalette palette = before;
    palette.setColor(QPalette::Highlight, chosen);
    QApplication::setPalette(palette);
    const ProgressPanel panel;
    QApplication::setPalette(before);
    for (const char *name : {"dirBar", "fileBar", "spoolBar"}) {
        const QPalette colours = bar(panel, name)->palette();
        QCOMPARE(colours.color(QPalette::Text), QColor(Qt::white));
        QCOMPARE(colours.color(QPalette::HighlightedText), QColor(Qt::white));
        const QColor filled = colours.color(QPalette::Highlight);
        QVERIFY(ColourContrast::ratio(QColor(Qt::white), filled) >= ColourContrast::kText);
        if (chosen == QColor(Qt::darkBlue))
            QCOMPARE(filled, chosen);
    }
}

void ProgressPanelTest::theBarsTellAReaderWhatTheyAre()
{
    const ProgressPanel panel;
    QStringList names;
    for (const char *name : {"dirBar", "fileBar", "spoolBar"})
        names += bar(panel, name)->accessibleName();
    QVERIFY(!names.contains(QString()));
    QCOMPARE(names.removeDuplicates(), 0);
}

void ProgressPanelTest::thePanelIsHiddenAtFirst()
{
    QWidget window;
    const ProgressPanel panel(&window);
    window.show();
    QVERIFY(!panel.isVisible());
    QVERIFY(!bar(panel, "dirBar")->isVisible());
}

void ProgressPanelTest::theBarsAreShownAndHidden()
{
    QWidget window;
    ProgressPanel panel(&window);
    window.show();
    for (const bool shown : {true, false, true}) {
        panel.setShown(shown);
        for (const char *name : {"dirBar", "fileBar", "spoolBar"})
            QCOMPARE(bar(panel, name)->isVisible(), shown);
        QCOMPARE(part<QLabel>(panel, "threadLabel")->isVisible(), shown);
    }
}

void ProgressPanelTest::theBarsKeepWhatTheyShow()
{
    ProgressPanel panel;
    panel.showDirectories(50);
    panel.setShown(false);
    panel.setShown(true);
    QCOMPARE(bar(panel, "dirBar")->value(), 50);
    QCOMPARE(bar(panel, "dirBar")->format(), QStringLiteral("dir 50 "));
}

void ProgressPanelTest::aQueueIsShownWithItsLength_data()
{
    QTest::addColumn<ShowQueue>("show");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("format");
    const auto dirs = static_cast<ShowQueue>(&ProgressPanel::showDirectories);
    const auto files = static_cast<ShowQueue>(&ProgressPanel::showFiles);
    QTest::newRow("no folder") << dirs << QStringLiteral("dirBar") << 0 << QStringLiteral("dir 0 ");
    QTest::newRow("folders") << dirs << QStringLiteral("dirBar") << 12345
                             << QStringLiteral("dir 12,345 ");
    QTest::newRow("no file") << files << QStringLiteral("fileBar") << 0
                             << QStringLiteral("file 0 ");
    QTest::newRow("files") << files << QStringLiteral("fileBar") << 1234567
                           << QStringLiteral("file 1,234,567 ");
}

void ProgressPanelTest::aQueueIsShownWithItsLength()
{
    QFETCH(ShowQueue, show);
    QFETCH(QString, name);
    QFETCH(int, length);
    QFETCH(QString, format);
    ProgressPanel panel;
    (panel.*show)(length);
    const auto *shown = panel.findChild<QProgressBar *>(name);
    QCOMPARE(shown->format(), format);
    QCOMPARE(shown->text(), format);
    QCOMPARE(shown->value(), length);
}

void ProgressPanelTest::aRangeGrowsOnlyFarBeyondIt_data()
{
    QTest::addColumn<ShowQueue>("show");
    QTest::addColumn<QString>("name");
    QTest::newRow("folders") << static_cast<ShowQueue>(&ProgressPanel::showDirectories)
                             << QStringLiteral("dirBar");
    QTest::newRow("files") << static_cast<ShowQueue>(&ProgressPanel::showFiles)
                           << QStringLiteral("fileBar");
}

void ProgressPanelTest::aRangeGrowsOnlyFarBeyondIt()
{
    QFETCH(ShowQueue, show);
    QFETCH(QString, name);
    ProgressPanel panel;
    const auto *shown = panel.findChild<QProgressBar *>(name);
    QCOMPARE(shown->maximum(), 100);
    struct Step {
        int length;
        int maximum;
    };
    // 100 beyond the range is not more than 100 beyond it.
    for (const Step &step : {Step{100, 100}, Step{200, 100}, Step{201, 301}, Step{401, 301},
                             Step{402, 502}, Step{0, 502}}) {
        (panel.*show)(step.length);
        QCOMPARE(shown->minimum(), 0);
        QCOMPARE(shown->maximum(), step.maximum);
        QCOMPARE(shown->value(), std::min(step.length, step.maximum));
    }
}

void ProgressPanelTest::aLengthBeyondTheRangeFillsTheBar()
{
    QFETCH(ShowQueue, show);
    QFETCH(QString, name);
    ProgressPanel panel;
    const auto *shown = panel.findChild<QProgressBar *>(name);
    QCOMPARE(shown->maximum(), 100);
    (panel.*show)(50);
    QCOMPARE(shown->value(), 50);
    (panel.*show)(150);
    QCOMPARE(shown->value(), 100);
}

void ProgressPanelTest::theTwoQueuesAreTwoBars()
{
    ProgressPanel panel;
    panel.showDirectories(3);
    panel.showFiles(4);
    panel.showSpool(5, 6);
    QCOMPARE(bar(panel, "dirBar")->value(), 3);
    QCOMPARE(bar(panel, "fileBar")->value(), 4);
    QCOMPARE(bar(panel, "spoolBar")->value(), 5);
}

void ProgressPanelTest::theSpoolIsShownOfItsPeak()
{
    ProgressPanel panel;
    panel.showSpool(1234, 5678);
    const QProgressBar *spool = bar(panel, "spoolBar");
    QCOMPARE(spool->minimum(), 0);
    QCOMPARE(spool->maximum(), 5678);
    QCOMPARE(spool->value(), 1234);
    QCOMPARE(spool->text(), QStringLiteral("spool 1,234 "));
}

void ProgressPanelTest::thePeakIsTheRangeAlsoWhenItIsSmaller()
{
    ProgressPanel panel;
    panel.showSpool(10, 5000);
    panel.showSpool(3, 7);
    QCOMPARE(bar(panel, "spoolBar")->maximum(), 7);
}

void ProgressPanelTest::aSpoolThatIsEmptyFromTheStartDoesNotLookBusy()
{
    ProgressPanel panel;
    const QProgressBar *spool = bar(panel, "spoolBar");
    panel.showSpool(0, 0);
    QVERIFY(spool->maximum() > spool->minimum());
    QCOMPARE(spool->value(), 0);
    QCOMPARE(spool->text(), QStringLiteral("spool 0 "));
    panel.startDisplaying(0);
    QVERIFY(spool->maximum() > spool->minimum());
}

void ProgressPanelTest::whileDisplayingTheLinesShownAreCounted()
{
    ProgressPanel panel;
    panel.showSpool(1, 2);
    panel.startDisplaying(3000);
    const QProgressBar *spool = bar(panel, "spoolBar");
    QCOMPARE(spool->minimum(), 0);
    QCOMPARE(spool->maximum(), 3000);
    panel.showDisplayed(1600);
    QCOMPARE(spool->value(), 1600);
    // Not grouped here.
    QCOMPARE(spool->text(), QStringLiteral("spool 1600 "));
}

void ProgressPanelTest::theThreadsAreListed()
{
    ProgressPanel panel;
    panel.showThreads({{3, 20}, {1, 10}});
    QCOMPARE(part<QLabel>(panel, "threadLabel")->text(),
             QStringLiteral("スレッド処理数\n  ID 1: 00001 10 \n  ID 2: 00003 20 \n"));
}

QTEST_MAIN(ProgressPanelTest)

#include "ProgressPanelTest.moc"
