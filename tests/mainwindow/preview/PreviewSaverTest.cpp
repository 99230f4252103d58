#include "mainwindow/preview/PreviewSaver.h"

#include "engine/CodeSet.h"
#include "settings/SaveSteps.h"
#include "tests/mainwindow/preview/SavedFiles.h"
#include "tests/support/FileTime.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestLength.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>

#include <memory>
#include <vector>

using Result = PreviewSaver::Outcome::Result;
using SavedFiles::filesIn;
using SavedFiles::load;

class PreviewSaverTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void anEmptyNameDoesNothing();
    void theOldFileBecomesTheBackup();
    void anEarlierBackupIsReplaced();
    void anEmptyFileGetsNoBackup();
    void aVanishedFileIsWrittenAgain();
    void theFileKeepsItsForm();
    void theAttributesArePutOnTheNewFile_data();
    void theAttributesArePutOnTheNewFile();
    void aLinkStaysALink();
    void whatWasLeftOfAnEarlierSaveIsKept();
    void aFileThatIsNotShownIsNotWrittenOver();
    void whatIsNoFileAnyMoreIsLeftAlone_data();
    void whatIsNoFileAnyMoreIsLeftAlone();
    void aBackupThatCannotBeMadeStopsTheSave_data();
    void aBackupThatCannotBeMadeStopsTheSave();
    void aFailedWriteLeavesTheOldFileAndItsBackup_data();
    void aFailedWriteLeavesTheOldFileAndItsBackup();
    void aFileWithoutASecondNameIsCopied_data();
    void aFileWithoutASecondNameIsCopied();
    void aCopyThatFailsLeavesTheBackup();
    void aNameThatLeadsNowhereIsPassedOver();
    void aFileThatChangesDuringTheSaveIsLeft_data();
    void aFileThatChangesDuringTheSaveIsLeft();
    void whatTakesAVanishedFilesPlaceIsLeft();
    void aVanishedFolderIsAnError();
    void aSecondSaveHasTheFirstAsBackup();
    void aFailedSaveMayBeTriedAgain();
    void aChangeByAnotherProgramIsFound();
    void theQuestionsAreAnsweredBeforehand();
    void anEndBetweenTwoStepsLeavesAWholeFile_data();
    void anEndBetweenTwoStepsLeavesAWholeFile();
    void aFullDeviceLeavesTheOldFile();
    void aKillAtAnyMomentLeavesTheOldOrTheNewFile_data();
    void aKillAtAnyMomentLeavesTheOldOrTheNewFile();
    void ofProcessesThatSaveAtOnceOneSavesAndTheOthersAreTold_data();
    void ofProcessesThatSaveAtOnceOneSavesAndTheOthersAreTold();
    void whoSavesAllTheSameHasWhatHeReplacesAsBackup_data();
    void whoSavesAllTheSameHasWhatHeReplacesAsBackup();
    void ofProcessesThatWriteAVanishedFileOneDoes();
    void aFileForWhichMemoryIsMissingIsNotShown();
    void aFolderThatMayNotBeWrittenLeavesTheOldFile();
};

namespace {

const QString kName = QStringLiteral("f.txt");
const QString kBackup = QStringLiteral("f.txt.bak");
const QString kNew = QStringLiteral("new\n");

void refuse(SaveSteps::Step refused)
{
    SaveSteps::setObserver([refused](SaveSteps::Step step) { return step != refused; });
}

/// The exit code, or -1 when there is none.
int run(const QStringList &command)
{
    QProcess process;
    process.start(command.first(), command.mid(1));
    const bool ended = process.waitForFinished(120000);
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QStringList saveCommand(const QString &path)
{
    return {QStringLiteral(PREVIEW_PROCESS), path, QStringLiteral("new")};
}

void addLinks()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("with second names") << QStringList();
    QTest::newRow("without") << QStringList{QStringLiteral("--no-links")};
}

void addCrowds()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("options");
    const QStringList none{QStringLiteral("--no-links")};
    QTest::newRow("two") << 2 << QStringList();
    QTest::newRow("three") << 3 << QStringList();
    QTest::newRow("three without second names") << 3 << none;
}

