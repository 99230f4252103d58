#include "mainwindow/SearchSummary.h"

#include <QLocale>
#include <QtTest>

using SearchSummary::Outcome;

class SearchSummaryTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void aSearchEndsWithItsCountsAndTime();
    void theSeparatorHas49Hyphens();
    void anAbortHasABannerInPlaceOfTheSeparator();
    void anAbortedSearchHasAllTheOtherLines();
    void keyword2IsToldWithItsDistance();
    void keyword3IsTold();
    void bothConditionsAreToldInTheirOrder();
    void anEmptyKeywordIsToldAsWell();
    void aKeywordThatLooksLikeAPlaceholderStays();
    void countsAreGroupedAsTheLocaleDoes();
    void theTimeChangesItsFormAfterAMinute_data();
    void theTimeChangesItsFormAfterAMinute();

    void whatWasSkippedHasAHead();
    void whatCouldNotBeReadHasAHead();
    void anEmptySectionHasNoHead();

    void theThreadTableHasAHead();
    void eachThreadHasALine();
    void aLongThreadNumberIsWhole();
};

namespace {

Outcome ended()
{
    Outcome outcome;
    outcome.matchedFiles = 2;
    outcome.totalFiles = 30;
    outcome.matchedLines = 4;
    outcome.elapsedMilliseconds = 1234;
    return outcome;
}

} // namespace

void SearchSummaryTest::init()
{
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
}

void SearchSummaryTest::aSearchEndsWithItsCountsAndTime()
{
    const QStringList expected{QStringLiteral("-------------------------------------------------"),
                               QStringLiteral("該当ファイル数 2 / 30"),
                               QStringLiteral("該当行数 4"), QStringLiteral("処理時間: 1.23 秒"),
                               QStringLiteral("")};
    QCOMPARE(SearchSummary::lines(ended()), expected);
}

void SearchSummaryTest::theSeparatorHas49Hyphens()
{
    QCOMPARE(SearchSummary::lines(ended()).first(), QString(49, QLatin1Char('-')));
}

void SearchSummaryTest::anAbortHasABannerInPlaceOfTheSeparator()
{
    Outcome outcome = ended();
    outcome.aborted = true;
    const QString banner =
        QStringLiteral("/////////////////////// 中止しました ///////////////////////////");
    QCOMPARE(SearchSummary::lines(outcome).first(), banner);
    QCOMPARE(SearchSummary::abortBanner(), banner);
}

void SearchSummaryTest::anAbortedSearchHasAllTheOtherLines()
{
    Outcome outcome = ended();
    outcome.usesKeyword2 = true;
    outcome.excludesKeyword3 = true;
    const QStringList whole = SearchSummary::lines(outcome);
    outcome.aborted = true;
    QCOMPARE(SearchSummary::lines(outcome).mid(1), whole.mid(1));
}

void SearchSummaryTest::keyword2IsToldWithItsDistance()
{
    Outcome outcome = ended();
    outcome.usesKeyword2 = true;
    outcome.keyword2 = QStringLiteral("close");
    outcome.lineDistance = 12345;
    const QStringList lines = SearchSummary::lines(outcome);
    QCOMPARE(lines.at(1), QStringLiteral("追加条件：「close」が 12345 行以内にある場合"));
    QCOMPARE(lines.at(2), QStringLiteral("該当ファイル数 2 / 30"));
}

void SearchSummaryTest::keyword3IsTold()
{
    Outcome outcome = ended();
    outcome.excludesKeyword3 = true;
    outcome.keyword3 = QStringLiteral("ABC|XYZ");
    const QStringList lines = SearchSummary::lines(outcome);
    QCOMPARE(lines.at(1), QStringLiteral("追加条件：「ABC|XYZ」を含まない行のみ"));
    QCOMPARE(lines.at(2), QStringLiteral("該当ファイル数 2 / 30"));
}

void SearchSummaryTest::bothConditionsAreToldInTheirOrder()
{
    Outcome outcome = ended();
    outcome.usesKeyword2 = true;
    outcome.keyword2 = QStringLiteral("b");
    outcome.lineDistance = 3;
    outcome.excludesKeyword3 = true;
    outcome.keyword3 = QStringLiteral("c");
    const QStringList lines = SearchSummary::lines(outcome);
    QCOMPARE(lines.size(), 7);
    QCOMPARE(lines.at(1), QStringLiteral("追加条件：「b」が 3 行以内にある場合"));
    QCOMPARE(lines.at(2), QStringLiteral("追加条件：「c」を含まない行のみ"));
}

void SearchSummaryTest::anEmptyKeywordIsToldAsWell()
{
    Outcome outcome = ended();
    outcome.usesKeyword2 = true;
    outcome.excludesKeyword3 = true;
    const QStringList lines = SearchSummary::lines(outcome);
    QCOMPARE(lines.at(1), QStringLiteral("追加条件：「」が 0 行以内にある場合"));
    QCOMPARE(lines.at(2), QStringLiteral("追加条件：「」を含まない行のみ"));
}

