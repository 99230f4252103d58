#include "engine/CodeSet.h"

#include <QTest>
#include <QTextCodec>

#include <array>
#include <thread>

class CodeSetTest : public QObject {
    Q_OBJECT

private slots:
    void everyThreadGetsTheSameCodec();
    void namesStandByNumber_data();
    void namesStandByNumber();
    void lineEndNamesStandByNumber();
    void numbersOutsideTheTableHaveNoName();
    void everyCodeSetButDefaultHasItsOwnCodec();
    void numbersOutsideTheTableHaveNoCodec();
};

void CodeSetTest::namesStandByNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("constant");
    QTest::newRow("Default") << 0 << int(CodeSet::Default);
    QTest::newRow("Shift-JIS") << 1 << int(CodeSet::ShiftJis);
    QTest::newRow("EUC-JP") << 2 << int(CodeSet::EucJp);
    QTest::newRow("ISO 2022-JP") << 3 << int(CodeSet::Iso2022Jp);
    QTest::newRow("UTF-8") << 4 << int(CodeSet::Utf8);
    QTest::newRow("UTF-16BE") << 5 << int(CodeSet::Utf16Be);
    QTest::newRow("UTF-16LE") << 6 << int(CodeSet::Utf16Le);
    QTest::newRow("UTF-32BE") << 7 << int(CodeSet::Utf32Be);
    QTest::newRow("UTF-32LE") << 8 << int(CodeSet::Utf32Le);
}

void CodeSetTest::namesStandByNumber()
{
    QFETCH(int, number);
    QTEST(number, "constant");
    QCOMPARE(CodeSet::name(number), QString::fromLatin1(QTest::currentDataTag()));
}

void CodeSetTest::lineEndNamesStandByNumber()
{
    QCOMPARE(CodeSet::lineEndName(0), QStringLiteral("CR"));
    QCOMPARE(CodeSet::lineEndName(1), QStringLiteral("LF"));
    QCOMPARE(CodeSet::lineEndName(2), QStringLiteral("CRLF"));
    QCOMPARE(int(CodeSet::Cr), 0);
    QCOMPARE(int(CodeSet::Lf), 1);
    QCOMPARE(int(CodeSet::CrLf), 2);
}

void CodeSetTest::numbersOutsideTheTableHaveNoName()
{
    for (const int number : {-2, -1, 9, 12, 1000000}) {
        QCOMPARE(CodeSet::name(number), QString());
        QCOMPARE(CodeSet::lineEndName(number), QString());
    }
    QCOMPARE(CodeSet::lineEndName(3), QString());
}

void CodeSetTest::everyCodeSetButDefaultHasItsOwnCodec()
{
    const std::array<int, CodeSet::kCount> mibs = {0, 17, 18, 39, 106, 1013, 1014, 1018, 1019};
    QVERIFY(CodeSet::codec(CodeSet::Default) == nullptr);
    for (int number = 1; number < CodeSet::kCount; ++number) {
        QVERIFY2(CodeSet::codec(number) != nullptr, qPrintable(CodeSet::name(number)));
        QCOMPARE(CodeSet::codec(number)->mibEnum(), mibs[size_t(number)]);
    }
}

void CodeSetTest::numbersOutsideTheTableHaveNoCodec()
{
    for (const int number : {-2, -1, 9, 10, 11, 1000000})
        QVERIFY(CodeSet::codec(number) == nullptr);
}

// The first of the tests: the codecs have not been looked up yet.
void CodeSetTest::everyThreadGetsTheSameCodec()
{
    constexpr size_t kThreads = 8;
    std::array<QTextCodec *, kThreads> codecs = {};
    std::array<std::thread, kThreads> threads;
    for (size_t i = 0; i < kThreads; ++i)
        threads[i] = std::thread([&codecs, i] { codecs[i] = CodeSet::codec(CodeSet::ShiftJis); });
    for (std::thread &thread : threads)
        thread.join();
    for (QTextCodec *codec : codecs)
        QVERIFY(codec != nullptr && codec == CodeSet::codec(CodeSet::ShiftJis));
}

QTEST_GUILESS_MAIN(CodeSetTest)
#include "CodeSetTest.moc"
