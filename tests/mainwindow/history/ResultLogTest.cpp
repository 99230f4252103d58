#include "mainwindow/history/ResultLog.h"

#include <QTest>

class ResultLogTest : public QObject {
    Q_OBJECT

private slots:
    void aLogIsWrittenToTheLetter();
    void theLinesOfAnEmptyRequestHaveLabelsOnly();
    void aBooleanIsOneOrZero_data();
    void aBooleanIsOneOrZero();
    void theLineDistanceIsDecimal();
    void thePathsAreJoined_data();
    void thePathsAreJoined();
    void theExtensionIsTheSuffixOfTheMasksFirstWord_data();
    void theExtensionIsTheSuffixOfTheMasksFirstWord();
    void aLineBreakInAValueShiftsNoLine();
    void theTextHasNoLineEndAdded_data();
    void theTextHasNoLineEndAdded();
};

namespace {

QString lineOf(const ResultLog &log, int number)
{
    return log.write().section(QLatin1Char('\n'), number - 1, number - 1);
}

} // namespace

void ResultLogTest::aLogIsWrittenToTheLetter()
{
    ResultLog log;
    log.keyword1 = QStringLiteral("検索 語");
    log.ignoreCase = true;
    log.regexp = true;
    log.subdir = true;
    log.extraGroup = true;
    log.keyword2 = QStringLiteral("second");
    log.lineDistance = 12;
    log.paths = QStringList{QStringLiteral("c:\\a"), QStringLiteral("d:/b/")};
    log.mask = QStringLiteral("*.cpp *.h");
    log.keyword3Group = true;
    log.keyword3 = QStringLiteral("third");
    log.text = QStringLiteral("::c:/a/x.cpp\n      1:    1:検索 語\n");
    QCOMPARE(log.write(),
             QStringLiteral("version :5.00\n"
                            "keyword1:検索 語\n"
                            "case    :1\n"
                            "word    :0\n"
                            "regexp  :1\n"
                            "subdir  :1\n"
                            "groupbox:1\n"
                            "keyword2:second\n"
                            "plusline:12\n"
                            "pathlist:c:/a/, d:/b/\n"
                            "mask    :*.cpp *.h\n"
                            "ext     :cpp\n"
                            "exclsive:1\n"
                            "keyword3:third\n"
                            "-----------------------\n"
                            "::c:/a/x.cpp\n      1:    1:検索 語\n"));
}

void ResultLogTest::theLinesOfAnEmptyRequestHaveLabelsOnly()
{
    QCOMPARE(ResultLog().write(),
             QStringLiteral("version :5.00\nkeyword1:\ncase    :0\nword    :0\nregexp  :0\n"
                            "subdir  :0\ngroupbox:0\nkeyword2:\nplusline:0\npathlist:\n"
                            "mask    :\next     :\nexclsive:0\nkeyword3:\n"
                            "-----------------------\n"));
}

void ResultLogTest::aBooleanIsOneOrZero_data()
{
    QTest::addColumn<int>("line");
    for (const int line : {3, 4, 5, 6, 7, 13})
        QTest::newRow(qPrintable(QStringLiteral("line %1").arg(line))) << line;
}

void ResultLogTest::aBooleanIsOneOrZero()
{
    QFETCH(int, line);
    ResultLog log;
    bool *const flag = line == 3 ? &log.ignoreCase
        : line == 4              ? &log.word
        : line == 5              ? &log.regexp
        : line == 6              ? &log.subdir
        : line == 7              ? &log.extraGroup
                                 : &log.keyword3Group;
    QCOMPARE(lineOf(log, line).mid(9), QStringLiteral("0"));
    *flag = true;
    QCOMPARE(lineOf(log, line).mid(9), QStringLiteral("1"));
    for (const int other : {3, 4, 5, 6, 7, 13}) {
        if (other != line)
            QCOMPARE(lineOf(log, other).mid(9), QStringLiteral("0"));
    }
}

void ResultLogTest::theLineDistanceIsDecimal()
{
    ResultLog log;
    log.lineDistance = 10000;
    QCOMPARE(lineOf(log, 9), QStringLiteral("plusline:10000"));
}

void ResultLogTest::thePathsAreJoined_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QString>("value");
    QTest::newRow("none") << QStringList() << QString();
    QTest::newRow("backslashes and missing slashes")
        << QStringList{QStringLiteral("c:\\a"), QStringLiteral("d:/b/")}
        << QStringLiteral("c:/a/, d:/b/");
    QTest::newRow("a backslash at the end is the slash")
        << QStringList{QStringLiteral("c:\\a\\")} << QStringLiteral("c:/a/");
    QTest::newRow("the same path twice")
        << QStringList{QStringLiteral("/x"), QStringLiteral("/y"), QStringLiteral("/x")}
        << QStringLiteral("/x/, /y/");
    QTest::newRow("paths that become the same stay two")
        << QStringList{QStringLiteral("/x"), QStringLiteral("/x/")} << QStringLiteral("/x/, /x/");
    QTest::newRow("a list file gets a slash too")
        << QStringList{QStringLiteral("@/l.ini")} << QStringLiteral("@/l.ini/");
}

void ResultLogTest::thePathsAreJoined()
{
    QFETCH(QStringList, paths);
    QFETCH(QString, value);
    QCOMPARE(ResultLog::pathListValue(paths), value);
}

void ResultLogTest::theExtensionIsTheSuffixOfTheMasksFirstWord_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("extension");
    QTest::newRow("two words") << QStringLiteral("*.cpp *.h") << QStringLiteral("cpp");
    QTest::newRow("the last of two dots") << QStringLiteral("*.tar.gz") << QStringLiteral("gz");
    QTest::newRow("no dot") << QStringLiteral("Makefile *.c") << QString();
    QTest::newRow("a blank in front") << QStringLiteral(" *.c") << QString();
    QTest::newRow("other separators are part of the word")
        << QStringLiteral("*.c;*.h") << QStringLiteral("h");
    QTest::newRow("empty") << QString() << QString();
}

void ResultLogTest::theExtensionIsTheSuffixOfTheMasksFirstWord()
{
    QFETCH(QString, mask);
    QFETCH(QString, extension);
    QCOMPARE(ResultLog::extensionOf(mask), extension);
}

void ResultLogTest::aLineBreakInAValueShiftsNoLine()
{
    ResultLog log;
    log.keyword1 = QStringLiteral("a\nb\rc");
    log.paths = QStringList{QStringLiteral("/x\ny")};
    log.text = QStringLiteral("text");
    QCOMPARE(lineOf(log, 2), QStringLiteral("keyword1:a b c"));
    QCOMPARE(lineOf(log, 10), QStringLiteral("pathlist:/x y/"));
    QCOMPARE(lineOf(log, 16), QStringLiteral("text"));
}

void ResultLogTest::theTextHasNoLineEndAdded_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("without") << QStringLiteral("a\nb");
    QTest::newRow("with one") << QStringLiteral("a\n");
    QTest::newRow("with two") << QStringLiteral("a\n\n");
    QTest::newRow("empty") << QString();
}

void ResultLogTest::theTextHasNoLineEndAdded()
{
    QFETCH(QString, text);
    ResultLog log;
    log.text = text;
    QCOMPARE(log.write(), log.header() + text);
    QCOMPARE(log.header().count(QLatin1Char('\n')), ResultLog::kHeaderLines);
}

QTEST_GUILESS_MAIN(ResultLogTest)
#include "ResultLogTest.moc"
