#include "engine/ByteOrderMark.h"

#include "engine/CodeSet.h"

#include <QTest>

class ByteOrderMarkTest : public QObject {
    Q_OBJECT

private slots:
    void aMarkOverridesTheCodeSet_data();
    void aMarkOverridesTheCodeSet();
    void withoutAMarkAllStays_data();
    void withoutAMarkAllStays();
};

void ByteOrderMarkTest::aMarkOverridesTheCodeSet_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("markSize");
    QTest::addColumn<int>("codeSet");
    QTest::newRow("UTF-8") << QByteArray("\xEF\xBB\xBFx") << 3 << int(CodeSet::Utf8);
    QTest::newRow("UTF-16BE") << QByteArray("\xFE\xFF\0x", 4) << 2 << int(CodeSet::Utf16Be);
    QTest::newRow("UTF-16LE") << QByteArray("\xFF\xFEx\0", 4) << 2 << int(CodeSet::Utf16Le);
    QTest::newRow("UTF-32BE") << QByteArray("\0\0\xFE\xFF", 4) << 4 << int(CodeSet::Utf32Be);
    QTest::newRow("UTF-32LE, which begins like UTF-16LE")
        << QByteArray("\xFF\xFE\0\0", 4) << 4 << int(CodeSet::Utf32Le);
}

void ByteOrderMarkTest::aMarkOverridesTheCodeSet()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, markSize);
    const char *at = bytes.constData();
    qint64 size = bytes.size();
    int codeSet = CodeSet::ShiftJis;
    ByteOrderMark::skip(&at, &size, &codeSet);
    QCOMPARE(int(at - bytes.constData()), markSize);
    QCOMPARE(size, qint64(bytes.size() - markSize));
    QTEST(codeSet, "codeSet");
}

void ByteOrderMarkTest::withoutAMarkAllStays_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("part of a mark") << QByteArray("\xEF\xBB");
    QTest::newRow("one byte of a mark") << QByteArray("\xFF");
    QTest::newRow("a mark that comes later") << QByteArray("x\xEF\xBB\xBF");
}

void ByteOrderMarkTest::withoutAMarkAllStays()
{
    QFETCH(QByteArray, bytes);
    const char *at = bytes.constData();
    qint64 size = bytes.size();
    int codeSet = CodeSet::EucJp;
    ByteOrderMark::skip(&at, &size, &codeSet);
    QCOMPARE(at, bytes.constData());
    QCOMPARE(size, qint64(bytes.size()));
    QCOMPARE(codeSet, int(CodeSet::EucJp));
}

QTEST_GUILESS_MAIN(ByteOrderMarkTest)
#include "ByteOrderMarkTest.moc"
