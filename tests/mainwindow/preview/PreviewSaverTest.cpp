#include "mainwindow/preview/PreviewSaver.h"

#include "engine/CodeSet.h"
#include "settings/SaveSteps.h"
#include "tests/mainwindow/preview/SavedFiles.h"
#include "tests/support/FileTime.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFile>
#include <QTest>

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
    void aLinkThatLeadsNowhereMeanwhileIsNotReplaced();
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
};

namespace {

const QString kName = QStringLiteral("f.txt");
const QString kBackup = QStringLiteral("f.txt.bak");
const QString kNew = QStringLiteral("new\n");

void refuse(SaveSteps::Step refused)
{
    SaveSteps::setObserver([refused](SaveSteps::Step step) { return step != refused; });
}

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

void PreviewSaverTest::aLinkThatLeadsNowhereMeanwhileIsNotReplaced()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    tree.file("real.txt", "old text\n");
    if (!tree.link("f.txt", "real.txt"))
        QSKIP("no links here");
    PreviewFile file = load(folder.filePath(kName));
    QVERIFY(QFile::remove(folder.filePath(QStringLiteral("real.txt"))));
    QCOMPARE(PreviewSaver::save(&file, kNew, file.stamp).result, Result::WriteFailed);
    QVERIFY(QFileInfo(folder.filePath(kName)).isSymLink());
    QCOMPARE(filesIn(folder).size(), 1);
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

QTEST_GUILESS_MAIN(PreviewSaverTest)
#include "PreviewSaverTest.moc"
