#include "mainwindow/ResultListing.h"

#include "engine/SignalSpool.h"
#include "mainwindow/ProgressPanel.h"
#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"
#include "view/GrepEditor.h"

#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

/// With a spool whose slots are called as the engine's signals call them.
class ResultListingTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theLimitsAreThoseOfTheWindow();
    void of250LinesThreeTicksShow100And100And50();
    void linesComeInTheOrderOfTheSpool();
    void aTickWithoutLinesChangesNothing();
    void aTickShowsTheQueues();
    void theSpoolIsShownAsItIsBeforeLinesAreTaken();
    void thePeakStaysWhenTheSpoolEmpties();
    void aNewRunHasAnEmptyViewAndNoPeak();
    void theThreadsAreShownWithTheLines();

    void theViewIsSilentWhileLinesAreAppended();
    void aViewThatWasSilentStaysSo();

    void drainingShowsAllThatWaits_data();
    void drainingShowsAllThatWaits();
    void eventsAreProcessedBeforeEachBlock_data();
    void eventsAreProcessedBeforeEachBlock();
    void theBarCountsTheLinesShown();
    void theBarRangesToThePeakOfTheRun();
    void drainingWithoutATickHasARange();
    void aCancelledDrainStops();
    void theViewIsNotSilentWhileEventsAreProcessed();
    void aDrainedSpoolIsEmpty();

private:
    /// Lets count lines wait, the head among them.
    void spoolLines(int count);
    QStringList shown() const;
    const QProgressBar *bar(const char *name) const;

    const ScratchFolder m_folder;
    std::unique_ptr<SignalSpool> m_spool;
    std::unique_ptr<GrepEditor> m_view;
    std::unique_ptr<ProgressPanel> m_panel;
    std::unique_ptr<ResultListing> m_listing;
};

namespace {

QString numbered(int number)
{
    return QStringLiteral("  line %1").arg(number);
}

bool never()
{
    return false;
}

} // namespace

void ResultListingTest::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    AppSettings::instance().load(m_folder.path());
}

void ResultListingTest::init()
{
    m_spool = std::make_unique<SignalSpool>();
    m_view = std::make_unique<GrepEditor>(true);
    m_panel = std::make_unique<ProgressPanel>();
    m_listing = std::make_unique<ResultListing>(*m_view, *m_panel);
    m_listing->reset();
}

void ResultListingTest::cleanup()
{
    m_listing.reset();
    m_panel.reset();
    m_view.reset();
    m_spool.reset();
}

void ResultListingTest::spoolLines(int count)
{
    QStringList hits;
    for (int i = 1; i < count; ++i)
        hits += numbered(i);
    m_spool->showSearchResultList(QStringLiteral("/a.txt"), hits);
}

QStringList ResultListingTest::shown() const
{
    const QString text = m_view->toPlainText();
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}

const QProgressBar *ResultListingTest::bar(const char *name) const
{
    return m_panel->findChild<QProgressBar *>(QLatin1String(name));
}

void ResultListingTest::theLimitsAreThoseOfTheWindow()
{
    QCOMPARE(int(ResultListing::kLinesPerTick), 100);
    QCOMPARE(int(ResultListing::kLinesPerBlock), 800);
}

void ResultListingTest::of250LinesThreeTicksShow100And100And50()
{
    spoolLines(250);
    for (const int expected : {100, 200, 250, 250}) {
        m_listing->tick(*m_spool);
        m_listing->takeLines(*m_spool);
        QCOMPARE(shown().size(), expected);
        QCOMPARE(m_spool->resultCount(), 250 - expected);
    }
}

void ResultListingTest::linesComeInTheOrderOfTheSpool()
{
    m_spool->showSearchResultList(QStringLiteral("/b.txt"), {numbered(2), numbered(1)});
    m_spool->showSearchResultFile(QStringLiteral("/a.txt"));
    m_listing->takeLines(*m_spool);
    m_spool->showSearchResultList(QStringLiteral("/c.txt"), {numbered(3)});
    m_listing->takeLines(*m_spool);
    const QStringList expected{
        QStringLiteral("::/b.txt"), numbered(2), numbered(1), QStringLiteral("::/a.txt"),
        QStringLiteral("::/c.txt"), numbered(3)};
    QCOMPARE(shown(), expected);
}

