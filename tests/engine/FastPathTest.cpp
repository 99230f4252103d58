#include "engine/CodeSet.h"
#include "tests/engine_support/SearchCaseGenerator.h"
#include "tests/support/TestLength.h"

#include <QTest>
#include <QTextCodec>

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
    void aPatternThatIsTooLargeForBytesIsSearched_data();
    void aPatternThatIsTooLargeForBytesIsSearched();
};

void FastPathTest::theHitsAreThoseOfThePlainPath_data()
{
    QTest::addColumn<bool>("isList");
    QTest::addColumn<int>("rounds");
    QTest::newRow("keywords and patterns") << false << TestLength::rounds(30000, 400000);
    QTest::newRow("long lists of words") << true << TestLength::rounds(300, 15000);
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

void FastPathTest::aPatternThatIsTooLargeForBytesIsSearched_data()
{
    const QString ascii = QStringLiteral("x 12\n978-4 9784000000000 x ABCDEFGHIJKLMN\nend");
    const QString kanji = QStringLiteral("漢字\n書 9784000000000 図 ABCDEFGHIJKLMN\n館");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("codeSet");
    for (const char *pattern : {"[^0-9][0-9]{13}", "\\S+\\s[A-Z]{14}", "\\W+\\w[A-Z]{13}"}) {
        for (const int codeSet : {CodeSet::Utf8, CodeSet::ShiftJis, CodeSet::Utf16Le}) {
            const QString name = QLatin1String(pattern) + QLatin1Char(' ')
                + QLatin1String(CodeSet::codec(codeSet)->name());
            QTest::newRow(qPrintable(name)) << QString::fromLatin1(pattern) << ascii << codeSet;
            QTest::newRow(qPrintable(name + QStringLiteral(", kanji")))
                << QString::fromLatin1(pattern) << kanji << codeSet;
        }
    }
}

/// The automaton for bytes is larger than the one for text.
void FastPathTest::aPatternThatIsTooLargeForBytesIsSearched()
{
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QFETCH(int, codeSet);
    SearchCase made;
    made.condition.flg = SearchCondition::RegExpFlag;
    made.condition.keyword1 = pattern;
    made.codeSet = codeSet;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    made.content = CodeSet::codec(codeSet)->fromUnicode(text.constData(), text.size(), &state);
    QCOMPARE(made.hits().size(), 1);
    QCOMPARE(made.hits(), made.plainHits());
    QCOMPARE(made.hits(16), made.plainHits());
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
