#include "view/GrepEditor.h"

#include "settings/AppSettings.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

/// The wheel: zoom with Ctrl, one line a notch with Shift, the toolkit's way
/// otherwise.
class GrepEditorWheelTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void aNotchWithCtrlIsOnePoint_data();
    void aNotchWithCtrlIsOnePoint();
    void aFontOfNoPointsIsRefused();
    void noFontGrowsBeyondWhatCanBeShown();
    void aZoomIsKeptInTheSettings();
    void aZoomLaysTheViewOutAnew();
    void onlyASmallerFontIsReported();
    void aStepOfZeroReturnsToTheRememberedFont();
    void aResetIsReportedOnlyWhenTheFontBecomesSmaller();
    void partsOfANotchAddUp_data();
    void partsOfANotchAddUp();
    void aSidewaysSwipeOfATouchPadDoesNotReset();
    void aWildEventIsIgnored_data();
    void aWildEventIsIgnored();
    void aNotchWithShiftIsOneLine();
    void aNotchAloneScrollsAsThePlatformSays();
};

namespace {

const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
const Qt::KeyboardModifiers shift = Qt::ShiftModifier;

void wheel(GrepEditor &view, const QPoint &delta, Qt::KeyboardModifiers modifiers,
           const QPoint &pixels = QPoint())
{
    QWheelEvent event(QPointF(5, 5), view.viewport()->mapToGlobal(QPoint(5, 5)), pixels, delta,
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view.viewport(), &event);
}

void wheel(GrepEditor &view, int delta, Qt::KeyboardModifiers modifiers)
{
    wheel(view, QPoint(0, delta), modifiers);
}

class ShownView : public GrepEditor {
public:
    ShownView() : GrepEditor(true)
    {
        resize(300, 200);
        QStringList lines;
        for (int i = 0; i < 200; ++i)
            lines << QString::number(i);
        appendLines(lines);
        show();
    }

