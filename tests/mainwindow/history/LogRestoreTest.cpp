#include "mainwindow/history/LogRestore.h"

#include "mainwindow/history/ResultLog.h"
#include "tests/support/EncodedTextGenerator.h"

#include <QTest>

class LogRestoreTest : public QObject {
    Q_OBJECT

private slots:
    void aWrittenLogRestoresTheRequestAndTheText();
    void atTheStartTheTextAndKeywords1And3AreRestored();
    void aZeroLeavesAGroupAsItIs_data();
    void aZeroLeavesAGroupAsItIs();
    void aFlagIsTheCharacterAtPositionNine_data();
    void aFlagIsTheCharacterAtPositionNine();
    void anEmptyKeyword2LeavesItAsItIs();
    void anEmptyKeyword1EmptiesTheField();
    void anEmptyKeyword3EmptiesTheField();
    void aLineDistanceThatIsNoNumberIsZero();
    void theLogOfTheLastSearchEmptiesThePathEditor();
    void thePathLineBecomesLines_data();
    void thePathLineBecomesLines();
    void anEmptyExtensionIsComputedFromTheMask();
    void anExtensionInTheLogStands();
    void aLogCutOffAtAnyPlaceChangesWhatItSays();
    void anEmptyLogChangesNothingButTheText();
    void aLogOfAnythingRestoresNoMoreThanItHas();
    void theTextIsEverythingAfterLine15_data();
    void theTextIsEverythingAfterLine15();
};

namespace {

const QString kPath = QStringLiteral("/app/sarviklog/20260102-030405.log");
constexpr auto kAll = LogRestore::Extent::Everything;

ResultLog fullLog()
{
    ResultLog log;
    log.keyword1 = QStringLiteral("one");
    log.ignoreCase = true;
    log.regexp = true;
    log.subdir = true;
    log.extraGroup = true;
    log.keyword2 = QStringLiteral("two");
    log.lineDistance = 7;
    log.paths = QStringList{QStringLiteral("c:\\a"), QStringLiteral("@/l.ini")};
    log.mask = QStringLiteral("*.cpp *.h");
    log.keyword3Group = true;
    log.keyword3 = QStringLiteral("three");
    log.text = QStringLiteral("::c:/a/x.cpp\n\n  あ\n");
    return log;
}

LogRestore restored(const ResultLog &log, const QString &path = kPath)
{
    return LogRestore::fromContent(log.write(), path, kAll);
}

} // namespace

void LogRestoreTest::aWrittenLogRestoresTheRequestAndTheText()
{
    const LogRestore restore = restored(fullLog());
    QCOMPARE(*restore.keyword1, QStringLiteral("one"));
    QCOMPARE(*restore.ignoreCase, true);
    QCOMPARE(*restore.word, false);
    QCOMPARE(*restore.regexp, true);
    QCOMPARE(*restore.subdir, true);
    QVERIFY(restore.checksExtraGroup);
    QCOMPARE(*restore.keyword2, QStringLiteral("two"));
    QCOMPARE(*restore.lineDistance, 7);
    QCOMPARE(*restore.pathLines, QStringList({QStringLiteral("c:/a/"), QStringLiteral("@/l.ini")}));
    QCOMPARE(*restore.mask, QStringLiteral("*.cpp *.h"));
    QCOMPARE(*restore.extension, QStringLiteral("cpp"));
    QVERIFY(restore.checksKeyword3Group);
    QCOMPARE(*restore.keyword3, QStringLiteral("three"));
    QCOMPARE(restore.text, fullLog().text);
}

void LogRestoreTest::atTheStartTheTextAndKeywords1And3AreRestored()
{
    const LogRestore restore = LogRestore::fromContent(
        fullLog().write(), QStringLiteral("/app/sarvik.log"), LogRestore::Extent::HeaderOnly);
    QCOMPARE(*restore.keyword1, QStringLiteral("one"));
    QCOMPARE(restore.text, fullLog().text);
    QVERIFY(!restore.ignoreCase && !restore.word && !restore.regexp && !restore.subdir);
    QVERIFY(!restore.checksExtraGroup && !restore.checksKeyword3Group);
    QVERIFY(!restore.keyword2 && !restore.lineDistance);
    QCOMPARE(*restore.keyword3,
             *LogRestore::fromContent(fullLog().write(), QString(), LogRestore::Extent::Everything)
                  .keyword3);
    QVERIFY(!restore.pathLines && !restore.mask && !restore.extension);
}

