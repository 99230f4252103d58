#include "view/TextMarks.h"

#include <QtTest>

class TextMarksTest : public QObject {
    Q_OBJECT

private slots:
    void whatIsOnIsMarked_data();
    void whatIsOnIsMarked();
    void onlyTheAskedPartIsLookedAt();
    void aSignBelowTheLimitIsTwoPointsSmaller_data();
    void aSignBelowTheLimitIsTwoPointsSmaller();
    void theSmallestSignHasOnePoint();
    void aFontInPixelsStays();
    void theCurrentLineIsBrighterAndHalfTransparent_data();
    void theCurrentLineIsBrighterAndHalfTransparent();
    void withoutAColourThereIsNoFill();
};

namespace {

/// Marks as text: position and sign of each.
QString described(const QVector<TextMarks::Mark> &marks)
{
    QString text;
    for (const TextMarks::Mark &mark : marks)
        text += QString::number(mark.position) + mark.sign;
    return text;
}

TextMarks::Options options(bool tabs, bool spaces)
{
    TextMarks::Options options;
    options.tabs = tabs;
    options.fullWidthSpaces = spaces;
    options.lineEnds = true;
    return options;
}

} // namespace

void TextMarksTest::whatIsOnIsMarked_data()
{
    QTest::addColumn<bool>("tabs");
    QTest::addColumn<bool>("spaces");
    QTest::addColumn<QString>("marks");
    QTest::newRow("nothing") << false << false << QString();
    QTest::newRow("tabs") << true << false << QStringLiteral("0»4»");
    QTest::newRow("full-width spaces") << false << true << QStringLiteral("2□6□");
    QTest::newRow("both") << true << true << QStringLiteral("0»2□4»6□");
}

void TextMarksTest::whatIsOnIsMarked()
{
    QFETCH(bool, tabs);
    QFETCH(bool, spaces);
    const QString text = QStringLiteral("\ta\u3000 \tb\u3000");
    QTEST(described(TextMarks::inText(text, 0, text.size(), options(tabs, spaces))), "marks");
}

void TextMarksTest::onlyTheAskedPartIsLookedAt()
{
    const QString text = QStringLiteral("\t\t\t\t");
    const auto marks = [&text](int from, int to) {
        return described(TextMarks::inText(text, from, to, options(true, true)));
    };
    QCOMPARE(marks(1, 3), QStringLiteral("1»2»"));
    QCOMPARE(marks(-5, 1), QStringLiteral("0»"));
    QCOMPARE(marks(3, 99), QStringLiteral("3»"));
    QCOMPARE(marks(4, 9), QString());
    QCOMPARE(marks(3, 1), QString());
}

void TextMarksTest::aSignBelowTheLimitIsTwoPointsSmaller_data()
{
    QTest::addColumn<QChar>("sign");
    QTest::addColumn<int>("pointSize");
    QTest::newRow("tab") << QChar(TextMarks::kTab) << 12;
    QTest::newRow("full-width space") << QChar(TextMarks::kFullWidthSpace) << 12;
    QTest::newRow("line end") << QChar(TextMarks::kLineEnd) << 12;
    QTest::newRow("document end") << QChar(TextMarks::kDocumentEnd) << 12;
    QTest::newRow("last below") << QChar(0xFEEA) << 12;
    QTest::newRow("limit") << QChar(0xFEEB) << 14;
    QTest::newRow("half-width arrow") << QChar(0xFFEC) << 14;
}

void TextMarksTest::aSignBelowTheLimitIsTwoPointsSmaller()
{
    QFETCH(QChar, sign);
    const QFont font(QStringLiteral("Some Font"), 14, QFont::Bold);
    const QFont signFont = TextMarks::fontFor(sign, font);
    QTEST(signFont.pointSize(), "pointSize");
    QCOMPARE(signFont.family(), font.family());
    QCOMPARE(signFont.weight(), font.weight());
}

void TextMarksTest::theSmallestSignHasOnePoint()
{
    for (const int size : {1, 2, 3})
        QCOMPARE(TextMarks::fontFor(TextMarks::kTab, QFont(QStringLiteral("F"), size)).pointSize(),
                 1);
}

void TextMarksTest::aFontInPixelsStays()
{
    QFont font;
    font.setPixelSize(20);
    QCOMPARE(TextMarks::fontFor(TextMarks::kTab, font).pixelSize(), 20);
}

void TextMarksTest::theCurrentLineIsBrighterAndHalfTransparent_data()
{
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<QColor>("fill");
    QTest::newRow("dark") << QColor(10, 27, 52) << QColor(50, 67, 92, 128);
    QTest::newRow("up to the limit") << QColor(215, 215, 215) << QColor(255, 255, 255, 128);
    QTest::newRow("beyond the limit") << QColor(216, 255, 51) << QColor(255, 255, 91, 128);
}

void TextMarksTest::theCurrentLineIsBrighterAndHalfTransparent()
{
    QFETCH(QColor, colour);
    QTEST(TextMarks::currentLineFill(colour), "fill");
}

void TextMarksTest::withoutAColourThereIsNoFill()
{
    QVERIFY(!TextMarks::currentLineFill(QColor()).isValid());
}

QTEST_GUILESS_MAIN(TextMarksTest)

#include "TextMarksTest.moc"