    /// Whether the last wheel event was: one that is not goes on to the parent.
    bool accepted = false;

protected:
    void wheelEvent(QWheelEvent *event) override
    {
        GrepEditor::wheelEvent(event);
        accepted = event->isAccepted();
    }
};

class ResizeCounter : public QObject {
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            ++count;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

} // namespace

void GrepEditorWheelTest::init()
{
    AppSettings &settings = AppSettings::instance();
    settings.tabcolm = 4;
    settings.grepFont = QFont(QStringLiteral("DejaVu Sans Mono"), 14);
}

void GrepEditorWheelTest::aNotchWithCtrlIsOnePoint_data()
{
    QTest::addColumn<int>("delta");
    QTest::addColumn<int>("pointSize");
    QTest::newRow("up") << 120 << 15;
    QTest::newRow("down") << -120 << 13;
    QTest::newRow("two up") << 240 << 16;
    QTest::newRow("two down") << -240 << 12;
    QTest::newRow("one and a half up") << 180 << 15;
    QTest::newRow("one and a half down") << -180 << 13;
}

void GrepEditorWheelTest::aNotchWithCtrlIsOnePoint()
{
    QFETCH(int, delta);
    GrepEditor view(true);
    const QString family = view.font().family();
    wheel(view, delta, ctrl);
    QTEST(view.font().pointSize(), "pointSize");
    QCOMPARE(view.font().family(), family);
    QCOMPARE(view.document()->defaultFont().pointSize(), view.font().pointSize());
}

void GrepEditorWheelTest::aFontOfNoPointsIsRefused()
{
    AppSettings::instance().grepFont.setPointSize(2);
    GrepEditor view(true);
    QSignalSpy smaller(&view, &GrepEditor::ZoomedOut);
    wheel(view, -240, ctrl);
    QCOMPARE(view.font().pointSize(), 2);
    QCOMPARE(smaller.count(), 0);
    wheel(view, -120, ctrl);
    QCOMPARE(view.font().pointSize(), 1);
    wheel(view, -120, ctrl);
    QCOMPARE(view.font().pointSize(), 1);
}

void GrepEditorWheelTest::noFontGrowsBeyondWhatCanBeShown()
{
    QFont &kept = AppSettings::instance().grepFont;
    kept.setPointSize(3000);
    GrepEditor view(true);
    constexpr int kLargest = 200;
    QCOMPARE(view.font().pointSize(), kLargest);
    wheel(view, 120, ctrl);
    QCOMPARE(view.font().pointSize(), kLargest);
    // The size that somebody typed is not overwritten by a zoom that does nothing.
    QCOMPARE(kept.pointSize(), 3000);
    wheel(view, -120, ctrl);
    QCOMPARE(view.font().pointSize(), kLargest - 1);
    wheel(view, 240, ctrl);
    QCOMPARE(view.font().pointSize(), kLargest);
    QCOMPARE(kept.pointSize(), kLargest);
}

void GrepEditorWheelTest::aZoomIsKeptInTheSettings()
{
    GrepEditor view(true);
    const qreal tabs = view.tabStopDistance();
    wheel(view, 240, ctrl);
    QCOMPARE(AppSettings::instance().grepFont.pointSize(), 16);
    QVERIFY(view.tabStopDistance() > tabs);
}

void GrepEditorWheelTest::aZoomLaysTheViewOutAnew()
{
    ShownView view;
    QCoreApplication::processEvents();
    ResizeCounter resizes;
    view.viewport()->installEventFilter(&resizes);
    wheel(view, 120, ctrl);
    // Posted, not sent: the wheel event is through before the layout changes.
    QCOMPARE(resizes.count, 0);
    QCoreApplication::sendPostedEvents(view.viewport(), QEvent::Resize);
    QCOMPARE(resizes.count, 1);
}

void GrepEditorWheelTest::onlyASmallerFontIsReported()
{
    GrepEditor view(true);
    QSignalSpy smaller(&view, &GrepEditor::ZoomedOut);
    wheel(view, 120, ctrl);
    QCOMPARE(smaller.count(), 0);
    wheel(view, -120, ctrl);
    QCOMPARE(smaller.count(), 1);
    QCOMPARE(smaller.first().first().value<GrepEditor *>(), &view);
}

void GrepEditorWheelTest::aStepOfZeroReturnsToTheRememberedFont()
{
    GrepEditor view(true);
    wheel(view, 240, ctrl);
    wheel(view, 0, ctrl);
    QCOMPARE(view.font().pointSize(), 14);
    wheel(view, -240, ctrl);
    wheel(view, 0, ctrl);
    QCOMPARE(view.font().pointSize(), 14);
    wheel(view, 240, ctrl);
    wheel(view, QPoint(120, 0), ctrl);
    QCOMPARE(view.font().pointSize(), 14);
    QCOMPARE(AppSettings::instance().grepFont.pointSize(), 14);

    // Only a font that is to be remembered is.
    view.setViewFont(QFont(QStringLiteral("DejaVu Sans Mono"), 20), false);
    view.zoom(0);
    QCOMPARE(view.font().pointSize(), 14);
    view.setViewFont(QFont(QStringLiteral("DejaVu Sans Mono"), 20), true);
    view.zoom(3);
    view.zoom(0);
    QCOMPARE(view.font().pointSize(), 20);
}

void GrepEditorWheelTest::aResetIsReportedOnlyWhenTheFontBecomesSmaller()
{
    GrepEditor view(true);
    QSignalSpy smaller(&view, &GrepEditor::ZoomedOut);
    view.zoom(2);
    view.zoom(0);
    QCOMPARE(smaller.count(), 1);
    view.zoom(0);
    QCOMPARE(smaller.count(), 1);
    view.zoom(-2);
    QCOMPARE(smaller.count(), 2);
    view.zoom(0);
    QCOMPARE(smaller.count(), 2);
    QCOMPARE(view.font().pointSize(), 14);
}

void GrepEditorWheelTest::partsOfANotchAddUp_data()
{
    QTest::addColumn<QPoint>("pixels");
    QTest::newRow("a touch pad") << QPoint(0, 5);
    QTest::newRow("a fine wheel, or a touch pad that tells no pixels") << QPoint();
}

void GrepEditorWheelTest::partsOfANotchAddUp()
{
    QFETCH(QPoint, pixels);
    GrepEditor view(true);
    const QPoint third(0, 40);
    view.zoom(2);
    wheel(view, third, ctrl, pixels);
    wheel(view, third, ctrl, pixels);
    QCOMPARE(view.font().pointSize(), 16);
    wheel(view, third, ctrl, pixels);
    QCOMPARE(view.font().pointSize(), 17);
    for (int i = 0; i < 6; ++i)
        wheel(view, -third, ctrl, -pixels);
    QCOMPARE(view.font().pointSize(), 15);
    for (int i = 0; i < 119; ++i)
        wheel(view, QPoint(0, 1), ctrl, pixels);
    QCOMPARE(view.font().pointSize(), 15);
    wheel(view, QPoint(0, 1), ctrl, pixels);
    QCOMPARE(view.font().pointSize(), 16);
    wheel(view, QPoint(0, 119), ctrl, pixels);
    QCOMPARE(view.font().pointSize(), 16);
    wheel(view, QPoint(0, -119), ctrl, pixels);
    QCOMPARE(view.font().pointSize(), 16);
}

void GrepEditorWheelTest::aSidewaysSwipeOfATouchPadDoesNotReset()
{
    GrepEditor view(true);
    view.zoom(2);
    wheel(view, QPoint(40, 0), ctrl, QPoint(5, 0));
    QCOMPARE(view.font().pointSize(), 16);
}

void GrepEditorWheelTest::aWildEventIsIgnored_data()
{
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<bool>("ignored");
    QTest::newRow("240") << QPoint(0, -240) << false;
    QTest::newRow("241") << QPoint(0, -241) << true;
    QTest::newRow("both axes, 240") << QPoint(120, -120) << false;
    QTest::newRow("both axes, 241") << QPoint(121, -120) << true;
    QTest::newRow("upwards") << QPoint(0, 241) << true;
}

void GrepEditorWheelTest::aWildEventIsIgnored()
{
    QFETCH(QPoint, delta);
    QFETCH(bool, ignored);
    for (const Qt::KeyboardModifiers modifiers : {Qt::KeyboardModifiers(), ctrl, shift}) {
        ShownView view;
        view.verticalScrollBar()->setValue(100);
        wheel(view, delta, modifiers);
        QCOMPARE(view.accepted, !ignored);
        const bool moved = view.verticalScrollBar()->value() != 100;
        const bool zoomed = view.font().pointSize() != 14;
        QCOMPARE(moved || zoomed, !ignored);
        init();
    }
}

void GrepEditorWheelTest::aNotchWithShiftIsOneLine()
{
    for (const int platformLines : {1, 3, 5}) {
        QApplication::setWheelScrollLines(platformLines);
        ShownView view;
        QScrollBar *bar = view.verticalScrollBar();
        bar->setValue(100);
        wheel(view, -120, shift);
        QCOMPARE(bar->value(), 101);
        wheel(view, 120, shift);
        wheel(view, 120, shift);
        QCOMPARE(bar->value(), 99);
        wheel(view, 240, shift);
        QCOMPARE(bar->value(), 97);
        QCOMPARE(view.font().pointSize(), 14);
    }
    QApplication::setWheelScrollLines(3);
}

void GrepEditorWheelTest::aNotchAloneScrollsAsThePlatformSays()
{
    ShownView view;
    view.verticalScrollBar()->setValue(100);
    wheel(view, -120, Qt::NoModifier);
    QCOMPARE(view.verticalScrollBar()->value(), 100 + QApplication::wheelScrollLines());
}

QTEST_MAIN(GrepEditorWheelTest)

#include "GrepEditorWheelTest.moc"
