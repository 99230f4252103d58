#include "engine/RawLineCursor.h"

#include <QRandomGenerator>
#include <QTest>

class RawLineCursorTest : public QObject {
    Q_OBJECT

private slots:
    void theLinesAreThoseBetweenLineFeeds();
    void aPositionLiesOnItsLine();
    void aLineFeedIsAWholeUnit();
    void numbersBeginWhereTheyAreTold();
    void anEmptyTextIsOneLine();
};

namespace {

QByteArray lineOf(const RawLineCursor &cursor)
{
    return QByteArray(cursor.line(), int(cursor.length()));
}

QByteArray randomText(QRandomGenerator *random)
{
    QByteArray text;
    for (int i = random->bounded(200); i > 0; --i)
        text += random->bounded(6) == 0 ? '\n' : 'x';
    return text;
}

} // namespace

void RawLineCursorTest::theLinesAreThoseBetweenLineFeeds()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 500; ++round) {
        const QByteArray text = randomText(&random);
        const QList<QByteArray> lines = text.split('\n');
        RawLineCursor cursor(text.constData(), text.size(), 1, false);
        QCOMPARE(cursor.lastNumber(), qint64(lines.size()));
        for (int i = 0; i < lines.size(); ++i) {
            QCOMPARE(cursor.number(), qint64(i + 1));
            QCOMPARE(lineOf(cursor), lines.at(i));
            QCOMPARE(cursor.next(), i + 1 < lines.size());
        }
    }
}

void RawLineCursorTest::aPositionLiesOnItsLine()
{
    QRandomGenerator random(2);
    for (int round = 0; round < 500; ++round) {
        const QByteArray text = randomText(&random);
        RawLineCursor cursor(text.constData(), text.size(), 1, false);
        for (int position = 0; position < text.size(); position += 1 + random.bounded(40)) {
            if (text.at(position) == '\n' || position < cursor.start())
                continue;
            cursor.moveTo(position);
            QCOMPARE(cursor.number(), qint64(text.left(position).count('\n') + 1));
            QCOMPARE(lineOf(cursor), text.split('\n').at(int(cursor.number()) - 1));
        }
    }
}

void RawLineCursorTest::aLineFeedIsAWholeUnit()
{
    // U+0A0A and U+0A41 hold the byte, but are no line feed.
    const QByteArray text("\x0A\x0A\x41\x0A\x0A\x00\x62\x00", 8);
    RawLineCursor cursor(text.constData(), text.size(), 2, false);
    QCOMPARE(cursor.length(), qint64(4));
    QVERIFY(cursor.next());
    QCOMPARE(lineOf(cursor), QByteArray("b\0", 2));
    QVERIFY(!cursor.next());
    const QByteArray bigEndian("\x0A\x00\x00\x0A\x00\x62", 6);
    RawLineCursor other(bigEndian.constData(), bigEndian.size(), 2, true);
    QCOMPARE(other.length(), qint64(2));
    other.moveTo(4);
    QCOMPARE(other.number(), qint64(2));
    QCOMPARE(other.length(), qint64(2));
}

void RawLineCursorTest::numbersBeginWhereTheyAreTold()
{
    RawLineCursor cursor("a\nb", 3, 1, false, 40);
    QCOMPARE(cursor.number(), qint64(40));
    QCOMPARE(cursor.lastNumber(), qint64(41));
}

void RawLineCursorTest::anEmptyTextIsOneLine()
{
    RawLineCursor cursor("", 0, 1, false);
    QCOMPARE(cursor.length(), qint64(0));
    QCOMPARE(cursor.lastNumber(), qint64(1));
    QVERIFY(!cursor.next());
}

QTEST_GUILESS_MAIN(RawLineCursorTest)
#include "RawLineCursorTest.moc"
