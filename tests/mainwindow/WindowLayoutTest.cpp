#include "mainwindow/WindowLayout.h"

#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QScreen>
#include <QSplitter>
#include <QToolBar>
#include <QtTest>

#include <memory>

/// A window with the same parts as the main window.
class WindowLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void whatIsStoredComesBack();
    void sizesAndPositionAreStored();
    void storingWritesNoFile();
    void withoutAGeometrySizeAndPositionHold();
    void aSizeTooSmallIsReplaced();
    void theGeometrySaysMoreThanSizeAndPosition();
    void ofOneByteNothingIsRestored_data();
    void ofOneByteNothingIsRestored();
    void bytesThatMeanNothingChangeNothing();
    void aWindowBesideTheScreenIsMovedIntoIt_data();
    void aWindowBesideTheScreenIsMovedIntoIt();
    void aStoredGeometryBesideTheScreenIsMovedIntoIt();
    void aWindowInACornerOfTheScreenStaysThere_data();
    void aWindowInACornerOfTheScreenStaysThere();
    void aWindowThatIsCutBelowIsMovedUp();
    void aWindowThatIsTooHighLeavesRoomForItsTitle();
    void aWindowThatCannotBeSmallEnoughKeepsItsTitle_data();
    void aWindowThatCannotBeSmallEnoughKeepsItsTitle();
    void withoutASplitterStateTheViewsShareByTheirSizes();
    void aStoredSplitterStateGoesBeforeTheSizes();
    void aToolBarThatWasMovedIsBackThere();

private:
    const ScratchFolder m_folder;
};

namespace {

struct Window {
    QMainWindow window;
    QSplitter *splitter = new QSplitter(Qt::Vertical);
    QWidget *resultView = new QWidget;
    QWidget *preview = new QWidget;
    QToolBar *toolBar = new QToolBar;

    Window()
    {
        toolBar->setObjectName(QStringLiteral("toolBar"));
        window.addToolBar(toolBar);
        splitter->addWidget(resultView);
        splitter->addWidget(preview);
        window.setCentralWidget(splitter);
    }

    WindowLayout::Parts parts() { return {&window, splitter, resultView, preview}; }

    void show()
    {
        window.show();
        QCoreApplication::processEvents();
    }
};

} // namespace

void WindowLayoutTest::init()
{
    // The defaults: nothing stored.
    AppSettings::instance().load(m_folder.path());
}

void WindowLayoutTest::whatIsStoredComesBack()
{
    Window first;
    first.window.resize(700, 500);
    first.window.move(30, 40);
    first.show();
    first.splitter->setSizes({100, 400});
    const QList<int> sizes = first.splitter->sizes();
    WindowLayout::store(first.parts());

    Window second;
    WindowLayout::restore(second.parts());
    second.show();
    QCOMPARE(second.window.size(), QSize(700, 500));
    QCOMPARE(second.window.pos(), first.window.pos());
    QCOMPARE(second.splitter->sizes(), sizes);
}

void WindowLayoutTest::sizesAndPositionAreStored()
{
    Window window;
    window.window.resize(710, 570);
    window.window.move(31, 41);
    window.show();
    WindowLayout::store(window.parts());
    const AppSettings &settings = AppSettings::instance();
    QCOMPARE(settings.size, QSize(710, 570));
    QCOMPARE(settings.pos, window.window.pos());
    QCOMPARE(settings.grepsize, window.resultView->size());
    QCOMPARE(settings.textsize, window.preview->size());
    QCOMPARE(settings.geometry, window.window.saveGeometry());
    QCOMPARE(settings.layouttoolbar, window.window.saveState());
    QCOMPARE(settings.layoutsplitter, window.splitter->saveState());
    QVERIFY(settings.geometry.size() > 1);
}

void WindowLayoutTest::storingWritesNoFile()
{
    Window window;
    WindowLayout::store(window.parts());
    QVERIFY(!m_folder.exists(QStringLiteral("sarvik.ini")));
}

