#include "engine/LoneCarriageReturn.h"

#include <QTest>

class LoneCarriageReturnTest : public QObject {
    Q_OBJECT

private slots:
    void oneIsFound_data();
    void oneIsFound();
};

void LoneCarriageReturnTest::oneIsFound_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("unitSize");
    QTest::addColumn<bool>("bigEndian");
    QTest::addColumn<bool>("found");
    QTest::newRow("none") << QByteArray("a\nb") << 1 << false << false;
    QTest::newRow("before a line feed") << QByteArray("a\r\nb") << 1 << false << false;
    QTest::newRow("inside a line") << QByteArray("a\rb\r\n") << 1 << false << true;
    QTest::newRow("the second of two") << QByteArray("a\r\nb\rc") << 1 << false << true;
    QTest::newRow("two before a line feed") << QByteArray("a\r\r\n") << 1 << false << true;
    QTest::newRow("the last byte") << QByteArray("a\r") << 1 << false << false;
    QTest::newRow("UTF-16LE") << QByteArray("\r\0a\0", 4) << 2 << false << true;
    QTest::newRow("UTF-16LE before a line feed")
        << QByteArray("\r\0\n\0", 4) << 2 << false << false;
    QTest::newRow("UTF-16BE") << QByteArray("\0\r\0a", 4) << 2 << true << true;
    QTest::newRow("a byte of another unit") << QByteArray("\r\x30\x61\0", 4) << 2 << false << false;
    QTest::newRow("UTF-32LE") << QByteArray("\r\0\0\0a\0\0\0", 8) << 4 << false << true;
}

void LoneCarriageReturnTest::oneIsFound()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, unitSize);
    QFETCH(bool, bigEndian);
    QTEST(LoneCarriageReturn::isIn(bytes.constData(), bytes.size(), unitSize, bigEndian), "found");
}

QTEST_GUILESS_MAIN(LoneCarriageReturnTest)
#include "LoneCarriageReturnTest.moc"
