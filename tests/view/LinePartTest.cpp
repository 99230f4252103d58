#include "view/LinePart.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QtTest>

/// The picture of a part is compared with that of the whole line.
class LinePartTest : public QObject {
    Q_OBJECT

private slots:
    void aShortLineIsTakenWhole();
    void aLongLineIsCut();
    void aPartLooksLikeTheWhole_data();
    void aPartLooksLikeTheWhole();
    void aPartNeverSplitsAPairOfSurrogates();
    void aLineWiderThanALayoutCountsIsCut();
    void tabsJustBehindTheirTextAreWhereTheyAreInTheWhole_data();
    void tabsJustBehindTheirTextAreWhereTheyAreInTheWhole();
    void tabsAreWhereTheLayoutsDeviceHasThem();
    void theWholeLineIsAskedForAFewTabsOnly_data();
    void theWholeLineIsAskedForAFewTabsOnly();
    void theEndIsPartOfTheLastPart();
    void formatsAreCountedFromThePart();
    void aLineFromRightToLeftIsTakenWhole_data();
    void aLineFromRightToLeftIsTakenWhole();
    void aLineThatIsBeingComposedIsTakenWhole();
};

namespace {

constexpr int kWidth = 300;
/// Two of the steps in which layouts compute, in pixels.
constexpr qreal kRounding = 2.0 / 64;

QString repeated(const QString &piece, int length)
{
    QString text;
    for (int i = 0; text.size() < length; ++i)
        text += piece.contains(QLatin1String("%1")) ? piece.arg(i) : piece;
    return text;
}

/// A document with one line, laid out as the views lay out theirs.
class OneLine : public QPlainTextEdit {
public:
    explicit OneLine(const QString &text)
    {
        setLineWrapMode(QPlainTextEdit::NoWrap);
        setFont(QFont(QStringLiteral("DejaVu Sans Mono"), 14));
        setTabStopDistance(4 * QFontMetricsF(font()).horizontalAdvance(QLatin1Char(' ')));
        setPlainText(text);
        layOut();
    }

    /// Also after a change of formats, which takes the layout's lines away.
    void layOut() const { blockBoundingRect(block()); }

    QTextBlock block() const { return document()->firstBlock(); }
    QTextLine line() const { return block().layout()->lineAt(0); }
    LinePart part(qreal left) const { return LinePart(block(), font(), left, left + kWidth); }
};

/// A layout asks it for its resolution at each tab that it lays out or passes.
class Device : public QPaintDevice {
public:
    explicit Device(int dotsPerInch) : m_dotsPerInch(dotsPerInch) { }