void LogRestoreTest::aZeroLeavesAGroupAsItIs_data()
{
    QTest::addColumn<bool>("extraGroup");
    QTest::addColumn<bool>("keyword3Group");
    QTest::newRow("neither") << false << false;
    QTest::newRow("the extra condition's") << true << false;
    QTest::newRow("keyword 3's") << false << true;
}

void LogRestoreTest::aZeroLeavesAGroupAsItIs()
{
    QFETCH(bool, extraGroup);
    QFETCH(bool, keyword3Group);
    ResultLog log;
    log.extraGroup = extraGroup;
    log.keyword3Group = keyword3Group;
    QCOMPARE(restored(log).checksExtraGroup, extraGroup);
    QCOMPARE(restored(log).checksKeyword3Group, keyword3Group);
}

void LogRestoreTest::aFlagIsTheCharacterAtPositionNine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("flag");
    QTest::newRow("one") << QStringLiteral("case    :1") << true;
    QTest::newRow("zero") << QStringLiteral("case    :0") << false;
    QTest::newRow("another label") << QStringLiteral("123456789"
                                                     "1")
                                   << true;
    QTest::newRow("more behind it") << QStringLiteral("case    :10") << true;
    QTest::newRow("a blank before it") << QStringLiteral("case    : 1") << false;
    QTest::newRow("a word") << QStringLiteral("case    :true") << false;
    QTest::newRow("too short") << QStringLiteral("case    ") << false;
    QTest::newRow("empty") << QString() << false;
}

void LogRestoreTest::aFlagIsTheCharacterAtPositionNine()
{
    QFETCH(QString, line);
    QFETCH(bool, flag);
    QStringList lines = fullLog().write().split(QLatin1Char('\n'));
    for (const int number : {3, 4, 5, 6, 7, 13})
        lines[number - 1] = line;
    const LogRestore restore = LogRestore::fromContent(lines.join(QLatin1Char('\n')), kPath, kAll);
    QCOMPARE(*restore.ignoreCase, flag);
    QCOMPARE(*restore.word, flag);
    QCOMPARE(*restore.regexp, flag);
    QCOMPARE(*restore.subdir, flag);
    QCOMPARE(restore.checksExtraGroup, flag);
    QCOMPARE(restore.checksKeyword3Group, flag);
}

void LogRestoreTest::anEmptyKeyword2LeavesItAsItIs()
{
    QVERIFY(!restored(ResultLog()).keyword2);
}

void LogRestoreTest::anEmptyKeyword1EmptiesTheField()
{
    QCOMPARE(restored(ResultLog()).keyword1.value_or(QStringLiteral("as it was")), QString());
}

void LogRestoreTest::anEmptyKeyword3EmptiesTheField()
{
    QCOMPARE(restored(ResultLog()).keyword3.value_or(QStringLiteral("as it was")), QString());
}

void LogRestoreTest::aLineDistanceThatIsNoNumberIsZero()
{
    QString content = fullLog().write();
    content.replace(QStringLiteral("plusline:7"), QStringLiteral("plusline:seven"));
    QCOMPARE(*LogRestore::fromContent(content, kPath, kAll).lineDistance, 0);
}

void LogRestoreTest::theLogOfTheLastSearchEmptiesThePathEditor()
{
    const LogRestore restore = restored(fullLog(), QStringLiteral("/app/sarvik.log"));
    QCOMPARE(*restore.pathLines, QStringList());
    QCOMPARE(*restore.mask, QStringLiteral("*.cpp *.h"));
    QCOMPARE(*restore.keyword3, QStringLiteral("three"));
    QCOMPARE(*restore.ignoreCase, true);
    // Also a copy of it: the name is looked for anywhere in the path.
    QCOMPARE(*restored(fullLog(), QStringLiteral("/b/old-sarvik.log.bak")).pathLines,
             QStringList());
}

void LogRestoreTest::thePathLineBecomesLines_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("empty") << QString() << QStringList();
    QTest::newRow("one") << QStringLiteral("/a/") << QStringList{QStringLiteral("/a/")};
    QTest::newRow("a comma without a blank")
        << QStringLiteral("/a,b/") << QStringList{QStringLiteral("/a,b/")};
    QTest::newRow("a list file loses its slash")
        << QStringLiteral("/a/, @/l.ini/")
        << QStringList{QStringLiteral("/a/"), QStringLiteral("@/l.ini")};
    QTest::newRow("a list file is the last")
        << QStringLiteral("@/l.ini/, /a/, @/m.ini/") << QStringList{QStringLiteral("@/l.ini")};
    QTest::newRow("a list file without a slash")
        << QStringLiteral("@/l.ini") << QStringList{QStringLiteral("@/l.ini")};
}

