#include "mainwindow/history/LogHistory.h"

#include "mainwindow/history/LogRestore.h"
#include "mainwindow/history/ResultLogFile.h"
#include "settings/SaveSteps.h"
#include "tests/support/FileTime.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QTest>

class LogHistoryTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void aLogIsNamedByItsMoment();
    void theFolderIsMadeForTheFirstLog();
    void twoLogsOfOneSecondAreBothKept();
    void twoProcessesThatSaveInOneSecondLoseNothing();
    void aFailedSaveLeavesNothing();
    void aFolderThatCannotBeMadeFails();
    void theFileChangedLastIsFirst();
    void ofTheSameTimeTheGreaterNameIsFirst();
    void beyondTheLimitTheOldestAreDeleted();
    void whateverPlainFilesLieThereArePruned();
    void aLogThatIsBeingSavedIsPassedOver_data();
    void aLogThatIsBeingSavedIsPassedOver();
    void whatASaveLeftLongAgoIsLikeAnyOtherFile();
    void foldersAreNeitherListedNorDeleted();
    void aLimitOfZeroDeletesAll_data();
    void aLimitOfZeroDeletesAll();
    void aFileThatCannotBeDeletedIsLeft();
    void aMissingFolderIsAnEmptyHistory();
    void aFileInPlaceOfTheFolderIsAnEmptyHistory();
    void theLabelsAreThoseOfTheLogs();
    void aFifoAmongTheLogsHoldsNothingUp();
    void backAndForwardPageThroughTheLogs();
    void noLogsAllowNoMove();
    void oneLogAllowsNoMove();
    void rebuildingReturnsToTheNewest();
    void anIndexOutOfRangeHasNoPath();
};

namespace {

const QDateTime kTime(QDate(2026, 1, 2), QTime(13, 4, 5));

QStringList namesOf(const LogHistory &history)
{
    QStringList names;
    for (const LogHistory::Entry &entry : history.entries())
        names += entry.name;
    return names;
}

/// Logs "a" to the count-th letter, "a" changed last.
void makeLogs(const ScratchFolder &folder, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString name(QChar('a' + i));
        FileTime::setDayOfChange(folder.write(name, "1\n........|" + name.toLatin1() + '\n'),
                                 QDate(2026, 3, 20).addDays(-i));
    }
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

void LogHistoryTest::cleanup()
{
    SaveSteps::setObserver(nullptr);
}

void LogHistoryTest::aLogIsNamedByItsMoment()
{
    QCOMPARE(LogHistory::fileName(kTime), QStringLiteral("20260102-130405.log"));
    QCOMPARE(LogHistory::fileName(kTime, 2), QStringLiteral("20260102-130405_02.log"));
    QVERIFY(LogHistory::fileName(kTime, 2) > LogHistory::fileName(kTime));
    QVERIFY(LogHistory::fileName(kTime, 10) > LogHistory::fileName(kTime, 9));
    QVERIFY(LogHistory::fileName(kTime.addSecs(1)) > LogHistory::fileName(kTime, 99));
}

void LogHistoryTest::theFolderIsMadeForTheFirstLog()
{
    const ScratchFolder folder;
    const LogHistory history(folder.filePath(QStringLiteral("sarviklog")));
    QVERIFY(!folder.exists(QStringLiteral("sarviklog")));
    ResultLog log;
    log.text = QStringLiteral("text");
    const QString path = history.save(kTime, log);
    QCOMPARE(path, folder.filePath(QStringLiteral("sarviklog/20260102-130405.log")));
    QCOMPARE(*ResultLogFile::read(path), log.write());
}

void LogHistoryTest::twoLogsOfOneSecondAreBothKept()
{
    const ScratchFolder folder;
    LogHistory history(folder.path());
    ResultLog first;
    first.text = QStringLiteral("first");
    ResultLog second;
    second.text = QStringLiteral("second");
    const QString firstPath = history.save(kTime, first);
    const QString secondPath = history.save(kTime, second);
    QCOMPARE(QFileInfo(secondPath).fileName(), QStringLiteral("20260102-130405_02.log"));
    QCOMPARE(*ResultLogFile::read(firstPath), first.write());
    QCOMPARE(*ResultLogFile::read(secondPath), second.write());
}

void LogHistoryTest::twoProcessesThatSaveInOneSecondLoseNothing()
{
    constexpr int kTimes = 30;
    const ScratchFolder folder;
    QProcess one;
    QProcess two;
    const QString times = QString::number(kTimes);
    const QString program = QStringLiteral(HISTORY_PROCESS);
    one.start(program, {QStringLiteral("history"), folder.path(), QStringLiteral("one"), times});
    two.start(program, {QStringLiteral("history"), folder.path(), QStringLiteral("two"), times});
    QVERIFY(one.waitForFinished(60000));
    QVERIFY(two.waitForFinished(60000));
    QCOMPARE(one.exitCode(), 0);
    QCOMPARE(two.exitCode(), 0);
    QSet<QString> texts;
    for (const QString &name : filesIn(folder.path()))
        texts.insert(LogRestore::fromContent(*ResultLogFile::read(folder.filePath(name)), name,
                                             LogRestore::Extent::HeaderOnly)
                         .text);
    QCOMPARE(filesIn(folder.path()).size(), 2 * kTimes);
    QCOMPARE(texts.size(), 2 * kTimes);
}

void LogHistoryTest::aFailedSaveLeavesNothing()
{
    const ScratchFolder folder;
    const LogHistory history(folder.path());
    SaveSteps::setObserver(
        [](SaveSteps::Step step) { return step != SaveSteps::Step::ReplaceOld; });
    QCOMPARE(history.save(kTime, ResultLog()), QString());
    QCOMPARE(filesIn(folder.path()), QStringList());
}

void LogHistoryTest::aFolderThatCannotBeMadeFails()
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("sarviklog"), "a file");
    QCOMPARE(LogHistory(folder.filePath(QStringLiteral("sarviklog"))).save(kTime, ResultLog()),
             QString());
    QCOMPARE(folder.read(QStringLiteral("sarviklog")), QByteArray("a file"));
}