    int questions() const { return m_questions; }
    QPaintEngine *paintEngine() const override { return nullptr; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        if (metric != PdmDpiY)
            return QPaintDevice::metric(metric);
        ++m_questions;
        return m_dotsPerInch;
    }

private:
    const int m_dotsPerInch;
    mutable int m_questions = 0;
};

/// The first character of the part that is elsewhere than in the whole line; empty if
/// there is none.
QString firstMisplaced(const OneLine &line, const LinePart &part)
{
    const QTextLine own = part.layout().lineAt(0);
    for (int i = 0; i <= part.text().size(); ++i) {
        const qreal x = own.cursorToX(i) + part.offset().x();
        if (!(qAbs(x - line.line().cursorToX(part.from() + i)) <= kRounding))
            return QStringLiteral("%1 + %2").arg(part.from()).arg(i);
    }
    return QString();
}

QImage picture(const QTextLayout &layout, const QPointF &origin,
               const QVector<QTextLayout::FormatRange> &selections)
{
    QImage image(kWidth, 30, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setPen(Qt::white);
    layout.draw(&painter, origin, selections, image.rect());
    return image;
}

} // namespace

void LinePartTest::aShortLineIsTakenWhole()
{
    const OneLine line(repeated(QStringLiteral("abc "), LinePart::kLongLine - 4));
    QVERIFY(line.block().text().size() < LinePart::kLongLine);
    const LinePart part = line.part(0);
    QCOMPARE(&part.layout(), line.block().layout());
    QCOMPARE(part.from(), 0);
    QCOMPARE(part.offset(), QPointF());
    QCOMPARE(part.text(), line.block().text());
    QVERIFY(part.reachesEnd());
}

void LinePartTest::aLongLineIsCut()
{
    const OneLine line(repeated(QStringLiteral("abc "), 100000));
    const LinePart part = line.part(line.line().cursorToX(50000));
    QVERIFY(part.text().size() < 100);
    QVERIFY(part.from() < 50000);
    QVERIFY(part.from() > 50000 - 40);
    QCOMPARE(part.text(), line.block().text().mid(part.from(), part.text().size()));
    QVERIFY(!part.reachesEnd());
}

void LinePartTest::aPartLooksLikeTheWhole_data()
{
    QTest::addColumn<QString>("piece");
    QTest::newRow("ASCII") << QStringLiteral("f(a,b){return %1;}");
    QTest::newRow("Japanese") << QStringLiteral("検索　結果%1のabc");
    QTest::newRow("tabs") << QStringLiteral("x\t%1\t\t");
    QTest::newRow("text that ends at tab stops") << QStringLiteral("abcd\tefg\t");
    QTest::newRow("accents and pairs") << QStringLiteral("e\u0301\U0001F600%1");
    QTest::newRow("half-width katakana") << QStringLiteral("ｶﾞ%1ﾊﾟ ");
}

void LinePartTest::aPartLooksLikeTheWhole()
{
    QFETCH(QString, piece);
    const OneLine line(repeated(piece, 10000));
    QTextCharFormat marked;
    marked.setForeground(Qt::red);
    marked.setBackground(Qt::darkGreen);
    QVector<QTextLayout::FormatRange> formats;
    for (int i = 0; i < 10000; i += 7)
        formats.append({i, 3, marked});
    line.block().layout()->setFormats(formats);
    QTextCharFormat selected;
    selected.setForeground(Qt::yellow);
    selected.setBackground(Qt::blue);
    const QVector<QTextLayout::FormatRange> selections{{4990, 8, selected}, {9995, 5, selected}};

    line.layOut();
    for (const int index : {0, 1, 5, 4000, 4985, 4995, 5001, 9990, 10000}) {
        const qreal left = line.line().cursorToX(index) + 0.5;
        const LinePart part = line.part(left);
        QVERIFY(&part.layout() != line.block().layout());
        QCOMPARE(firstMisplaced(line, part), QString());
        // A tab stop may be a fraction of a pixel off, and letters are smoothed.
        if (piece.contains(QLatin1Char('\t')))
            continue;
        const QImage whole = picture(*line.block().layout(), QPointF(-left, 0), selections);
        const QImage cut =
            picture(part.layout(), QPointF(-left, 0) + part.offset(), part.cut(selections));
        QVERIFY2(whole == cut, qPrintable(QString::number(index)));
    }
}

void LinePartTest::aPartNeverSplitsAPairOfSurrogates()
{
    const OneLine line(repeated(QStringLiteral("\U0001F600"), 10000));
    for (int x = 5000; x < 5060; ++x) {
        const LinePart part = line.part(x);
        QVERIFY(&part.layout() != line.block().layout());
        QVERIFY(part.text().front().isHighSurrogate());
        QVERIFY(part.text().back().isLowSurrogate());
    }
}

void LinePartTest::aLineWiderThanALayoutCountsIsCut()
{
    OneLine line(QString(400000, QLatin1Char('x')));
    line.setFont(QFont(QStringLiteral("DejaVu Sans Mono"), 200));
    line.layOut();
    QVERIFY(line.line().naturalTextWidth() < 0); // it cannot be told
    const LinePart part = line.part(0);
    QCOMPARE(part.from(), 0);
    QVERIFY(part.text().size() < 10000);
    QVERIFY(!part.reachesEnd());
    const QTextLine own = part.layout().lineAt(0);
    QVERIFY(own.cursorToX(part.text().size()) > kWidth);
    QVERIFY(qAbs(own.cursorToX(3) + part.offset().x() - line.line().cursorToX(3)) <= kRounding);
}

void LinePartTest::tabsJustBehindTheirTextAreWhereTheyAreInTheWhole_data()
{
    QTest::addColumn<qreal>("gap");
    QTest::newRow("the next step") << 1.0 / 64;
    QTest::newRow("the whole rounds") << 0.25;
    QTest::newRow("it hardly does") << 0.5;
    QTest::newRow("it does not") << 1.5;
}

/// A layout passes over a stop to which less than a 128th of the distance is left.
void LinePartTest::tabsJustBehindTheirTextAreWhereTheyAreInTheWhole()
{
    QFETCH(qreal, gap);
    const QString piece = QStringLiteral("abcdefg\ta\t\t");
    OneLine line(repeated(piece, 10000));
    const qreal text = QFontMetricsF(line.font()).horizontalAdvance(piece.left(7));
    line.setTabStopDistance(text + gap);
    line.layOut();
    for (const int index : {0, 3, 4000, 5001, 5008, 9990}) {
        const LinePart part = line.part(line.line().cursorToX(index) + 0.5);
        QVERIFY(&part.layout() != line.block().layout());
        QCOMPARE(firstMisplaced(line, part), QString());
    }
}

void LinePartTest::tabsAreWhereTheLayoutsDeviceHasThem()
{
    Device device(150);
    OneLine line(repeated(QStringLiteral("x\t%1\t\t"), 10000));
    const qreal before = line.line().cursorToX(2);
    line.document()->documentLayout()->setPaintDevice(&device);
    line.block().layout()->clearLayout();
    line.layOut();
    QVERIFY(line.line().cursorToX(2) != before);
    for (const int index : {0, 1, 5, 5001, 9990}) {
        const LinePart part = line.part(line.line().cursorToX(index) + 0.5);
        QCOMPARE(firstMisplaced(line, part), QString());
    }
}

void LinePartTest::theWholeLineIsAskedForAFewTabsOnly_data()
{
    QTest::addColumn<int>("tabs");
    QTest::addColumn<int>("fontSize");
    QTest::newRow("many tabs") << 20000 << 14;
    QTest::newRow("wider than a layout counts") << 70000 << 200;
}

void LinePartTest::theWholeLineIsAskedForAFewTabsOnly()
{
    QFETCH(int, tabs);
    QFETCH(int, fontSize);
    Device device(96);
    OneLine line(QString(tabs, QLatin1Char('\t')));
    line.setFont(QFont(QStringLiteral("DejaVu Sans Mono"), fontSize));
    line.setTabStopDistance(4 * QFontMetricsF(line.font()).horizontalAdvance(QLatin1Char(' ')));
    line.document()->documentLayout()->setPaintDevice(&device);
    line.layOut();
    const int before = device.questions();
    const LinePart part = line.part(0);
    QVERIFY(device.questions() > before);
    // Once for its start, for its end, and for its first and last tab.
    QVERIFY2(device.questions() - before < 6 * tabs,
             qPrintable(QString::number(device.questions() - before)));
    QVERIFY(part.text().size() < 1000);
    QVERIFY(part.layout().lineAt(0).cursorToX(part.text().size()) > kWidth);
}

void LinePartTest::theEndIsPartOfTheLastPart()
{
    const OneLine line(repeated(QStringLiteral("abc "), 10000));
    const qreal end = line.line().cursorToX(10000);
    QVERIFY(line.part(end - 10).reachesEnd());
    QVERIFY(line.part(end - kWidth).reachesEnd());
    QVERIFY(line.part(end + 1000).reachesEnd());
    QVERIFY(!line.part(end - 3 * kWidth).reachesEnd());
}

void LinePartTest::formatsAreCountedFromThePart()
{
    const OneLine line(repeated(QStringLiteral("abc "), 10000));
    const LinePart part = line.part(line.line().cursorToX(10000));
    const int from = part.from();
    const int length = part.text().size();
    const QTextCharFormat format;
    const auto cut = part.cut({{0, from, format},
                               {from - 5, 7, format},
                               {from + 1, 2, format},
                               {from + length - 1, 100, format},
                               {from + length, 1, format}});
    QCOMPARE(cut.size(), 3);
    QCOMPARE(cut.at(0).start, 0);
    QCOMPARE(cut.at(0).length, 2);
    QCOMPARE(cut.at(1).start, 1);
    QCOMPARE(cut.at(1).length, 2);
    QCOMPARE(cut.at(2).start, length - 1);
    QCOMPARE(cut.at(2).length, 1);
}

void LinePartTest::aLineFromRightToLeftIsTakenWhole_data()
{
    QTest::addColumn<QString>("piece");
    QTest::newRow("Hebrew") << QStringLiteral("abc \u05D0\u05D1 ");
    QTest::newRow("Arabic") << QStringLiteral("abc \u0627\u0628 ");
    QTest::newRow("outside the basic plane") << QStringLiteral("abc \U0001E900 ");
}

void LinePartTest::aLineFromRightToLeftIsTakenWhole()
{
    QFETCH(QString, piece);
    const OneLine line(repeated(piece, 8000));
    const LinePart part = line.part(1000);
    QCOMPARE(&part.layout(), line.block().layout());
    QCOMPARE(part.text(), line.block().text());
}

void LinePartTest::aLineThatIsBeingComposedIsTakenWhole()
{
    const OneLine line(repeated(QStringLiteral("abc "), 8000));
    line.block().layout()->setPreeditArea(3, QStringLiteral("かな"));
    line.layOut();
    const LinePart part = line.part(1000);
    QCOMPARE(&part.layout(), line.block().layout());
    QVERIFY(part.text().startsWith(QStringLiteral("abcかな abc")));
}

QTEST_MAIN(LinePartTest)

#include "LinePartTest.moc"
