#include "tests/engine_support/SearchCaseGenerator.h"
#include "tests/support/TestLength.h"

#include <QTest>

#include <algorithm>

namespace {

constexpr quint32 kSeed = 20150401;

} // namespace

/// The shortcuts of a search (files that are not decoded, lines that are not
/// visited) against the plain way, which decodes and visits everything.
class FastPathTest : public QObject {
    Q_OBJECT

private slots:
    void theHitsAreThoseOfThePlainPath_data();
    void theHitsAreThoseOfThePlainPath();
};

void FastPathTest::theHitsAreThoseOfThePlainPath_data()
{
    QTest::addColumn<bool>("isList");
    QTest::addColumn<int>("rounds");
    QTest::newRow("keywords and patterns") << false << TestLength::rounds(30000, 400000);
    QTest::newRow("long lists of words") << true << TestLength::rounds(1000, 15000);
}

void FastPathTest::theHitsAreThoseOfThePlainPath()
{
    QFETCH(bool, isList);
    QFETCH(int, rounds);
    SearchCaseGenerator generator(kSeed);
    int withHits = 0;
    for (int i = 0; i < rounds; ++i) {
        const SearchCase made = isList ? generator.nextWithList() : generator.next();
        const QStringList expected = made.plainHits();
        // A mark must be in the first piece.
        const QStringList actual = made.hits(i % 2 == 0 ? made.content.size() : 8 + i % 60);
        if (actual != expected)
            qInfo("case %d: %s", i, qPrintable(made.describe()));
        QCOMPARE(actual, expected);
        withHits += expected.isEmpty() ? 0 : 1;
    }
    // A generator that never hits would compare nothing.
    QVERIFY2(withHits > rounds / 5, qPrintable(QString::number(withHits)));
}

int main(int argc, char *argv[])
{
    // As the programs do before they use a codec.
    qputenv("UNICODEMAP_JP", "cp932");
    QCoreApplication application(argc, argv);
    FastPathTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "FastPathTest.moc"