void ResultListingTest::aTickWithoutLinesChangesNothing()
{
    m_listing->tick(*m_spool);
    m_listing->takeLines(*m_spool);
    QCOMPARE(m_view->toPlainText(), QString());
    QCOMPARE(m_view->blockCount(), 1);
}

void ResultListingTest::aTickShowsTheQueues()
{
    m_spool->onDirSemaphoreCount(3);
    m_spool->onFileSemaphoreCount(4567);
    m_listing->tick(*m_spool);
    QCOMPARE(bar("dirBar")->text(), QStringLiteral("dir 3 "));
    QCOMPARE(bar("dirBar")->value(), 3);
    QCOMPARE(bar("fileBar")->text(), QStringLiteral("file 4,567 "));
    QCOMPARE(bar("fileBar")->value(), 4567);
}

void ResultListingTest::theSpoolIsShownAsItIsBeforeLinesAreTaken()
{
    spoolLines(1250);
    m_listing->tick(*m_spool);
    m_listing->takeLines(*m_spool);
    QCOMPARE(bar("spoolBar")->text(), QStringLiteral("spool 1,250 "));
    QCOMPARE(bar("spoolBar")->value(), 1250);
    QCOMPARE(bar("spoolBar")->maximum(), 1250);
}

void ResultListingTest::thePeakStaysWhenTheSpoolEmpties()
{
    spoolLines(250);
    m_listing->tick(*m_spool);
    m_listing->takeLines(*m_spool);
    m_listing->tick(*m_spool);
    QCOMPARE(bar("spoolBar")->value(), 150);
    QCOMPARE(bar("spoolBar")->maximum(), 250);
    spoolLines(200);
    m_listing->tick(*m_spool);
    QCOMPARE(bar("spoolBar")->value(), 350);
    QCOMPARE(bar("spoolBar")->maximum(), 350);
}

void ResultListingTest::aNewRunHasAnEmptyViewAndNoPeak()
{
    spoolLines(250);
    m_listing->tick(*m_spool);
    m_listing->takeLines(*m_spool);
    m_listing->reset();
    QCOMPARE(m_view->toPlainText(), QString());
    m_spool = std::make_unique<SignalSpool>();
    spoolLines(7);
    m_listing->tick(*m_spool);
    QCOMPARE(bar("spoolBar")->maximum(), 7);
}

void ResultListingTest::theThreadsAreShownWithTheLines()
{
    m_spool->slotThreadCount(2, 30);
    m_listing->takeLines(*m_spool);
    QCOMPARE(m_panel->findChild<QLabel *>(QStringLiteral("threadLabel"))->text(),
             QStringLiteral("スレッド処理数\n  ID 1: 00002 30 \n"));
}

void ResultListingTest::theViewIsSilentWhileLinesAreAppended()
{
    const QSignalSpy moves(m_view.get(), &QPlainTextEdit::cursorPositionChanged);
    const QSignalSpy changes(m_view.get(), &QPlainTextEdit::textChanged);
    m_view->moveCursor(QTextCursor::End);
    spoolLines(1000);
    m_listing->takeLines(*m_spool);
    m_listing->append({QStringLiteral("a")});
    m_listing->drain(*m_spool, never);
    QCOMPARE(shown().size(), 1001);
    QCOMPARE(moves.count(), 0);
    QCOMPARE(changes.count(), 0);
    // And speaks again.
    QVERIFY(!m_view->signalsBlocked());
    m_view->moveCursor(QTextCursor::End);
    QCOMPARE(moves.count(), 1);
}

void ResultListingTest::aViewThatWasSilentStaysSo()
{
    m_view->blockSignals(true);
    m_listing->append({QStringLiteral("a")});
    QVERIFY(m_view->signalsBlocked());
}

void ResultListingTest::drainingShowsAllThatWaits_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {1, 799, 800, 801, 1600, 2500})
        QTest::addRow("%d lines", count) << count;
}

void ResultListingTest::drainingShowsAllThatWaits()
{
    QFETCH(int, count);
    spoolLines(count);
    m_listing->drain(*m_spool, never);
    const QStringList lines = shown();
    QCOMPARE(lines.size(), count);
    QCOMPARE(lines.first(), QStringLiteral("::/a.txt"));
    for (int i = 1; i < count; ++i)
        QCOMPARE(lines.at(i), numbered(i));
}

