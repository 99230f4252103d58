#include "cli/SearchRequest.h"

#include <QTest>

class SearchRequestTest : public QObject {
    Q_OBJECT

private slots:
    void theConditionHoldsWhatTheCommandLineSays();
    void withoutOptionsTheKeywordIsAPattern();
    void theOtherModesCountLines_data();
    void theOtherModesCountLines();
    void exclusionsAddToThoseOfTheSettings();
    void sizeAndTabWidthReplaceThoseOfTheSettings();
    void withoutOptionsTheSettingsHold();
    void oneQueuedFileIsLoaded();
    void onlyEncodingsReportEncodings();
};

void SearchRequestTest::theConditionHoldsWhatTheCommandLineSays()
{
    Options options;
    options.keyword = QStringLiteral("one");
    options.nearKeyword = QStringLiteral("two");
    options.within = 7;
    options.notKeyword = QStringLiteral("three");
    options.ignoreCase = true;
    options.word = true;
    options.fixedStrings = true;
    options.mask = QStringLiteral("*.h");
    options.subdirs = false;
    options.namesWithoutHits = true;
    const SearchCondition condition =
        SearchRequest::condition(options, {QStringLiteral("a/"), QStringLiteral("b")});
    QCOMPARE(condition.pathlist, QStringList({QStringLiteral("a/"), QStringLiteral("b")}));
    QCOMPARE(condition.mask, QStringLiteral("*.h"));
    QCOMPARE(condition.keyword1, QStringLiteral("one"));
    QCOMPARE(condition.keyword2, QStringLiteral("two"));
    QCOMPARE(condition.keyword3, QStringLiteral("three"));
    QCOMPARE(condition.plusline, 7);
    QCOMPARE(condition.flg, 0x110);
    QVERIFY(condition.fnameflg);
    QVERIFY(!condition.subdir);
    QVERIFY(!condition.linecount);
}

void SearchRequestTest::withoutOptionsTheKeywordIsAPattern()
{
    const SearchCondition condition = SearchRequest::condition(Options(), {});
    QCOMPARE(condition.flg, 0x001);
    QCOMPARE(condition.plusline, 0);
    QCOMPARE(condition.mask, QStringLiteral("*.*"));
    QVERIFY(!condition.fnameflg);
    QVERIFY(condition.subdir);
    QVERIFY(!condition.linecount);
}

void SearchRequestTest::theOtherModesCountLines_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("line count") << static_cast<int>(Options::Mode::LineCount);
    QTest::newRow("encodings") << static_cast<int>(Options::Mode::Encodings);
}

void SearchRequestTest::theOtherModesCountLines()
{
    QFETCH(int, mode);
    Options options;
    options.mode = static_cast<Options::Mode>(mode);
    QVERIFY(SearchRequest::condition(options, {}).linecount);
}

void SearchRequestTest::exclusionsAddToThoseOfTheSettings()
{
    SearchLimits settings;
    settings.excludedFolders = QStringList{QStringLiteral(".git")};
    settings.excludedFiles = QStringList{QStringLiteral(".o")};
    Options options;
    options.excludedFolders = QStringList{QStringLiteral("build")};
    options.excludedFiles = QStringList{QStringLiteral(".bak")};
    const SearchLimits limits = SearchRequest::engineOptions(options, settings).limits;
    QCOMPARE(limits.excludedFolders,
             QStringList({QStringLiteral(".git"), QStringLiteral("build")}));
    QCOMPARE(limits.excludedFiles, QStringList({QStringLiteral(".o"), QStringLiteral(".bak")}));
}

void SearchRequestTest::sizeAndTabWidthReplaceThoseOfTheSettings()
{
    Options options;
    options.maxSize = 20;
    options.tabWidth = 3;
    const SearchLimits limits = SearchRequest::engineOptions(options, SearchLimits()).limits;
    QCOMPARE(limits.bigsize, 20);
    QCOMPARE(limits.tabcolm, 3);
}

void SearchRequestTest::withoutOptionsTheSettingsHold()
{
    SearchLimits settings;
    settings.bigsize = 5;
    settings.tabcolm = 8;
    settings.codechksize = 100;
    settings.detectsize = 50;
    const SearchLimits limits = SearchRequest::engineOptions(Options(), settings).limits;
    QCOMPARE(limits.bigsize, 5);
    QCOMPARE(limits.tabcolm, 8);
    QCOMPARE(limits.codechksize, 100);
    QCOMPARE(limits.detectsize, 50);
}

void SearchRequestTest::oneQueuedFileIsLoaded()
{
    QCOMPARE(SearchRequest::engineOptions(Options(), SearchLimits()).loadThreshold, 1);
}

void SearchRequestTest::onlyEncodingsReportEncodings()
{
    Options options;
    QVERIFY(!SearchRequest::engineOptions(options, SearchLimits()).reportEncodings);
    options.mode = Options::Mode::LineCount;
    QVERIFY(!SearchRequest::engineOptions(options, SearchLimits()).reportEncodings);
    options.mode = Options::Mode::Encodings;
    QVERIFY(SearchRequest::engineOptions(options, SearchLimits()).reportEncodings);
}

QTEST_GUILESS_MAIN(SearchRequestTest)
#include "SearchRequestTest.moc"