QByteArray textOf(int process)
{
    return QByteArray(1, char('a' + process)).repeated(20000);
}

/// Processes that show one file, all of them as it is when the object is made, and then
/// save it at once, each its own text.
class Crowd {
public:
    Crowd(const QString &path, int count, const QStringList &options)
    {
        for (int i = 0; i < count; ++i) {
            const QString text = QString::fromLatin1(textOf(i).left(1));
            m_processes.push_back(std::make_unique<QProcess>());
            m_processes.back()->start(QStringLiteral(PREVIEW_PROCESS),
                                      QStringList{path, text, QStringLiteral("--wait")} + options);
        }
        for (const auto &process : m_processes) {
            while (!process->canReadLine() && process->waitForReadyRead()) { }
        }
    }

    /// How each of them ended.
    QVector<int> save()
    {
        for (const auto &process : m_processes) {
            process->write("\n");
            process->waitForBytesWritten();
        }
        QVector<int> codes;
        for (const auto &process : m_processes) {
            const bool ended = process->waitForFinished(60000);
            codes.append(
                ended && process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1);
        }
        return codes;
    }

private:
    std::vector<std::unique_ptr<QProcess>> m_processes;
};

constexpr int kSaved = 0;
constexpr int kChanged = 4;

} // namespace

void PreviewSaverTest::cleanup()
{
    SaveSteps::setObserver(nullptr);
}

void PreviewSaverTest::anEmptyNameDoesNothing()
{
    PreviewFile file;
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&file, kNew);
    QCOMPARE(outcome.result, Result::Nothing);
    QCOMPARE(outcome.message, QString());
}

void PreviewSaverTest::theOldFileBecomesTheBackup()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&file, kNew);
    QCOMPARE(outcome.result, Result::Saved);
    QCOMPARE(outcome.message, QStringLiteral("セーブしました"));
    QCOMPARE(folder.read(kName), QByteArray("new\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
    // The backup is a file of its own.
    QFile opened(folder.filePath(kName));
    QVERIFY(opened.open(QIODevice::ReadWrite) && opened.write("NEW") == 3);
    opened.close();
    QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
}

void PreviewSaverTest::anEarlierBackupIsReplaced()
{
    const ScratchFolder folder;
    QFile::setPermissions(folder.write(kBackup, "older\n"), QFileDevice::ReadOwner);
    PreviewFile file = load(folder.write(kName, "old text\n"));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
}

void PreviewSaverTest::anEmptyFileGetsNoBackup()
{
    const ScratchFolder folder;
    folder.write(kBackup, "older\n");
    PreviewFile file = load(folder.write(kName, ""));
    file.form = {CodeSet::Utf8, CodeSet::Lf, false};
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(folder.read(kName), QByteArray("new\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("older\n"));
}

void PreviewSaverTest::aVanishedFileIsWrittenAgain()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    folder.remove(kName);
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(folder.read(kName), QByteArray("new\n"));
    QCOMPARE(filesIn(folder), QStringList{kName});
}

void PreviewSaverTest::theFileKeepsItsForm()
{
    const ScratchFolder folder;
    PreviewFile file =
        load(folder.write(kName, QByteArray("\xFF\xFE") + QByteArray("a\0\r\0\n\0b\0", 8)));
    QCOMPARE(PreviewSaver::save(&file, QStringLiteral("あ\nb")).result, Result::Saved);
    QCOMPARE(folder.read(kName), QByteArray("\xFF\xFE") + QByteArray("\x42\x30\r\0\n\0b\0", 8));
    QVERIFY(file.survives);
    QCOMPARE(file.text, QStringLiteral("あ\nb"));
}

void PreviewSaverTest::theAttributesArePutOnTheNewFile_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("for everybody") << 0666;
    QTest::newRow("for the owner only") << 0600;
    QTest::newRow("a program") << 0755;
    QTest::newRow("not to be written") << 0444;
}

void PreviewSaverTest::theAttributesArePutOnTheNewFile()
{
    QFETCH(int, mode);
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    tree.file("f.txt", "old text\n");
    if (!tree.setMode("f.txt", unsigned(mode)))
        QSKIP("permissions mean nothing here");
    PreviewFile file = load(folder.filePath(kName));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(NativeFile::attributesOf(folder.filePath(kName)), quint32(mode));
    QCOMPARE(folder.read(kName), QByteArray("new\n"));
}

void PreviewSaverTest::aLinkStaysALink()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    tree.file("real.txt", "old text\n");
    if (!tree.link("f.txt", "real.txt"))
        QSKIP("no links here");
    PreviewFile file = load(folder.filePath(kName));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QVERIFY(QFileInfo(folder.filePath(kName)).isSymLink());
    QCOMPARE(folder.read(QStringLiteral("real.txt")), QByteArray("new\n"));
    QCOMPARE(folder.read(QStringLiteral("real.txt.bak")), QByteArray("old text\n"));
    QVERIFY(!folder.exists(kBackup));
    QVERIFY(!PreviewSaver::changedOnDisk(file));
}