void LogHistoryTest::theFileChangedLastIsFirst()
{
    const ScratchFolder folder;
    const QDate day(2026, 3, 20);
    FileTime::setDayOfChange(folder.write(QStringLiteral("b"), "x"), day.addDays(-1));
    FileTime::setDayOfChange(folder.write(QStringLiteral("c"), "x"), day.addDays(-3));
    FileTime::setDayOfChange(folder.write(QStringLiteral("a"), "x"), day.addDays(-2));
    LogHistory history(folder.path());
    history.rebuild(100);
    QCOMPARE(namesOf(history), words("b a c"));
}

void LogHistoryTest::ofTheSameTimeTheGreaterNameIsFirst()
{
    const ScratchFolder folder;
    for (const QString &name :
         {LogHistory::fileName(kTime), LogHistory::fileName(kTime, 2),
          LogHistory::fileName(kTime, 10), LogHistory::fileName(kTime.addSecs(1))})
        FileTime::setDayOfChange(folder.write(name, "x"), QDate(2026, 3, 20));
    LogHistory history(folder.path());
    history.rebuild(100);
    QCOMPARE(namesOf(history),
             words("20260102-130406.log 20260102-130405_10.log 20260102-130405_02.log "
                   "20260102-130405.log"));
}

void LogHistoryTest::beyondTheLimitTheOldestAreDeleted()
{
    const ScratchFolder folder;
    makeLogs(folder, 5);
    LogHistory history(folder.path());
    history.rebuild(3);
    QCOMPARE(namesOf(history), words("a b c"));
    QCOMPARE(filesIn(folder.path()), words("a b c"));
    history.rebuild(3);
    QCOMPARE(filesIn(folder.path()), words("a b c"));
}

void LogHistoryTest::whateverPlainFilesLieThereArePruned()
{
    const ScratchFolder folder;
    makeLogs(folder, 1);
    FileTime::setDayOfChange(folder.write(QStringLiteral("notes.txt"), "mine"), QDate(2025, 1, 1));
    FileTime::setDayOfChange(folder.write(QStringLiteral("empty"), ""), QDate(2025, 1, 2));
    LogHistory history(folder.path());
    history.rebuild(2);
    QCOMPARE(namesOf(history), words("a empty"));
    QCOMPARE(filesIn(folder.path()), words("a empty"));
}