void WindowLayoutTest::withoutAGeometrySizeAndPositionHold()
{
    AppSettings &settings = AppSettings::instance();
    settings.size = QSize(640, 480);
    settings.pos = QPoint(50, 60);
    QVERIFY(settings.geometry.isEmpty());
    Window window;
    WindowLayout::restore(window.parts());
    QCOMPARE(window.window.size(), QSize(640, 480));
    QCOMPARE(window.window.pos(), QPoint(50, 60));
}

void WindowLayoutTest::aSizeTooSmallIsReplaced()
{
    AppSettings::instance().size = QSize(10, 500);
    Window window;
    WindowLayout::restore(window.parts());
    QCOMPARE(window.window.size(), QSize(800, 500));
}

void WindowLayoutTest::theGeometrySaysMoreThanSizeAndPosition()
{
    Window first;
    first.window.resize(700, 560);
    first.show();
    AppSettings &settings = AppSettings::instance();
    settings.geometry = first.window.saveGeometry();
    settings.size = QSize(650, 450);
    Window second;
    WindowLayout::restore(second.parts());
    QCOMPARE(second.window.size(), QSize(700, 560));
}

void WindowLayoutTest::ofOneByteNothingIsRestored_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("one byte") << QByteArray("0");
}

void WindowLayoutTest::ofOneByteNothingIsRestored()
{
    QFETCH(QByteArray, stored);
    AppSettings &settings = AppSettings::instance();
    settings.geometry = stored;
    settings.layouttoolbar = stored;
    settings.layoutsplitter = stored;
    settings.size = QSize(640, 480);
    settings.grepsize = QSize(1, 300);
    settings.textsize = QSize(1, 100);
    Window window;
    WindowLayout::restore(window.parts());
    window.show();
    QCOMPARE(window.window.size(), QSize(640, 480));
    // One byte is no splitter's state: the views share by their sizes.
    QVERIFY(window.splitter->sizes().first() > 2 * window.splitter->sizes().last());
}

void WindowLayoutTest::bytesThatMeanNothingChangeNothing()
{
    AppSettings &settings = AppSettings::instance();
    settings.geometry = "nonsense";
    settings.layouttoolbar = "nonsense";
    settings.layoutsplitter = "nonsense";
    settings.size = QSize(640, 480);
    Window window;
    WindowLayout::restore(window.parts());
    window.show();
    QCOMPARE(window.window.size(), QSize(640, 480));
    QVERIFY(window.toolBar->isVisible());
    QVERIFY(!window.splitter->sizes().contains(0));
}

void WindowLayoutTest::aWindowBesideTheScreenIsMovedIntoIt_data()
{
    QTest::addColumn<QPoint>("stored");
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QTest::newRow("right") << QPoint(screen.right() - 79, 20);
    QTest::newRow("far away") << QPoint(5000, 3000);
    QTest::newRow("left and above") << QPoint(-500, -300);
    QTest::newRow("below") << QPoint(20, screen.bottom() - 40);
}

void WindowLayoutTest::aWindowBesideTheScreenIsMovedIntoIt()
{
    QFETCH(QPoint, stored);
    AppSettings &settings = AppSettings::instance();
    settings.size = QSize(640, 480);
    settings.pos = stored;
    Window window;
    WindowLayout::restore(window.parts());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.contains(QRect(window.window.pos(), window.window.size())));
    QCOMPARE(window.window.size(), QSize(640, 480));
}

void WindowLayoutTest::aStoredGeometryBesideTheScreenIsMovedIntoIt()
{
    Window first;
    first.window.resize(640, 480);
    first.window.move(700, 500);
    first.show();
    WindowLayout::store(first.parts());
    Window second;
    WindowLayout::restore(second.parts());
    second.show();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.contains(second.window.frameGeometry()));
    QCOMPARE(second.window.size(), QSize(640, 480));
}

void WindowLayoutTest::aWindowInACornerOfTheScreenStaysThere_data()
{
    QTest::addColumn<bool>("bottom");
    QTest::newRow("left") << false;
    QTest::newRow("bottom right") << true;
}

