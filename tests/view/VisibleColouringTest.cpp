#include "view/VisibleColouring.h"

#include "settings/AppSettings.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "view/Highlighter.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>

class VisibleColouringTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void whatIsPaintedIsColoured();
    void whatIsNotOnScreenIsNot();
    void scrollingColoursWhatComesOnScreen();
    void aFindIsShownAtOnce();
    void anOpenedCommentIsShownAtOnce();
    void everyVisibleLineIsColoured_data();
    void everyVisibleLineIsColoured();
    void aLongLineIsColouredWhereItIsSeen();
    void aWrappedLineIsColouredWhole();
    void paintingComesToRest();
    void eachPieceOfALongLineIsATurnOfItsOwn();

private:
    ScratchFolder m_folder;
    std::unique_ptr<QPlainTextEdit> m_view;
    Highlighter *m_highlighter = nullptr;

    bool isColoured(int line) const;
    int lastColouredUnit(int line) const;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Counts the paint events of a widget.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count() const { return m_count; }

private:
    int m_count = 0;
};

} // namespace

void VisibleColouringTest::initTestCase()
{
    m_folder.write(text("list/c.lst"),
                   "[comment]\nsingleLine=//\nmultiLineStart=/\\*\n"
                   "multiLineEnd=\\*/\n\n");
    AppSettings::instance().load(m_folder.path());
}

void VisibleColouringTest::init()
{
    m_view = std::make_unique<QPlainTextEdit>();
    m_view->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_view->resize(400, 300);
    m_highlighter = new Highlighter(m_view->document(), false, Highlighter::Mode::OnDemand);
    m_highlighter->setTurn(kPatienceMilliseconds);
    new VisibleColouring(m_view.get(), m_highlighter);
    m_highlighter->setLanguage(QString(), text("c"));
    m_view->setPlainText(text("12 a b c\n").repeated(1000));
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get(), kPatienceMilliseconds));
}

bool VisibleColouringTest::isColoured(int line) const
{
    return lastColouredUnit(line) > 0;
}

int VisibleColouringTest::lastColouredUnit(int line) const
{
    int last = 0;
    for (const auto &range : m_view->document()->findBlockByNumber(line).layout()->formats())
        last = std::max(last, range.start + range.length);
    return last;
}

void VisibleColouringTest::whatIsPaintedIsColoured()
{
    const QImage plain = m_view->grab().toImage();
    QVERIFY(isColoured(0));
    bool seen = false;
    const QRgb value = AppSettings::instance().valuecolor.rgb();
    for (int y = 0; y < plain.height() && !seen; ++y) {
        for (int x = 0; x < plain.width() && !seen; ++x)
            seen = plain.pixel(x, y) == value;
    }
    QVERIFY(seen);
}

void VisibleColouringTest::whatIsNotOnScreenIsNot()
{
    m_view->grab();
    QVERIFY(!isColoured(200));
    QVERIFY(!isColoured(999));
}

void VisibleColouringTest::scrollingColoursWhatComesOnScreen()
{
    m_view->verticalScrollBar()->setValue(500);
    m_view->grab();
    QVERIFY(isColoured(500));
    QVERIFY(isColoured(505));
    QVERIFY(!isColoured(300));
    QVERIFY(!isColoured(700));
}

void VisibleColouringTest::aFindIsShownAtOnce()
{
    m_view->grab();
    QCOMPARE(lastColouredUnit(3), 2);
    m_highlighter->setFind(QRegExp(text("b")));
    QTRY_COMPARE_WITH_TIMEOUT(lastColouredUnit(3), 6, kPatienceMilliseconds);
}

void VisibleColouringTest::anOpenedCommentIsShownAtOnce()
{
    m_view->grab();
    QCOMPARE(lastColouredUnit(5), 2);
    QTest::keyClicks(m_view.get(), text("/*"));
    QTRY_COMPARE_WITH_TIMEOUT(lastColouredUnit(5), 8, kPatienceMilliseconds);
    QTest::keyClick(m_view.get(), Qt::Key_Backspace);
    QTRY_COMPARE_WITH_TIMEOUT(lastColouredUnit(5), 2, kPatienceMilliseconds);
}

