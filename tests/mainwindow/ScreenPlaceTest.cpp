#include "mainwindow/ScreenPlace.h"

#include <QtTest>

class ScreenPlaceTest : public QObject {
    Q_OBJECT

private slots:
    void aFrameIsFitted_data();
    void aFrameIsFitted();
    void withoutAScreenNothingIsMoved();
};

using Screens = QVector<QRect>;
Q_DECLARE_METATYPE(Screens)

void ScreenPlaceTest::aFrameIsFitted_data()
{
    QTest::addColumn<Screens>("screens");
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<QRect>("place");
    const auto row = [](const char *name, const Screens &screens, const QRect &frame,
                        const QRect &place) {
        QTest::newRow(name) << screens << frame << place;
    };

    const Screens one{QRect(0, 0, 1280, 900)};
    row("inside", one, QRect(100, 50, 800, 800), QRect(100, 50, 800, 800));
    row("the whole screen", one, QRect(0, 0, 1280, 900), QRect(0, 0, 1280, 900));
    row("cut below", one, QRect(100, 100, 800, 832), QRect(100, 68, 800, 832));
    row("80 pixels left of it", one, QRect(1200, 100, 800, 700), QRect(480, 100, 800, 700));
    row("outside to the right", one, QRect(2000, 100, 800, 700), QRect(480, 100, 800, 700));
    row("outside below", one, QRect(100, 2000, 800, 700), QRect(100, 200, 800, 700));
    row("outside to the left", one, QRect(-900, 100, 800, 700), QRect(0, 100, 800, 700));
    row("above", one, QRect(100, -20, 800, 700), QRect(100, 0, 800, 700));
    row("too high", one, QRect(100, 100, 800, 1000), QRect(100, 0, 800, 900));
    row("too wide", one, QRect(-10, 100, 1400, 700), QRect(0, 100, 1280, 700));
    row("too large", one, QRect(500, 500, 3000, 2000), QRect(0, 0, 1280, 900));

    const Screens bar{QRect(60, 30, 1220, 870)};
    row("under bars", bar, QRect(0, 0, 800, 700), QRect(60, 30, 800, 700));

    const Screens two{QRect(0, 0, 1280, 900), QRect(1280, 0, 1920, 1080)};
    row("across two", two, QRect(1000, 50, 800, 700), QRect(1000, 50, 800, 700));
    row("larger than one, across two", two, QRect(0, 0, 3000, 900), QRect(0, 0, 3000, 900));
    row("mostly on the second", two, QRect(2900, 100, 800, 700), QRect(2400, 100, 800, 700));
    row("across, cut on the first", two, QRect(900, 300, 800, 700), QRect(1280, 300, 800, 700));
    row("on neither", two, QRect(5000, 100, 800, 700), QRect(480, 100, 800, 700));
    const Screens left{QRect(0, 0, 1280, 900), QRect(-1920, 0, 1920, 1080)};
    row("on one to the left", left, QRect(-1800, 50, 800, 700), QRect(-1800, 50, 800, 700));
    row("that one is gone", one, QRect(-1800, 50, 800, 700), QRect(0, 50, 800, 700));
}

void ScreenPlaceTest::aFrameIsFitted()
{
    QFETCH(Screens, screens);
    QFETCH(QRect, frame);
    QTEST(ScreenPlace::fitted(frame, screens), "place");
}

void ScreenPlaceTest::withoutAScreenNothingIsMoved()
{
    const QRect frame(100, 100, 800, 800);
    QCOMPARE(ScreenPlace::fitted(frame, {}), frame);
}

QTEST_GUILESS_MAIN(ScreenPlaceTest)
#include "ScreenPlaceTest.moc"