void PreviewSaverTest::whatWasLeftOfAnEarlierSaveIsKept()
{
    const ScratchFolder folder;
    const QString left = QStringLiteral("f.txt.saving");
    folder.write(left, "somebody's text");
    PreviewFile file = load(folder.write(kName, "old text\n"));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(folder.read(left), QByteArray("somebody's text"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup, left}));
}

void PreviewSaverTest::aFileThatIsNotShownIsNotWrittenOver()
{
    const ScratchFolder folder;
    const QByteArray binary("\0\0\0\0binary", 10);
    PreviewFile file = load(folder.write(kName, binary));
    QVERIFY(!file.readable);
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&file, file.text);
    QCOMPARE(outcome.result, Result::WriteFailed);
    QCOMPARE(outcome.message, QStringLiteral("セーブ中にエラーが発生しました"));
    QCOMPARE(folder.read(kName), binary);
    QCOMPARE(filesIn(folder), QStringList{kName});
}

void PreviewSaverTest::whatIsNoFileAnyMoreIsLeftAlone_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("folder") << QStringLiteral("folder");
    QTest::newRow("FIFO") << QStringLiteral("FIFO");
}

void PreviewSaverTest::whatIsNoFileAnyMoreIsLeftAlone()
{
    QFETCH(QString, kind);
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    folder.remove(kName);
    TreeBuilder tree(folder.path().toUtf8());
    if (kind == QLatin1String("folder"))
        tree.folder("f.txt");
    else if (!tree.fifo("f.txt"))
        QSKIP("no FIFO here");
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::WriteFailed);
    QVERIFY(!NativeFile::stampOf(folder.filePath(kName)).regular);
    QVERIFY(!folder.exists(kBackup));
}

void PreviewSaverTest::aBackupThatCannotBeMadeStopsTheSave_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("a folder of that name") << QStringLiteral("folder");
    QTest::newRow("the earlier one stays") << QStringLiteral("earlier");
    QTest::newRow("the rename fails") << QStringLiteral("rename");
}

void PreviewSaverTest::aBackupThatCannotBeMadeStopsTheSave()
{
    QFETCH(QString, obstacle);
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    if (obstacle == QLatin1String("folder")) {
        folder.write(kBackup + QStringLiteral("/inside"), "x");
    } else if (obstacle == QLatin1String("earlier")) {
        folder.write(kBackup, "older\n");
        refuse(SaveSteps::Step::DropBackup);
    } else {
        refuse(SaveSteps::Step::PlaceBackup);
    }
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&file, kNew);
    QCOMPARE(outcome.result, Result::RenameFailed);
    QCOMPARE(outcome.message,
             QStringLiteral(" ") + folder.filePath(kName)
                 + QStringLiteral("\n　　　　　　↓　　　　　\n ") + folder.filePath(kBackup)
                 + QStringLiteral("\nリネーム失敗しました。"));
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(file.text, QStringLiteral("old text\n"));
    QVERIFY(filesIn(folder).filter(QStringLiteral("saving")).isEmpty());
}

