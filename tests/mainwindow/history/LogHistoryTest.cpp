#include "mainwindow/history/LogHistory.h"

#include "mainwindow/history/LogRestore.h"
#include "mainwindow/history/ResultLogFile.h"
#include "settings/SaveSteps.h"
#include "tests/support/Commands.h"
#include "tests/support/FileTime.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestLength.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QTest>

#include <memory>
#include <vector>

class LogHistoryTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void aLogIsNamedByItsMoment();
    void theFolderIsMadeForTheFirstLog();
    void twoLogsOfOneSecondAreBothKept();
    void processesThatSaveInOneSecondLoseNothing_data();
    void processesThatSaveInOneSecondLoseNothing();
    void aKillAtAnyMomentLeavesWholeLogs();
    void aFullDiskLeavesTheLogsThatAreThere();
    void aFolderThatMayNotBeWrittenTakesNoLog();
    void aFailedSaveLeavesNothing();
    void aFolderThatCannotBeMadeFails();
    void theFileChangedLastIsFirst();
    void ofTheSameTimeTheGreaterNameIsFirst();
    void beyondTheLimitTheOldestAreDeleted();
    void whateverPlainFilesLieThereArePruned();
    void emptyLogsArePrunedLikeOthersHoweverFresh();
    void whatALogIsWrittenToIsPassedOver_data();
    void whatALogIsWrittenToIsPassedOver();
    void whatASaveLeftLongAgoIsDeleted_data();
    void whatASaveLeftLongAgoIsDeleted();
    void aLogGetsItsNameWhenItIsWhole();
    void whatHasTheNameAlreadyStays_data();
    void whatHasTheNameAlreadyStays();
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

QStringList saveCommand(const QString &folder, const QString &tag, int times, int length)
{
    return {QStringLiteral(HISTORY_PROCESS), QStringLiteral("history"), folder, tag,
            QString::number(times),          QString::number(length)};
}

QString textOf(const ScratchFolder &folder, const QString &name)
{
    return LogRestore::fromContent(*ResultLogFile::read(folder.filePath(name)), name,
                                   LogRestore::Extent::HeaderOnly)
        .text;
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

void LogHistoryTest::processesThatSaveInOneSecondLoseNothing_data()
{
    QTest::addColumn<QStringList>("tags");
    QTest::newRow("two") << words("one two");
    QTest::newRow("three") << words("one two three");
}

void LogHistoryTest::processesThatSaveInOneSecondLoseNothing()
{
    QFETCH(QStringList, tags);
    constexpr int kTimes = 30;
    const ScratchFolder folder;
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QString &tag : tags) {
        const QStringList command = saveCommand(folder.path(), tag, kTimes, 1);
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(command.first(), command.mid(1));
    }
    for (const auto &process : processes) {
        QVERIFY(process->waitForFinished(60000));
        QCOMPARE(process->exitCode(), 0);
    }
    QSet<QString> texts;
    for (const QString &name : filesIn(folder.path()))
        texts.insert(textOf(folder, name));
    QCOMPARE(filesIn(folder.path()).size(), tags.size() * kTimes);
    QCOMPARE(texts.size(), tags.size() * kTimes);
}

void LogHistoryTest::aKillAtAnyMomentLeavesWholeLogs()
{
    constexpr int kLength = 50000;
    const int rounds = TestLength::rounds(50, 500);
    quint32 longest = Commands::kFirstKillMicroseconds;
    int killed = 0;
    int logs = 0;
    for (int i = 0; i < rounds; ++i) {
        const ScratchFolder folder;
        const QStringList command = saveCommand(folder.path(), QStringLiteral("-"), 99, kLength);
        const bool wasKilled = Commands::killWithin(longest, command);
        killed += wasKilled ? 1 : 0;
        longest = Commands::nextKill(longest, !wasKilled);
        LogHistory history(folder.path());
        history.rebuild(1000);
        // What was being written is no log.
        for (const LogHistory::Entry &entry : history.entries()) {
            const QString text = textOf(folder, entry.name);
            const QString part = text.left(text.size() / kLength);
            QVERIFY2(!part.isEmpty() && text == part.repeated(kLength), qPrintable(entry.name));
            ++logs;
        }
    }
    // Pauses that are too long would stop nothing, and too short ones see nothing.
    QVERIFY2(killed > rounds / 10, qPrintable(QString::number(killed)));
    QVERIFY2(logs > 0, qPrintable(QString::number(logs)));
}

void LogHistoryTest::aFullDiskLeavesTheLogsThatAreThere()
{
    SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk");
    QCOMPARE(Commands::run(saveCommand(disk.path(), QStringLiteral("old"), 1, 100)), 0);
    const QStringList before = filesIn(disk.path());
    QCOMPARE(before, QStringList{QStringLiteral("20260102-030405.log")});
    const QStringList command = saveCommand(disk.path(), QStringLiteral("new"), 1, 20000);
    for (const int blocksLeft : {0, 1, 10}) {
        disk.fill(blocksLeft);
        QCOMPARE(Commands::run(command), 1);
        disk.makeRoom();
        QCOMPARE(filesIn(disk.path()), before);
        QVERIFY(ResultLogFile::read(disk.path() + before.first())
                    ->endsWith(QStringLiteral("old0").repeated(100)));
    }
    QCOMPARE(Commands::run(command), 0);
}

