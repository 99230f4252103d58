#include "engine/LineCountReport.h"

#include <QTest>

#include <limits>

namespace {

const QString kFolderRule = QStringLiteral("---------------------------------------");
const QString kEndRule = QStringLiteral("-------------------------------------------------");

QLocale english()
{
    return QLocale(QLocale::English, QLocale::UnitedStates);
}

} // namespace

class LineCountReportTest : public QObject {
    Q_OBJECT

private slots:
    void aFileIsACountOfSevenPlacesABlankAndItsName();
    void aCountIsGroupedAsInTheLocale();
    void aCountWiderThanSevenPlacesIsPrintedWhole();
    void filesOfOneFolderGetNoSubtotalBeforeTheFinish();
    void aFolderChangePrintsTheFolderBeforeAndStartsAnew();
    void aFolderThatComesBackIsAFolderChange();
    void theFinishPrintsTheLastSubtotalTheRuleAndTheTotals();
    void anAbortedCountPrintsTheBannerInsteadOfTheLastSubtotal();
    void aCountWithoutFilesEndsWithZeros();
    void theNumberOfFilesIsNotGrouped();
    void aPercentSignInANameIsNoPlaceholder();
    void theTotalPassesTheRangeOfOneCount();
};

void LineCountReportTest::aFileIsACountOfSevenPlacesABlankAndItsName()
{
    LineCountReport report(english());
    QCOMPARE(report.addFile(QStringLiteral("/t/a.txt"), 12),
             QStringList(QStringLiteral("     12 /t/a.txt")));
}

void LineCountReportTest::aCountIsGroupedAsInTheLocale()
{
    LineCountReport report(QLocale(QLocale::German));
    QCOMPARE(report.addFile(QStringLiteral("/t/a.txt"), 12345),
             QStringList(QStringLiteral(" 12.345 /t/a.txt")));
    QCOMPARE(report.finish(false).first(), QStringLiteral("合計 12.345\n"));
    QCOMPARE(report.finish(false).last(), QStringLiteral("合計行数 12.345  該当ファイル数 1"));
}

void LineCountReportTest::aCountWiderThanSevenPlacesIsPrintedWhole()
{
    LineCountReport report(english());
    QCOMPARE(report.addFile(QStringLiteral("/t/a.txt"), 123456),
             QStringList(QStringLiteral("123,456 /t/a.txt")));
    QCOMPARE(report.addFile(QStringLiteral("/t/b.txt"), 12345678),
             QStringList(QStringLiteral("12,345,678 /t/b.txt")));
}

void LineCountReportTest::filesOfOneFolderGetNoSubtotalBeforeTheFinish()
{
    LineCountReport report(english());
    QCOMPARE(report.addFile(QStringLiteral("/t/a.txt"), 1).size(), 1);
    QCOMPARE(report.addFile(QStringLiteral("/t/b.txt"), 2).size(), 1);
    QCOMPARE(report.finish(false).count(QStringLiteral("合計 3\n")), 1);
}

void LineCountReportTest::aFolderChangePrintsTheFolderBeforeAndStartsAnew()
{
    LineCountReport report(english());
    report.addFile(QStringLiteral("/t/a.txt"), 1000);
    report.addFile(QStringLiteral("/t/b.txt"), 500);
    QCOMPARE(report.addFile(QStringLiteral("/t/u/c.txt"), 3),
             QStringList({kFolderRule, QStringLiteral("合計 1,500\n"),
                          QStringLiteral("      3 /t/u/c.txt")}));
    QCOMPARE(report.finish(false),
             QStringList({QStringLiteral("合計 3\n"), kEndRule,
                          QStringLiteral("合計行数 1,503  該当ファイル数 3")}));
}

void LineCountReportTest::aFolderThatComesBackIsAFolderChange()
{
    LineCountReport report(english());
    report.addFile(QStringLiteral("/t/a.txt"), 1);
    report.addFile(QStringLiteral("/u/b.txt"), 2);
    QCOMPARE(report.addFile(QStringLiteral("/t/c.txt"), 4).at(1), QStringLiteral("合計 2\n"));
    QCOMPARE(report.finish(false).first(), QStringLiteral("合計 4\n"));
}

void LineCountReportTest::theFinishPrintsTheLastSubtotalTheRuleAndTheTotals()
{
    LineCountReport report(english());
    report.addFile(QStringLiteral("/t/a.txt"), 7);
    QCOMPARE(report.finish(false),
             QStringList({QStringLiteral("合計 7\n"), kEndRule,
                          QStringLiteral("合計行数 7  該当ファイル数 1")}));
}

void LineCountReportTest::anAbortedCountPrintsTheBannerInsteadOfTheLastSubtotal()
{
    LineCountReport report(english());
    report.addFile(QStringLiteral("/t/a.txt"), 7);
    QCOMPARE(report.finish(true),
             QStringList({QStringLiteral(
                              "/////////////////////// 中止しました ///////////////////////////"),
                          QStringLiteral("合計行数 7  該当ファイル数 1")}));
}

void LineCountReportTest::aCountWithoutFilesEndsWithZeros()
{
    QCOMPARE(LineCountReport(english()).finish(false),
             QStringList({QStringLiteral("合計 0\n"), kEndRule,
                          QStringLiteral("合計行数 0  該当ファイル数 0")}));
}

void LineCountReportTest::theNumberOfFilesIsNotGrouped()
{
    LineCountReport report(english());
    for (int i = 0; i < 1000; ++i)
        report.addFile(QStringLiteral("/t/a.txt"), 1);
    QCOMPARE(report.fileCount(), 1000);
    QCOMPARE(report.finish(false).last(), QStringLiteral("合計行数 1,000  該当ファイル数 1000"));
}

void LineCountReportTest::aPercentSignInANameIsNoPlaceholder()
{
    LineCountReport report(english());
    QCOMPARE(report.addFile(QStringLiteral("/t/%1%L2.txt"), 5),
             QStringList(QStringLiteral("      5 /t/%1%L2.txt")));
}

void LineCountReportTest::theTotalPassesTheRangeOfOneCount()
{
    LineCountReport report(english());
    report.addFile(QStringLiteral("/t/a.txt"), std::numeric_limits<int>::max());
    report.addFile(QStringLiteral("/t/b.txt"), 1);
    QCOMPARE(report.lineCount(), Q_INT64_C(2147483648));
    QCOMPARE(report.finish(false).first(), QStringLiteral("合計 2,147,483,648\n"));
}

QTEST_GUILESS_MAIN(LineCountReportTest)
#include "LineCountReportTest.moc"