void PreviewSaverTest::aFailedWriteLeavesTheOldFileAndItsBackup_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<QByteArray>("backup");
    QTest::newRow("writing the new file")
        << int(SaveSteps::Step::WriteNew) << QByteArray("older\n");
    // The earlier backup had to make way by then; what it was the backup of is whole.
    QTest::newRow("putting it in place") << int(SaveSteps::Step::ReplaceOld) << QByteArray();
}

void PreviewSaverTest::aFailedWriteLeavesTheOldFileAndItsBackup()
{
    QFETCH(int, step);
    QFETCH(QByteArray, backup);
    const ScratchFolder folder;
    folder.write(kBackup, "older\n");
    PreviewFile file = load(folder.write(kName, "old text\n"));
    refuse(SaveSteps::Step(step));
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&file, kNew);
    QCOMPARE(outcome.result, Result::WriteFailed);
    QCOMPARE(outcome.message, QStringLiteral("セーブ中にエラーが発生しました"));
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(folder.exists(kBackup) ? folder.read(kBackup) : QByteArray(), backup);
    QVERIFY(filesIn(folder).filter(QStringLiteral("saving")).isEmpty());
}

void PreviewSaverTest::aFileWithoutASecondNameIsCopied_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("for everybody") << 0666;
    QTest::newRow("for the owner only") << 0600;
    QTest::newRow("not to be written") << 0444;
}

void PreviewSaverTest::aFileWithoutASecondNameIsCopied()
{
    QFETCH(int, mode);
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    folder.write(kBackup, "older\n");
    const QString path = folder.write(kName, "old text\n");
    FileTime::setDayOfChange(path, QDate(2026, 1, 2));
    if (!tree.setMode("f.txt", unsigned(mode)) || !tree.setMode("f.txt.bak", 0400))
        QSKIP("permissions mean nothing here");
    PreviewFile file = load(path);
    const NativeFile::Stamp old = file.stamp;
    SaveSteps::setObserver([&](SaveSteps::Step step) {
        // Nothing has given way when the copy is made, and nothing before the end.
        if (step == SaveSteps::Step::DropBackup && folder.read(kBackup) != "older\n")
            qFatal("the backup is gone");
        if (step == SaveSteps::Step::ReplaceOld && NativeFile::stampOf(path) != old)
            qFatal("the file is gone");
        return step != SaveSteps::Step::LinkForBackup;
    });
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(folder.read(kName), QByteArray("new\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
    for (const QString &name : {kName, kBackup})
        QCOMPARE(NativeFile::attributesOf(folder.filePath(name)), quint32(mode));
    QCOMPARE(FileTime::dayOfChange(folder.filePath(kBackup)), QDate(2026, 1, 2));
    QVERIFY(NativeFile::stampOf(folder.filePath(kBackup)).id != old.id);
}

void PreviewSaverTest::aCopyThatFailsLeavesTheBackup()
{
    const ScratchFolder folder;
    folder.write(kBackup, "older\n");
    PreviewFile file = load(folder.write(kName, "old text\n"));
    SaveSteps::setObserver([](SaveSteps::Step step) {
        return step != SaveSteps::Step::LinkForBackup && step != SaveSteps::Step::CopyForBackup;
    });
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::RenameFailed);
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("older\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
}

// To who asks whether it is there it is not; to who makes a file it is.
void PreviewSaverTest::aNameThatLeadsNowhereIsPassedOver()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    if (!tree.link("f.txt.saving", "nowhere") || !tree.link("f.txt.bak.saving", "nowhere"))
        QSKIP("no links here");
    PreviewFile file = load(folder.write(kName, "old text\n"));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(folder.read(kName), QByteArray("new\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
    QVERIFY(!folder.exists(QStringLiteral("nowhere")));
}

void PreviewSaverTest::aFileThatChangesDuringTheSaveIsLeft_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<bool>("links");
    QTest::addColumn<QByteArray>("backup");
    QTest::newRow("before the new file is written")
        << int(SaveSteps::Step::WriteNew) << true << QByteArray();
    QTest::newRow("before it is put in place")
        << int(SaveSteps::Step::ReplaceOld) << true << QByteArray();
    QTest::newRow("without a second name")
        << int(SaveSteps::Step::ReplaceOld) << false << QByteArray("old text\n");
}

void PreviewSaverTest::aFileThatChangesDuringTheSaveIsLeft()
{
    QFETCH(int, step);
    QFETCH(bool, links);
    QFETCH(QByteArray, backup);
    const ScratchFolder folder;
    folder.write(kBackup, "older\n");
    const QString path = folder.write(kName, "old text\n");
    PreviewFile file = load(path);
    SaveSteps::setObserver([&](SaveSteps::Step taken) {
        if (int(taken) == step)
            folder.write(kName, "written by another\n");
        return links || taken != SaveSteps::Step::LinkForBackup;
    });
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&file, kNew);
    QCOMPARE(outcome.result, Result::Changed);
    QCOMPARE(outcome.message, QString());
    QCOMPARE(folder.read(kName), QByteArray("written by another\n"));
    QCOMPARE(folder.exists(kBackup) ? folder.read(kBackup) : QByteArray(), backup);
    QVERIFY(filesIn(folder).filter(QStringLiteral("saving")).isEmpty());
    QVERIFY(PreviewSaver::changedOnDisk(file));
}

void PreviewSaverTest::whatTakesAVanishedFilesPlaceIsLeft()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    folder.remove(kName);
    SaveSteps::setObserver([&](SaveSteps::Step taken) {
        if (taken == SaveSteps::Step::ReplaceOld)
            folder.write(kName, "written by another\n");
        return true;
    });
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Changed);
    QCOMPARE(folder.read(kName), QByteArray("written by another\n"));
    QCOMPARE(filesIn(folder), QStringList{kName});
}