/// With its frame, which is known only from the last time.
void WindowLayoutTest::aWindowInACornerOfTheScreenStaysThere()
{
    QFETCH(bool, bottom);
    Window first;
    first.window.resize(640, 480);
    first.show();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QRect frame = first.window.frameGeometry();
    if (bottom)
        frame.moveBottomRight(screen.bottomRight());
    else
        frame.moveTopLeft(screen.topLeft() + QPoint(0, 60));
    first.window.move(frame.topLeft());
    WindowLayout::store(first.parts());
    Window second;
    WindowLayout::restore(second.parts());
    second.show();
    QCOMPARE(second.window.frameGeometry(), frame);
}

/// As the first window, of 800 x 800 at (100, 100), on a small screen.
void WindowLayoutTest::aWindowThatIsCutBelowIsMovedUp()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    AppSettings &settings = AppSettings::instance();
    settings.pos = QPoint(100, 100);
    settings.size = QSize(640, screen.height() - 60);
    Window window;
    WindowLayout::restore(window.parts());
    QCOMPARE(window.window.size(), settings.size);
    QVERIFY(screen.contains(QRect(window.window.pos(), window.window.size())));
}

void WindowLayoutTest::aWindowThatIsTooHighLeavesRoomForItsTitle()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    AppSettings &settings = AppSettings::instance();
    settings.pos = QPoint(0, 0);
    settings.size = QSize(640, screen.height());
    Window window;
    WindowLayout::restore(window.parts());
    QVERIFY(window.window.height() < screen.height());
    QVERIFY(window.window.height() > screen.height() - 100);
    QCOMPARE(window.window.pos(), screen.topLeft());
}

void WindowLayoutTest::aWindowThatCannotBeSmallEnoughKeepsItsTitle_data()
{
    QTest::addColumn<QSize>("beyond");
    QTest::newRow("too wide") << QSize(50, -200);
    QTest::newRow("too high") << QSize(-200, 50);
    QTest::newRow("both") << QSize(50, 50);
}

void WindowLayoutTest::aWindowThatCannotBeSmallEnoughKeepsItsTitle()
{
    QFETCH(QSize, beyond);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    AppSettings &settings = AppSettings::instance();
    settings.size = screen.size();
    settings.pos = QPoint(100, 100);
    Window window;
    window.splitter->setMinimumSize(screen.size() + beyond);
    WindowLayout::restore(window.parts());
    window.show();
    QVERIFY(window.window.width() > screen.width() || window.window.height() > screen.height());
    // What most window managers put above a window has its room.
    QCOMPARE(window.window.geometry().top(), screen.top() + 32);
}

void WindowLayoutTest::withoutASplitterStateTheViewsShareByTheirSizes()
{
    AppSettings &settings = AppSettings::instance();
    settings.size = QSize(640, 480);
    settings.grepsize = QSize(1, 100);
    settings.textsize = QSize(1, 300);
    Window window;
    WindowLayout::restore(window.parts());
    window.show();
    const QList<int> sizes = window.splitter->sizes();
    QVERIFY(qAbs(sizes.last() - 3 * sizes.first()) <= 3);
}

void WindowLayoutTest::aStoredSplitterStateGoesBeforeTheSizes()
{
    Window first;
    first.window.resize(640, 480);
    first.show();
    first.splitter->setSizes({300, 100});
    AppSettings &settings = AppSettings::instance();
    settings.size = QSize(640, 480);
    settings.layoutsplitter = first.splitter->saveState();
    settings.grepsize = QSize(1, 100);
    settings.textsize = QSize(1, 300);
    Window second;
    WindowLayout::restore(second.parts());
    second.show();
    QCOMPARE(second.splitter->sizes(), first.splitter->sizes());
}

void WindowLayoutTest::aToolBarThatWasMovedIsBackThere()
{
    Window first;
    first.window.addToolBar(Qt::BottomToolBarArea, first.toolBar);
    first.show();
    WindowLayout::store(first.parts());
    Window second;
    QCOMPARE(second.window.toolBarArea(second.toolBar), Qt::TopToolBarArea);
    WindowLayout::restore(second.parts());
    QCOMPARE(second.window.toolBarArea(second.toolBar), Qt::BottomToolBarArea);
}

QTEST_MAIN(WindowLayoutTest)

#include "WindowLayoutTest.moc"