void SearchSummaryTest::aKeywordThatLooksLikeAPlaceholderStays()
{
    Outcome outcome = ended();
    outcome.usesKeyword2 = true;
    outcome.keyword2 = QStringLiteral("%2 %1");
    outcome.lineDistance = 3;
    outcome.excludesKeyword3 = true;
    outcome.keyword3 = QStringLiteral("%1");
    const QStringList lines = SearchSummary::lines(outcome);
    QCOMPARE(lines.at(1), QStringLiteral("追加条件：「%2 %1」が 3 行以内にある場合"));
    QCOMPARE(lines.at(2), QStringLiteral("追加条件：「%1」を含まない行のみ"));
}

void SearchSummaryTest::countsAreGroupedAsTheLocaleDoes()
{
    Outcome outcome = ended();
    outcome.matchedFiles = 1234;
    outcome.totalFiles = 2147483647;
    outcome.matchedLines = 56789;
    QStringList lines = SearchSummary::lines(outcome);
    QCOMPARE(lines.at(1), QStringLiteral("該当ファイル数 1,234 / 2,147,483,647"));
    QCOMPARE(lines.at(2), QStringLiteral("該当行数 56,789"));

    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    lines = SearchSummary::lines(outcome);
    QCOMPARE(lines.at(1), QStringLiteral("該当ファイル数 1.234 / 2.147.483.647"));
    QCOMPARE(lines.at(2), QStringLiteral("該当行数 56.789"));
    QCOMPARE(lines.at(3), QStringLiteral("処理時間: 1.23 秒"));
}

void SearchSummaryTest::theTimeChangesItsFormAfterAMinute_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, qint64 milliseconds, const char *expected) {
        QTest::newRow(name) << milliseconds << QString::fromUtf8(expected);
    };
    row("nothing", 0, "処理時間: 0.00 秒");
    row("two decimals", 500, "処理時間: 0.50 秒");
    row("rounded down", 59994, "処理時間: 59.99 秒");
    row("rounded up", 1006, "処理時間: 1.01 秒");
    row("exactly a minute", 60000, "処理時間: 60.00 秒");
    row("just above a minute", 60001, "処理時間: 1 分 0 秒");
    row("seconds are cut", 61500, "処理時間: 1 分 1 秒");
    row("the last second of a minute", 119999, "処理時間: 1 分 59 秒");
    row("two minutes", 120000, "処理時間: 2 分 0 秒");
    row("more than an hour", 3661000, "処理時間: 61 分 1 秒");
    row("not grouped", 60000000 + 60000, "処理時間: 1001 分 0 秒");
}

void SearchSummaryTest::theTimeChangesItsFormAfterAMinute()
{
    QFETCH(qint64, milliseconds);
    QFETCH(QString, expected);
    QCOMPARE(SearchSummary::elapsedText(milliseconds), expected);
    Outcome outcome = ended();
    outcome.elapsedMilliseconds = milliseconds;
    QCOMPARE(SearchSummary::lines(outcome).at(3), expected);
}

void SearchSummaryTest::whatWasSkippedHasAHead()
{
    const QStringList skipped{QStringLiteral("Warning exclution folder:/b/"),
                              QStringLiteral("Warning exclution folder:/a/")};
    const QStringList section = SearchSummary::warningSection(skipped);
    QCOMPARE(section.first(), QStringLiteral("---------- Warning skip foler or file ------------"));
    QCOMPARE(section.mid(1), skipped);
}

void SearchSummaryTest::whatCouldNotBeReadHasAHead()
{
    const QStringList unreadable{QStringLiteral("/b"), QStringLiteral("/a")};
    const QStringList section = SearchSummary::errorSection(unreadable);
    QCOMPARE(section.first(), QStringLiteral("---------- Read Error File ------------"));
    QCOMPARE(section.mid(1), unreadable);
}

void SearchSummaryTest::anEmptySectionHasNoHead()
{
    QVERIFY(SearchSummary::warningSection({}).isEmpty());
    QVERIFY(SearchSummary::errorSection({}).isEmpty());
}

void SearchSummaryTest::theThreadTableHasAHead()
{
    QCOMPARE(SearchSummary::threadTable({}), QStringLiteral("スレッド処理数\n"));
}

void SearchSummaryTest::eachThreadHasALine()
{
    QCOMPARE(SearchSummary::threadTable({{42, 1234567}, {7, 0}}),
             QStringLiteral("スレッド処理数\n"
                            "  ID 1: 00007 0 \n"
                            "  ID 2: 00042 1234567 \n"));
}

void SearchSummaryTest::aLongThreadNumberIsWhole()
{
    QCOMPARE(SearchSummary::threadTable({{12345, 1}, {1234567, 2}}),
             QStringLiteral("スレッド処理数\n"
                            "  ID 1: 12345 1 \n"
                            "  ID 2: 1234567 2 \n"));
}

QTEST_GUILESS_MAIN(SearchSummaryTest)

#include "SearchSummaryTest.moc"