void PreviewSaverTest::aVanishedFolderIsAnError()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(QStringLiteral("deep/f.txt"), "old text\n"));
    QVERIFY(QDir(folder.filePath(QStringLiteral("deep"))).removeRecursively());
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&file, kNew);
    QCOMPARE(outcome.result, Result::WriteFailed);
    QCOMPARE(outcome.message, QStringLiteral("セーブ中にエラーが発生しました"));
    QVERIFY(!folder.exists(QStringLiteral("deep")));
}

void PreviewSaverTest::aSecondSaveHasTheFirstAsBackup()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(PreviewSaver::save(&file, QStringLiteral("newer\n")).result, Result::Saved);
    QCOMPARE(folder.read(kName), QByteArray("newer\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("new\n"));
}

void PreviewSaverTest::aFailedSaveMayBeTriedAgain()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    refuse(SaveSteps::Step::ReplaceOld);
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::WriteFailed);
    SaveSteps::setObserver(nullptr);
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(folder.read(kName), QByteArray("new\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
}

void PreviewSaverTest::aChangeByAnotherProgramIsFound()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    QVERIFY(!PreviewSaver::changedOnDisk(file));
    FileTime::setDayOfChange(folder.filePath(kName), QDate(2026, 1, 1));
    QVERIFY(PreviewSaver::changedOnDisk(file));
    // Saved all the same, the file is known again.
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QVERIFY(!PreviewSaver::changedOnDisk(file));
    folder.remove(kName);
    QVERIFY(!PreviewSaver::changedOnDisk(file));
}

void PreviewSaverTest::theQuestionsAreAnsweredBeforehand()
{
    const ScratchFolder folder;
    PreviewFile whole = load(folder.write(kName, "\x82\xA0\x82\xA2\x82\xA4\r\n"));
    QCOMPARE(whole.codeSet, int(CodeSet::ShiftJis));
    QVERIFY(!PreviewSaver::changesUntouchedBytes(whole));
    QVERIFY(!PreviewSaver::losesCharacters(whole, QStringLiteral("あい\n")));
    QVERIFY(PreviewSaver::losesCharacters(whole, QStringLiteral("あ😀\n")));
    const PreviewFile mixed = load(folder.write(kName, "a\r\nb\nc\r\n"));
    QVERIFY(PreviewSaver::changesUntouchedBytes(mixed));
    // No question changes the file.
    QCOMPARE(filesIn(folder), QStringList{kName});
}