void VisibleColouringTest::everyVisibleLineIsColoured_data()
{
    QTest::addColumn<int>("pointSize");
    QTest::addColumn<int>("top");
    for (int size : {4, 9, 14, 40}) {
        for (int top : {0, 1, 333, 999})
            QTest::addRow("%d points, from line %d", size, top) << size << top;
    }
}

void VisibleColouringTest::everyVisibleLineIsColoured()
{
    QFETCH(int, pointSize);
    QFETCH(int, top);
    QFont font = m_view->font();
    font.setPointSize(pointSize);
    m_view->setFont(font);
    m_view->verticalScrollBar()->setValue(top);
    m_view->grab();
    const int first = m_view->cursorForPosition(QPoint(0, 0)).blockNumber();
    const int last =
        m_view->cursorForPosition(QPoint(0, m_view->viewport()->height())).blockNumber();
    QVERIFY(last > first);
    for (int line = first; line <= std::min(last, 999); ++line)
        QVERIFY2(isColoured(line), qPrintable(QString::number(line)));
}

void VisibleColouringTest::aLongLineIsColouredWhereItIsSeen()
{
    m_view->setPlainText(text("12 ").repeated(20000));
    m_view->grab();
    const int width = lastColouredUnit(0);
    QVERIFY(width >= 400 / 20 && width < 30000);
    m_view->horizontalScrollBar()->setValue(m_view->horizontalScrollBar()->maximum());
    m_view->grab();
    QCOMPARE(lastColouredUnit(0), 59999);
}

void VisibleColouringTest::aWrappedLineIsColouredWhole()
{
    m_view->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_view->setPlainText(text("12 ").repeated(20000));
    m_view->grab();
    QCOMPARE(lastColouredUnit(0), 59999);
}

void VisibleColouringTest::paintingComesToRest()
{
    // A caret that blinks paints, too.
    const int flashTime = QApplication::cursorFlashTime();
    QApplication::setCursorFlashTime(0);
    PaintCounter paints(m_view->viewport());
    m_highlighter->setFind(QRegExp(text("c")));
    QTRY_VERIFY_WITH_TIMEOUT(paints.count() > 0, kPatienceMilliseconds);
    int count = -1;
    const bool rests = QTest::qWaitFor(
        [&] {
            const bool same = count == paints.count();
            count = paints.count();
            if (!same)
                QTest::qWait(200);
            return same;
        },
        kPatienceMilliseconds);
    QApplication::setCursorFlashTime(flashTime);
    QVERIFY(rests);
}

void VisibleColouringTest::eachPieceOfALongLineIsATurnOfItsOwn()
{
    constexpr int kLines = 5;
    // Each begins with a value, which has its colour when the whole line has.
    QString content;
    for (int line = 0; line < kLines; ++line)
        content += text("%1 ").arg(line) + text("a ").repeated(8000) + text("\n");
    m_view->setPlainText(content);
    m_highlighter->setTurn(0);
    m_highlighter->setFind(QRegExp(text("a+b")));
    const PaintCounter paints(m_view->viewport());
    int others = 0;
    QTimer betweenPieces;
    connect(&betweenPieces, &QTimer::timeout, this, [&] { ++others; });
    betweenPieces.start(0);
    QTRY_VERIFY_WITH_TIMEOUT(isColoured(kLines - 1), kPatienceMilliseconds);
    // As many units as may be on screen, at least.
    const int pieces = 4096 / LineFinder::kPiece;
    QVERIFY2(paints.count() >= kLines * pieces, qPrintable(QString::number(paints.count())));
    // What else the event loop has to do is done meanwhile.
    QVERIFY2(others >= kLines, qPrintable(QString::number(others)));
    for (int line = 0; line < kLines; ++line)
        QVERIFY(isColoured(line));
}

QTEST_MAIN(VisibleColouringTest)
#include "VisibleColouringTest.moc"