void LogHistoryTest::aLogThatIsBeingSavedIsPassedOver_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("passedOver");
    const auto row = [](const char *what, const char *name, const char *content, bool passedOver) {
        QTest::newRow(what) << QString::fromLatin1(name) << QByteArray(content) << passedOver;
    };
    row("the claimed name", "20260102-130405.log", "", true);
    row("a second one's claimed name", "20260102-130405_02.log", "", true);
    row("the file it is written to", "20260102-130405.log.aBcXyZ", "version", true);
    row("the same, nothing written yet", "20260102-130405_02.log.aBcXyZ", "", true);
    row("a whole log", "20260102-130405.log", "version", false);
    row("somebody's empty file", "empty", "", false);
    row("somebody's copy", "20260102-130405.log.bak", "version", false);
}

void LogHistoryTest::aLogThatIsBeingSavedIsPassedOver()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(bool, passedOver);
    const ScratchFolder folder;
    makeLogs(folder, 2);
    folder.write(name, content);
    LogHistory history(folder.path());
    history.rebuild(2);
    // Neither is it listed nor does it push a log out.
    QCOMPARE(namesOf(history), passedOver ? words("a b") : QStringList({name, words("a").first()}));
    QCOMPARE(folder.exists(QStringLiteral("b")), passedOver);
    history.rebuild(0);
    QCOMPARE(folder.exists(name), passedOver);
}

void LogHistoryTest::whatASaveLeftLongAgoIsLikeAnyOtherFile()
{
    const ScratchFolder folder;
    const QDate day(2026, 3, 20);
    const QStringList names = words("20260102-130405.log 20260102-130405.log.aBcXyZ");
    FileTime::setDayOfChange(folder.write(names.at(0), ""), day);
    FileTime::setDayOfChange(folder.write(names.at(1), "x"), day.addDays(-1));
    LogHistory history(folder.path());
    history.rebuild(2);
    QCOMPARE(namesOf(history), names);
    history.rebuild(1);
    QCOMPARE(filesIn(folder.path()), names.mid(0, 1));
}

void LogHistoryTest::foldersAreNeitherListedNorDeleted()
{
    const ScratchFolder folder;
    makeLogs(folder, 1);
    folder.makeFolder(QStringLiteral("20260102-130405.log"));
    folder.write(QStringLiteral("20260102-130405.log/inside"), "x");
    LogHistory history(folder.path());
    history.rebuild(0);
    QCOMPARE(namesOf(history), QStringList());
    QVERIFY(folder.exists(QStringLiteral("20260102-130405.log/inside")));
}

void LogHistoryTest::aLimitOfZeroDeletesAll_data()
{
    QTest::addColumn<int>("limit");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -1;
}

void LogHistoryTest::aLimitOfZeroDeletesAll()
{
    QFETCH(int, limit);
    const ScratchFolder folder;
    makeLogs(folder, 2);
    LogHistory history(folder.path());
    history.rebuild(limit);
    QCOMPARE(filesIn(folder.path()), QStringList());
    QVERIFY(!history.canGoBack() && !history.canGoForward());
}

void LogHistoryTest::aFileThatCannotBeDeletedIsLeft()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    folder.makeFolder(QStringLiteral("logs"));
    for (const char *name : {"logs/a", "logs/b"})
        folder.write(QString::fromLatin1(name), "x");
    FileTime::setDayOfChange(folder.filePath(QStringLiteral("logs/b")), QDate(2025, 1, 1));
    if (!tree.setMode("logs", 0555) || !tree.setMode(".", 0755))
        QSKIP("permissions mean nothing here");
    LogHistory history(folder.filePath(QStringLiteral("logs")));
    {
        const OrdinaryUser user;
        if (!user.inForce())
            QSKIP("nobody without rights to run the test as");
        history.rebuild(1);
    }
    tree.setMode("logs", 0755);
    QCOMPARE(namesOf(history), words("a"));
    QCOMPARE(filesIn(folder.filePath(QStringLiteral("logs"))), words("a b"));
}

