#include "settings/CodecEnvironment.h"

#include <QTest>

class CodecEnvironmentTest : public QObject {
    Q_OBJECT

private slots:
    void theValueNamesTheWindowsMapping_data();
    void theValueNamesTheWindowsMapping();
    void theProcessGetsTheValue();
    void theLoggingRuleHasItsBlank();
};

void CodecEnvironmentTest::theValueNamesTheWindowsMapping_data()
{
    QTest::addColumn<QByteArray>("current");
    QTest::addColumn<QByteArray>("wanted");
    QTest::newRow("unset") << QByteArray() << QByteArray("cp932");
    QTest::newRow("empty") << QByteArray("") << QByteArray("cp932");
    QTest::newRow("another") << QByteArray("euc") << QByteArray("euc,cp932");
    QTest::newRow("the same") << QByteArray("cp932") << QByteArray("cp932");
    QTest::newRow("among others") << QByteArray("open-19970715-ms,cp932,x")
                                  << QByteArray("open-19970715-ms,cp932,x");
    QTest::newRow("inside a word") << QByteArray("xcp9321") << QByteArray("xcp9321");
    QTest::newRow("in capitals") << QByteArray("CP932") << QByteArray("CP932,cp932");
}

void CodecEnvironmentTest::theValueNamesTheWindowsMapping()
{
    QFETCH(QByteArray, current);
    QFETCH(QByteArray, wanted);
    QCOMPARE(CodecEnvironment::unicodeMap(current), wanted);
}

void CodecEnvironmentTest::theProcessGetsTheValue()
{
    qunsetenv("UNICODEMAP_JP");
    CodecEnvironment::applyUnicodeMap();
    QCOMPARE(qgetenv("UNICODEMAP_JP"), QByteArray("cp932"));
    qputenv("UNICODEMAP_JP", QByteArray("euc"));
    CodecEnvironment::applyUnicodeMap();
    CodecEnvironment::applyUnicodeMap();
    QCOMPARE(qgetenv("UNICODEMAP_JP"), QByteArray("euc,cp932"));
}

void CodecEnvironmentTest::theLoggingRuleHasItsBlank()
{
    QCOMPARE(CodecEnvironment::loggingFilterRules(),
             QStringLiteral("qt.network.ssl.w arning=false"));
}

QTEST_GUILESS_MAIN(CodecEnvironmentTest)
#include "CodecEnvironmentTest.moc"