void PreviewSaverTest::anEndBetweenTwoStepsLeavesAWholeFile_data()
{
    addLinks();
}

void PreviewSaverTest::anEndBetweenTwoStepsLeavesAWholeFile()
{
    QFETCH(QStringList, options);
    constexpr int kEnded = 77;
    const QByteArray old("old text\n");
    const QByteArray saved = QByteArray("new").repeated(20000);
    int ended = 0;
    for (int step = 0;; ++step) {
        const ScratchFolder folder;
        folder.write(kBackup, "older\n");
        const QString path = folder.write(kName, old);
        const int code = run(saveCommand(path) + QStringList{QString::number(step)} + options);
        if (code == 0)
            break;
        QCOMPARE(code, kEnded);
        ++ended;
        const QByteArray content = folder.read(kName);
        QVERIFY(content == old || content == saved);
        const QByteArray backup = folder.read(kBackup);
        QVERIFY(content == saved ? backup == old : backup == old || backup == "older\n");
        // The next save is not held up.
        QCOMPARE(run(saveCommand(path) + options), 0);
        QCOMPARE(folder.read(kName), saved);
        QCOMPARE(folder.read(kBackup), content);
    }
    QCOMPARE(ended, options.isEmpty() ? 6 : 7);
}

void PreviewSaverTest::aFullDeviceLeavesTheOldFile()
{
    const ScratchFolder folder;
    folder.write(kBackup, "older\n");
    const QString path = folder.write(kName, "old text\n");
    // A write beyond the limit fails in the middle of the file, as on a disk
    // that fills up.
    const QString limited = QStringLiteral("trap '' XFSZ; ulimit -f 8 || exit 99; exec \"$@\"");
    const int code =
        run(QStringList{QStringLiteral("sh"), QStringLiteral("-c"), limited, QStringLiteral("sh")}
            + saveCommand(path));
    if (code == -1 || code == 99)
        QSKIP("no shell that limits the size of files");
    QCOMPARE(code, 1);
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("older\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
}

void PreviewSaverTest::aKillAtAnyMomentLeavesTheOldOrTheNewFile_data()
{
    addLinks();
}

void PreviewSaverTest::aKillAtAnyMomentLeavesTheOldOrTheNewFile()
{
    QFETCH(QStringList, options);
    const QByteArray old("old text\n");
    QByteArray saved;
    {
        const ScratchFolder folder;
        QCOMPARE(run(saveCommand(folder.write(kName, old))), 0);
        saved = folder.read(kName);
    }
    const int rounds = TestLength::rounds(50, 500);
    int killed = 0;
    for (int i = 0; i < rounds; ++i) {
        const ScratchFolder folder;
        const QStringList command = saveCommand(folder.write(kName, old)) + options;
        QProcess process;
        process.start(command.first(), command.mid(1));
        QVERIFY(process.waitForStarted());
        QThread::usleep(QRandomGenerator::global()->bounded(30000u));
        process.kill();
        QVERIFY(process.waitForFinished());
        killed += process.exitStatus() == QProcess::CrashExit ? 1 : 0;
        const QByteArray content = folder.read(kName);
        QVERIFY2(content == old || content == saved, content.left(100).constData());
        if (folder.exists(kBackup))
            QCOMPARE(folder.read(kBackup), old);
        else
            QCOMPARE(content, old);
    }
    // Pauses that are too long would stop nothing.
    QVERIFY2(killed > rounds / 10, qPrintable(QString::number(killed)));
}

void PreviewSaverTest::aFileForWhichMemoryIsMissingIsNotShown()
{
    const ScratchFolder folder;
    const QString limited = QStringLiteral("ulimit -v 300000 || exit 99; exec \"$@\"");
    const QStringList prefix{QStringLiteral("sh"), QStringLiteral("-c"), limited,
                             QStringLiteral("sh")};
    const QByteArray text = QByteArray("a line of text\n").repeated(1000);
    const QString path = folder.write(kName, text);
    if (run(prefix + saveCommand(path)) != 0)
        QSKIP("the memory cannot be limited here");
    folder.write(kName, text);
    QVERIFY(QFile::resize(path, 200 << 20)); // takes no room on the disk
    QCOMPARE(run(prefix + saveCommand(path)), 2);
}

void PreviewSaverTest::aFolderThatMayNotBeWrittenLeavesTheOldFile()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    folder.write(kBackup, "older\n");
    const QString path = folder.write(kName, "old text\n");
    if (!tree.setMode("f.txt", 0666) || !tree.setMode(".", 0555))
        QSKIP("permissions mean nothing here");
    const QStringList prefix{QStringLiteral("setpriv"), QStringLiteral("--reuid=65534"),
                             QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups")};
    const bool superUser =
        run({QStringLiteral("sh"), QStringLiteral("-c"), QStringLiteral("test $(id -u) = 0")}) == 0;
    const bool possible = !superUser
        || run(prefix
               + QStringList{QStringLiteral("test"), QStringLiteral("-x"),
                             QStringLiteral(PREVIEW_PROCESS)})
            == 0;
    const int code = possible ? run((superUser ? prefix : QStringList()) + saveCommand(path)) : 0;
    tree.setMode(".", 0755);
    if (!possible)
        QSKIP("nobody without rights to run the test as");
    QCOMPARE(code, 3);
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("older\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
}

void PreviewSaverTest::ofProcessesThatSaveAtOnceOneSavesAndTheOthersAreTold_data()
{
    addCrowds();
}

void PreviewSaverTest::ofProcessesThatSaveAtOnceOneSavesAndTheOthersAreTold()
{
    QFETCH(int, count);
    QFETCH(QStringList, options);
    for (int round = 0; round < TestLength::rounds(20, 200); ++round) {
        const ScratchFolder folder;
        Crowd crowd(folder.write(kName, "old text\n"), count, options);
        const QVector<int> codes = crowd.save();
        QCOMPARE(codes.count(kSaved), 1);
        QCOMPARE(codes.count(kChanged), count - 1);
        QVERIFY(folder.read(kName) == textOf(codes.indexOf(kSaved)));
        QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
        QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
    }
}

void PreviewSaverTest::whoSavesAllTheSameHasWhatHeReplacesAsBackup_data()
{
    addCrowds();
}

void PreviewSaverTest::whoSavesAllTheSameHasWhatHeReplacesAsBackup()
{
    QFETCH(int, count);
    QFETCH(QStringList, options);
    for (int round = 0; round < TestLength::rounds(20, 200); ++round) {
        const ScratchFolder folder;
        Crowd crowd(folder.write(kName, "old text\n"), count,
                    options + QStringList{QStringLiteral("--insist")});
        QCOMPARE(crowd.save(), QVector<int>(count, kSaved));
        QByteArrayList texts;
        for (int i = 0; i < count; ++i)
            texts.append(textOf(i));
        QVERIFY(texts.removeOne(folder.read(kName)));
        QVERIFY(texts.removeOne(folder.read(kBackup)));
        QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
    }
}

void PreviewSaverTest::ofProcessesThatWriteAVanishedFileOneDoes()
{
    for (int round = 0; round < TestLength::rounds(20, 200); ++round) {
        const ScratchFolder folder;
        Crowd crowd(folder.write(kName, "old text\n"), 3, {});
        folder.remove(kName);
        const QVector<int> codes = crowd.save();
        QCOMPARE(codes.count(kSaved), 1);
        QCOMPARE(codes.count(kChanged), 2);
        QVERIFY(folder.read(kName) == textOf(codes.indexOf(kSaved)));
        QCOMPARE(filesIn(folder), QStringList(kName));
    }
}

QTEST_GUILESS_MAIN(PreviewSaverTest)
#include "PreviewSaverTest.moc"
