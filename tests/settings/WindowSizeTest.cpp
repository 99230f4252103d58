#include "settings/WindowSize.h"

#include <QTest>

class WindowSizeTest : public QObject {
    Q_OBJECT

private slots:
    void aSizeIsClamped_data();
    void aSizeIsClamped();
};

void WindowSizeTest::aSizeIsClamped_data()
{
    QTest::addColumn<QSize>("stored");
    QTest::addColumn<QSize>("desktop");
    QTest::addColumn<QSize>("restored");
    const QSize desktop(1920, 1080);
    QTest::newRow("too narrow") << QSize(500, 900) << desktop << QSize(800, 900);
    QTest::newRow("exactly the desktop") << QSize(1920, 1080) << desktop << QSize(1920, 1080);
    QTest::newRow("wider than the desktop") << QSize(1921, 1080) << desktop << QSize(800, 1080);
    QTest::newRow("higher than the desktop") << QSize(1920, 1081) << desktop << QSize(1920, 800);
    QTest::newRow("width of the bound") << QSize(600, 900) << desktop << QSize(800, 900);
    QTest::newRow("width above the bound") << QSize(601, 900) << desktop << QSize(601, 900);
    QTest::newRow("height of the bound") << QSize(900, 400) << desktop << QSize(900, 800);
    QTest::newRow("height above the bound") << QSize(900, 401) << desktop << QSize(900, 401);
    QTest::newRow("not a size") << QSize() << desktop << QSize(800, 800);
    QTest::newRow("negative") << QSize(-2147483647, -1) << desktop << QSize(800, 800);
    QTest::newRow("desktop below the bounds")
        << QSize(640, 480) << QSize(320, 240) << QSize(800, 800);
    QTest::newRow("no screen") << QSize(99999, 99999) << QSize() << QSize(99999, 99999);
    QTest::newRow("no screen, too small") << QSize(600, 400) << QSize(0, 0) << QSize(800, 800);
}

void WindowSizeTest::aSizeIsClamped()
{
    QFETCH(QSize, stored);
    QFETCH(QSize, desktop);
    QFETCH(QSize, restored);
    QCOMPARE(WindowSize::clamped(stored, desktop), restored);
}

QTEST_GUILESS_MAIN(WindowSizeTest)
#include "WindowSizeTest.moc"