void ResultListingTest::eventsAreProcessedBeforeEachBlock_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("times");
    QTest::newRow("no line") << 0 << 0;
    QTest::newRow("one line") << 1 << 1;
    QTest::newRow("a whole block") << 800 << 1;
    QTest::newRow("a line more") << 801 << 2;
    QTest::newRow("three blocks") << 2400 << 3;
}

void ResultListingTest::eventsAreProcessedBeforeEachBlock()
{
    QFETCH(int, count);
    QFETCH(int, times);
    if (count > 0)
        spoolLines(count);
    // Each event that is processed posts the next.
    QList<int> shownThen;
    std::function<void()> note = [&] {
        shownThen += shown().size();
        QMetaObject::invokeMethod(this, note, Qt::QueuedConnection);
    };
    QMetaObject::invokeMethod(this, note, Qt::QueuedConnection);
    int asked = 0;
    m_listing->drain(*m_spool, [&asked] {
        ++asked;
        return false;
    });
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    QCOMPARE(asked, times);
    QList<int> expected;
    for (int i = 0; i < times; ++i)
        expected += i * 800;
    QCOMPARE(shownThen, expected);
}

void ResultListingTest::theBarCountsTheLinesShown()
{
    spoolLines(1700);
    m_listing->tick(*m_spool);
    QList<int> values;
    connect(bar("spoolBar"), &QProgressBar::valueChanged, this,
            [&values](int value) { values += value; });
    m_listing->drain(*m_spool, never);
    QCOMPARE(values, (QList<int>{800, 1600, 1700}));
    QCOMPARE(bar("spoolBar")->text(), QStringLiteral("spool 1700 "));
}

void ResultListingTest::theBarRangesToThePeakOfTheRun()
{
    spoolLines(250);
    m_listing->tick(*m_spool);
    m_listing->takeLines(*m_spool);
    m_listing->drain(*m_spool, never);
    QCOMPARE(bar("spoolBar")->minimum(), 0);
    QCOMPARE(bar("spoolBar")->maximum(), 250);
    QCOMPARE(bar("spoolBar")->value(), 150);
}

void ResultListingTest::drainingWithoutATickHasARange()
{
    spoolLines(3);
    m_listing->drain(*m_spool, never);
    QCOMPARE(bar("spoolBar")->minimum(), 0);
    QCOMPARE(bar("spoolBar")->maximum(), 3);
    QCOMPARE(bar("spoolBar")->value(), 3);
    QCOMPARE(bar("spoolBar")->format(), QStringLiteral("spool 3 "));
}

void ResultListingTest::aCancelledDrainStops()
{
    spoolLines(2500);
    int asked = 0;
    const QStringList unlisted = m_listing->drain(*m_spool, [&asked] { return ++asked == 3; });
    QCOMPARE(asked, 3);
    QCOMPARE(shown().size(), 1600);
    QCOMPARE(unlisted.size(), 900);
    QCOMPARE(unlisted.first(), numbered(1600));
    QCOMPARE(unlisted.last(), numbered(2499));

    m_listing->reset();
    spoolLines(10);
    m_listing->drain(*m_spool, [] { return true; });
    QCOMPARE(m_view->toPlainText(), QString());
}

void ResultListingTest::theViewIsNotSilentWhileEventsAreProcessed()
{
    // What the user does in between must be answered.
    spoolLines(1000);
    bool silent = true;
    QMetaObject::invokeMethod(
        this, [&] { silent = m_view->signalsBlocked(); }, Qt::QueuedConnection);
    m_listing->drain(*m_spool, never);
    QVERIFY(!silent);
}

void ResultListingTest::aDrainedSpoolIsEmpty()
{
    spoolLines(1000);
    m_listing->drain(*m_spool, never);
    QCOMPARE(m_spool->resultCount(), 0);
    // What is counted stays.
    QCOMPARE(m_spool->hitLineCount(), 999);
    m_listing->drain(*m_spool, never);
    QCOMPARE(shown().size(), 1000);
}

QTEST_MAIN(ResultListingTest)

#include "ResultListingTest.moc"