void LogHistoryTest::aMissingFolderIsAnEmptyHistory()
{
    const ScratchFolder folder;
    LogHistory history(folder.filePath(QStringLiteral("no")));
    history.rebuild(10);
    QCOMPARE(namesOf(history), QStringList());
    QVERIFY(!folder.exists(QStringLiteral("no")));
}

void LogHistoryTest::aFileInPlaceOfTheFolderIsAnEmptyHistory()
{
    const ScratchFolder folder;
    LogHistory history(folder.write(QStringLiteral("sarviklog"), "x"));
    history.rebuild(0);
    QCOMPARE(namesOf(history), QStringList());
    QVERIFY(folder.exists(QStringLiteral("sarviklog")));
}

void LogHistoryTest::theLabelsAreThoseOfTheLogs()
{
    const ScratchFolder folder;
    makeLogs(folder, 2);
    LogHistory history(folder.path());
    history.rebuild(10);
    QCOMPARE(history.entries().at(0).label, QStringLiteral("a　---　"));
    QCOMPARE(history.entries().at(1).label, QStringLiteral("b　---　"));
}

void LogHistoryTest::aFifoAmongTheLogsHoldsNothingUp()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    makeLogs(folder, 1);
    if (!tree.fifo("f"))
        QSKIP("no FIFO here");
    LogHistory history(folder.path());
    history.rebuild(1);
    QCOMPARE(namesOf(history), words("a"));
    QVERIFY(folder.exists(QStringLiteral("f")));
}

void LogHistoryTest::backAndForwardPageThroughTheLogs()
{
    const ScratchFolder folder;
    makeLogs(folder, 3);
    LogHistory history(folder.path());
    history.rebuild(10);
    QVERIFY(history.canGoBack() && !history.canGoForward());
    QCOMPARE(history.goForward(), QString());
    QCOMPARE(history.position(), 0);
    QCOMPARE(history.goBack(), folder.filePath(QStringLiteral("b")));
    QVERIFY(history.canGoBack() && history.canGoForward());
    QCOMPARE(history.goBack(), folder.filePath(QStringLiteral("c")));
    QVERIFY(!history.canGoBack() && history.canGoForward());
    QCOMPARE(history.goBack(), QString());
    QCOMPARE(history.position(), 2);
    QCOMPARE(history.goForward(), folder.filePath(QStringLiteral("b")));
    QCOMPARE(history.goForward(), folder.filePath(QStringLiteral("a")));
    QVERIFY(history.canGoBack() && !history.canGoForward());
}

void LogHistoryTest::noLogsAllowNoMove()
{
    const ScratchFolder folder;
    LogHistory history(folder.path());
    history.rebuild(10);
    QVERIFY(!history.canGoBack() && !history.canGoForward());
    QCOMPARE(history.goBack(), QString());
    QCOMPARE(history.goForward(), QString());
}

void LogHistoryTest::oneLogAllowsNoMove()
{
    const ScratchFolder folder;
    makeLogs(folder, 1);
    LogHistory history(folder.path());
    history.rebuild(10);
    QVERIFY(!history.canGoBack() && !history.canGoForward());
}

void LogHistoryTest::rebuildingReturnsToTheNewest()
{
    const ScratchFolder folder;
    makeLogs(folder, 3);
    LogHistory history(folder.path());
    history.rebuild(10);
    history.goBack();
    history.rebuild(10);
    QCOMPARE(history.position(), 0);
}

void LogHistoryTest::anIndexOutOfRangeHasNoPath()
{
    const ScratchFolder folder;
    makeLogs(folder, 2);
    LogHistory history(folder.path());
    history.rebuild(10);
    QCOMPARE(history.path(1), folder.filePath(QStringLiteral("b")));
    QCOMPARE(history.path(-1), QString());
    QCOMPARE(history.path(2), QString());
}

QTEST_GUILESS_MAIN(LogHistoryTest)
#include "LogHistoryTest.moc"