void LogHistoryTest::aFolderThatMayNotBeWrittenTakesNoLog()
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("old.log"), "old");
    TreeBuilder tree(folder.path().toUtf8());
    if (!tree.setMode(".", 0555))
        QSKIP("permissions mean nothing here");
    QStringList command = saveCommand(folder.path(), QStringLiteral("new"), 1, 1);
    const bool possible = Commands::asOrdinaryUser(command);
    const int code = possible ? Commands::run(command) : 0;
    tree.setMode(".", 0755);
    if (!possible)
        QSKIP("nobody without rights to run the test as");
    QCOMPARE(code, 1);
    QCOMPARE(filesIn(folder.path()), QStringList{QStringLiteral("old.log")});
    QCOMPARE(folder.read(QStringLiteral("old.log")), QByteArray("old"));
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

void LogHistoryTest::emptyLogsArePrunedLikeOthersHoweverFresh()
{
    const ScratchFolder folder;
    const QDateTime now = QDateTime::currentDateTime();
    QStringList names;
    for (int i = 0; i < 5; ++i) {
        names += LogHistory::fileName(kTime, 5 - i);
        QFile file(folder.write(names.last(), ""));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(now.addSecs(-i), QFileDevice::FileModificationTime));
    }
    LogHistory history(folder.path());
    history.rebuild(3);
    QCOMPARE(namesOf(history), names.mid(0, 3));
    QStringList left = names.mid(0, 3);
    left.sort();
    QCOMPARE(filesIn(folder.path()), left);
}

void LogHistoryTest::whatALogIsWrittenToIsPassedOver_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("passedOver");
    const auto row = [](const char *what, const char *name, bool passedOver) {
        QTest::newRow(what) << QString::fromLatin1(name) << passedOver;
    };
    row("whole", "20260102-130405.log.saving-1a2b3c", true);
    row("being written", "20260102-130405.log.saving-1a2b3c.aBcXyZ", true);
    row("a log", "20260102-130405.log", false);
    row("a second log", "20260102-130405_02.log", false);
    row("somebody's file", "saving-1a", false);
    row("somebody's copy", "20260102-130405.log.bak", false);
    row("somebody's note", "20260102-130405.log.saving-mine", false);
}

void LogHistoryTest::whatALogIsWrittenToIsPassedOver()
{
    QFETCH(QString, name);
    QFETCH(bool, passedOver);
    const ScratchFolder folder;
    makeLogs(folder, 2);
    folder.write(name, "version");
    LogHistory history(folder.path());
    history.rebuild(2);
    // Neither is it listed nor does it push a log out.
    QCOMPARE(namesOf(history), passedOver ? words("a b") : QStringList({name, words("a").first()}));
    QCOMPARE(folder.exists(QStringLiteral("b")), passedOver);
    history.rebuild(0);
    QCOMPARE(folder.exists(name), passedOver);
}

void LogHistoryTest::whatASaveLeftLongAgoIsDeleted_data()
{
    QTest::addColumn<int>("minutes");
    QTest::addColumn<bool>("stays");
    QTest::newRow("less than an hour ago") << 58 << true;
    QTest::newRow("more than an hour ago") << 62 << false;
    QTest::newRow("by a clock that was wrong") << -62 << false;
}

void LogHistoryTest::whatASaveLeftLongAgoIsDeleted()
{
    QFETCH(int, minutes);
    QFETCH(bool, stays);
    const ScratchFolder folder;
    const QStringList names =
        words("20260102-130405.log.saving-1a 20260102-130405.log.saving-1a.aBcXyZ");
    for (const QString &name : names) {
        QFile file(folder.write(name, "version"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60 * minutes),
                                 QFileDevice::FileModificationTime));
    }
    LogHistory history(folder.path());
    history.rebuild(10);
    QCOMPARE(namesOf(history), QStringList());
    QCOMPARE(filesIn(folder.path()), stays ? names : QStringList());
}

void LogHistoryTest::aLogGetsItsNameWhenItIsWhole()
{
    const ScratchFolder folder;
    const LogHistory history(folder.path());
    QStringList before;
    SaveSteps::setObserver([&](SaveSteps::Step) {
        before += filesIn(folder.path());
        return true;
    });
    const QString path = history.save(kTime, ResultLog());
    SaveSteps::setObserver(nullptr);
    QVERIFY(!before.isEmpty());
    for (const QString &name : qAsConst(before))
        QVERIFY2(name.startsWith(QLatin1String("20260102-130405.log.saving-")), qPrintable(name));
    QCOMPARE(filesIn(folder.path()), QStringList(QFileInfo(path).fileName()));
}

void LogHistoryTest::whatHasTheNameAlreadyStays_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"an empty file", "a folder", "a link to nothing"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void LogHistoryTest::whatHasTheNameAlreadyStays()
{
    QFETCH(QString, kind);
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    const QString taken = LogHistory::fileName(kTime);
    if (kind == QLatin1String("a folder"))
        folder.makeFolder(taken);
    else if (kind == QLatin1String("an empty file"))
        folder.write(taken, "");
    else if (!tree.link(taken.toUtf8(), "nothing"))
        QSKIP("no symbolic link here");
    const QString path = LogHistory(folder.path()).save(kTime, ResultLog());
    QCOMPARE(QFileInfo(path).fileName(), LogHistory::fileName(kTime, 2));
    const QFileInfo before(folder.filePath(taken));
    QCOMPARE(before.isDir(), kind == QLatin1String("a folder"));
    QCOMPARE(before.isSymLink(), kind == QLatin1String("a link to nothing"));
    if (before.isFile())
        QCOMPARE(folder.read(taken), QByteArray());
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
