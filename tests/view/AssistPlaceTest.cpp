#include "view/AssistPlace.h"

#include <QtTest>

using AssistPlace::Surroundings;

/// Where notes stand whose window is near the edge of a screen.
class AssistPlaceTest : public QObject {
    Q_OBJECT

private slots:
    void aNoteStandsBesideItsWindow_data();
    void aNoteStandsBesideItsWindow();
    void twoNotesDoNotCoverEachOther_data();
    void twoNotesDoNotCoverEachOther();
    void aNoteThatFitsNowhereCoversLittle();
    void aNoteLargerThanTheScreenShowsItsBeginning();
    void withoutAScreenNothingIsMoved();
};

namespace {

/// What the dialog for search paths has beside it, as the file says.
const QRect kFirst(456, 0, 372, 262);
const QRect kSecond(456, 274, 372, 262);
const QSize kDialog(442, 424);

bool overlap(const QRect &a, const QRect &b)
{
    return a.intersects(b);
}

} // namespace

void AssistPlaceTest::aNoteStandsBesideItsWindow_data()
{
    QTest::addColumn<QVector<QRect>>("screens");
    QTest::addColumn<QPoint>("window");
    QTest::addColumn<QPoint>("place");
    const QVector<QRect> one{QRect(0, 0, 1280, 900)};
    QTest::newRow("room at the right") << one << QPoint(200, 100) << QPoint(656, 100);
    QTest::newRow("just room") << one << QPoint(466, 100) << QPoint(908, 100);
    QTest::newRow("a pixel too little: below") << one << QPoint(467, 100) << QPoint(908, 536);
    QTest::newRow("no room below, either: at the left")
        << one << QPoint(600, 400) << QPoint(600 - 12 - 372, 400);
    const QVector<QRect> narrow{QRect(0, 0, 700, 900)};
    QTest::newRow("room above only") << narrow << QPoint(150, 400) << QPoint(328, 400 - 12 - 262);
    const QVector<QRect> two{QRect(0, 0, 1280, 900), QRect(1280, 0, 1280, 900)};
    QTest::newRow("on the next screen") << two << QPoint(830, 100) << QPoint(1286, 100);
    QTest::newRow("across two screens: on the window's")
        << two << QPoint(700, 100) << QPoint(908, 536);
    QTest::newRow("on the second") << two << QPoint(2000, 100) << QPoint(2188, 536);
}

void AssistPlaceTest::aNoteStandsBesideItsWindow()
{
    QFETCH(QVector<QRect>, screens);
    QFETCH(QPoint, window);
    const Surroundings around{QRect(window, kDialog), {}, screens};
    QTEST(AssistPlace::beside(kFirst.translated(window), around), "place");
}

void AssistPlaceTest::twoNotesDoNotCoverEachOther_data()
{
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QPoint>("window");
    QTest::newRow("room") << QRect(0, 0, 1280, 900) << QPoint(200, 100);
    QTest::newRow("below") << QRect(0, 0, 1024, 768) << QPoint(300, 20);
    QTest::newRow("left") << QRect(0, 0, 1280, 900) << QPoint(700, 300);
    QTest::newRow("above") << QRect(0, 0, 800, 1000) << QPoint(200, 500);
    QTest::newRow("on both sides") << QRect(0, 0, 1240, 500) << QPoint(400, 30);
    QTest::newRow("under bars") << QRect(60, 40, 1220, 820) << QPoint(600, 40);
}

void AssistPlaceTest::twoNotesDoNotCoverEachOther()
{
    QFETCH(QRect, screen);
    QFETCH(QPoint, window);
    Surroundings around{QRect(window, kDialog), {}, {screen}};
    const QRect first(AssistPlace::beside(kFirst.translated(window), around), kFirst.size());
    around.notes.append(first);
    const QRect second(AssistPlace::beside(kSecond.translated(window), around), kSecond.size());
    QVERIFY(screen.contains(first));
    QVERIFY(screen.contains(second));
    QVERIFY(!overlap(first, around.window));
    QVERIFY(!overlap(second, around.window));
    QVERIFY(!overlap(first, second));
}

void AssistPlaceTest::aNoteThatFitsNowhereCoversLittle()
{
    // The dialog in the middle of a small screen: 180 pixels at either side.
    const QRect screen(0, 0, 800, 800);
    Surroundings around{QRect(QPoint(179, 190), kDialog), {}, {screen}};
    const QPoint window = around.window.topLeft();
    const QRect first(AssistPlace::beside(kFirst.translated(window), around), kFirst.size());
    around.notes.append(first);
    const QRect second(AssistPlace::beside(kSecond.translated(window), around), kSecond.size());
    // The buttons stand below, the fields above the middle.
    const QRect button(around.window.right() - 100, around.window.bottom() - 50, 90, 30);
    for (const QRect &note : {first, second}) {
        QVERIFY(screen.contains(note));
        QVERIFY(!overlap(note, button));
        const QRect hidden = note & around.window;
        QVERIFY(hidden.width() * hidden.height() < 193 * 87);
    }
    QVERIFY(!overlap(first, second));
}

void AssistPlaceTest::aNoteLargerThanTheScreenShowsItsBeginning()
{
    const Surroundings around{QRect(100, 100, 200, 200), {}, {QRect(10, 20, 300, 250)}};
    QCOMPARE(AssistPlace::beside(QRect(310, 100, 372, 262), around), QPoint(10, 20));
}

void AssistPlaceTest::withoutAScreenNothingIsMoved()
{
    const Surroundings around{QRect(100, 100, 200, 200), {}, {}};
    QCOMPARE(AssistPlace::beside(QRect(5000, 100, 30, 30), around), QPoint(5000, 100));
}

QTEST_GUILESS_MAIN(AssistPlaceTest)
#include "AssistPlaceTest.moc"