void LogRestoreTest::thePathLineBecomesLines()
{
    QFETCH(QString, value);
    QFETCH(QStringList, lines);
    QStringList content = fullLog().write().split(QLatin1Char('\n'));
    content[9] = QStringLiteral("pathlist:") + value;
    const LogRestore restore =
        LogRestore::fromContent(content.join(QLatin1Char('\n')), kPath, kAll);
    QCOMPARE(*restore.pathLines, lines);
}

void LogRestoreTest::anEmptyExtensionIsComputedFromTheMask()
{
    QString content = fullLog().write();
    content.replace(QStringLiteral("ext     :cpp"), QStringLiteral("ext     :"));
    QCOMPARE(*LogRestore::fromContent(content, kPath, kAll).extension, QStringLiteral("cpp"));
}

void LogRestoreTest::anExtensionInTheLogStands()
{
    QString content = fullLog().write();
    content.replace(QStringLiteral("ext     :cpp"), QStringLiteral("ext     :java"));
    QCOMPARE(*LogRestore::fromContent(content, kPath, kAll).extension, QStringLiteral("java"));
}

void LogRestoreTest::aLogCutOffAtAnyPlaceChangesWhatItSays()
{
    const QString whole = fullLog().write();
    for (int length = 0; length <= whole.size(); ++length) {
        const QString content = whole.left(length);
        // A line that has begun is there.
        const int lines = content.count(QLatin1Char('\n'))
            + (content.isEmpty() || content.endsWith(QLatin1Char('\n')) ? 0 : 1);
        const LogRestore restore = LogRestore::fromContent(content, kPath, kAll);
        QCOMPARE(restore.keyword1.has_value(), lines >= 2);
        QCOMPARE(restore.ignoreCase.has_value(), lines >= 3);
        QCOMPARE(restore.subdir.has_value(), lines >= 6);
        QCOMPARE(restore.lineDistance.has_value(), lines >= 9);
        QCOMPARE(restore.pathLines.has_value(), lines >= 10);
        QCOMPARE(restore.mask.has_value(), lines >= 11);
        QCOMPARE(restore.extension.has_value(), lines >= 11);
        QCOMPARE(restore.keyword3.has_value(), lines >= 14);
        if (lines <= ResultLog::kHeaderLines)
            QCOMPARE(restore.text, QString());
        else
            QVERIFY(fullLog().text.startsWith(restore.text));
    }
}

void LogRestoreTest::anEmptyLogChangesNothingButTheText()
{
    const LogRestore restore = LogRestore::fromContent(QString(), kPath, kAll);
    QVERIFY(!restore.keyword1 && !restore.ignoreCase && !restore.pathLines && !restore.mask
            && !restore.extension && !restore.keyword3);
    QCOMPARE(restore.text, QString());
}

void LogRestoreTest::aLogOfAnythingRestoresNoMoreThanItHas()
{
    EncodedTextGenerator random(20261121);
    for (int i = 0; i < 3000; ++i) {
        QStringList lines;
        for (int line = random.number(25); line > 0; --line)
            lines += random.units(random.number(20));
        const QString content = lines.join(QLatin1Char('\n'));
        const LogRestore restore = LogRestore::fromContent(content, kPath, kAll);
        QVERIFY(content.endsWith(restore.text));
        QCOMPARE(restore.text, content.section(QLatin1Char('\n'), ResultLog::kHeaderLines));
    }
}

void LogRestoreTest::theTextIsEverythingAfterLine15_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("empty lines in front and at the end") << QStringLiteral("\n\na\n\n\n");
    QTest::newRow("a header in the text") << ResultLog().write();
    QTest::newRow("separators that end no line")
        << QStringLiteral("a\u2028b\u2029c\u0085d\fe\vf\u00A0g");
    QTest::newRow("zeros") << QString(QChar(0)) + QStringLiteral("a") + QString(QChar(0));
}

void LogRestoreTest::theTextIsEverythingAfterLine15()
{
    QFETCH(QString, text);
    ResultLog log = fullLog();
    log.text = text;
    QCOMPARE(restored(log).text, text);
}

QTEST_GUILESS_MAIN(LogRestoreTest)
#include "LogRestoreTest.moc"
