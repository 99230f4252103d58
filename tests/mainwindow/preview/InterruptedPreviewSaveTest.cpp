#include "mainwindow/preview/PreviewSaver.h"

#include "tests/mainwindow/preview/SavedFiles.h"
#include "tests/support/Commands.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestLength.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFile>
#include <QOperatingSystemVersion>
#include <QProcess>
#include <QTest>

#include <memory>
#include <vector>

using Commands::run;
using SavedFiles::filesIn;

// Real processes that save a previewed file and are stopped half-way, disturb each
// other, or have no disk left.
class InterruptedPreviewSaveTest : public QObject {
    Q_OBJECT

private slots:
    void anEndBetweenTwoStepsLeavesAWholeFile_data();
    void anEndBetweenTwoStepsLeavesAWholeFile();
    void aFileThatMayNotGrowLeavesTheOldFile();
    void aFullDiskLeavesFileAndBackup_data();
    void aFullDiskLeavesFileAndBackup();
    void aKillAtAnyMomentLeavesTheOldOrTheNewFile_data();
    void aKillAtAnyMomentLeavesTheOldOrTheNewFile();
    void aFileForWhichMemoryIsMissingIsNotShown();
    void aFolderThatMayNotBeWrittenLeavesTheOldFile();
    void ofProcessesThatSaveAtOnceOneSavesAndTheOthersAreTold_data();
    void ofProcessesThatSaveAtOnceOneSavesAndTheOthersAreTold();
    void whoSavesAllTheSameHasWhatHeReplacesAsBackup_data();
    void whoSavesAllTheSameHasWhatHeReplacesAsBackup();
    void ofProcessesThatWriteAVanishedFileOneDoes();
};

namespace {

const QString kName = QStringLiteral("f.txt");
const QString kBackup = QStringLiteral("f.txt.bak");

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
            while (!process->canReadLine() && process->waitForReadyRead(kPatienceMilliseconds)) { }
        }
    }

    /// How each of them ended.
    QVector<int> save()
    {
        for (const auto &process : m_processes) {
            process->write("\n");
            process->waitForBytesWritten(kPatienceMilliseconds);
        }
        QVector<int> codes;
        for (const auto &process : m_processes) {
            const bool ended = process->waitForFinished(kPatienceMilliseconds);
            codes.append(
                ended && process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1);
        }
        return codes;
    }

private:
    std::vector<std::unique_ptr<QProcess>> m_processes;
};

bool isOnWindows()
{
    return QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
}

/// Such a save is refused and told, which is right, but comes as it likes.
const char *const kHeldFiles = "a file that another process has open just then is not replaced";

constexpr int kSaved = 0;
constexpr int kChanged = 4;

} // namespace

void InterruptedPreviewSaveTest::anEndBetweenTwoStepsLeavesAWholeFile_data()
{
    addLinks();
}

void InterruptedPreviewSaveTest::anEndBetweenTwoStepsLeavesAWholeFile()
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

void InterruptedPreviewSaveTest::aFileThatMayNotGrowLeavesTheOldFile()
{
    const ScratchFolder folder;
    folder.write(kBackup, "older\n");
    const QString path = folder.write(kName, "old text\n");
    const int code = run(Commands::withLimitedFiles(4, saveCommand(path)));
    if (code == -1 || code == 99)
        QSKIP("no shell that limits the size of files");
    QCOMPARE(code, 1);
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("older\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
}

void InterruptedPreviewSaveTest::aFullDiskLeavesFileAndBackup_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("blocksLeft");
    QTest::addColumn<int>("code");
    const QStringList none{QStringLiteral("--no-links")};
    constexpr int kWriteFailed = 1;
    constexpr int kRenameFailed = 3;
    QTest::newRow("full") << QStringList() << 0 << kWriteFailed;
    QTest::newRow("room for half of the new file") << QStringList() << 7 << kWriteFailed;
    QTest::newRow("room for the new file, and no second names") << none << 16 << kRenameFailed;
    QTest::newRow("room for half of the backup") << none << 20 << kRenameFailed;
}

void InterruptedPreviewSaveTest::aFullDiskLeavesFileAndBackup()
{
    QFETCH(QStringList, options);
    QFETCH(int, blocksLeft);
    QFETCH(int, code);
    SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk");
    const QByteArray old = QByteArray("old text\n").repeated(6000);
    const auto write = [&](const QString &name, const QByteArray &bytes) {
        QFile file(disk.path() + name);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    };
    const auto read = [&](const QString &name) {
        QFile file(disk.path() + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    };
    QVERIFY(write(kName, old) && write(kBackup, "older\n"));
    const QStringList command = saveCommand(disk.path() + kName) + options;
    disk.fill(blocksLeft);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(run(command), code);
    disk.makeRoom();
    QVERIFY(read(kName) == old);
    QCOMPARE(read(kBackup), QByteArray("older\n"));
    QCOMPARE(QDir(disk.path()).entryList(QDir::Files, QDir::Name), QStringList({kName, kBackup}));
    QCOMPARE(run(command), 0);
    QVERIFY(read(kName) == QByteArray("new").repeated(20000));
    QVERIFY(read(kBackup) == old);
}

void InterruptedPreviewSaveTest::aKillAtAnyMomentLeavesTheOldOrTheNewFile_data()
{
    addLinks();
}

void InterruptedPreviewSaveTest::aKillAtAnyMomentLeavesTheOldOrTheNewFile()
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
    quint32 longest = Commands::kFirstKillMicroseconds;
    int killed = 0;
    for (int i = 0; i < rounds; ++i) {
        const ScratchFolder folder;
        const QStringList command = saveCommand(folder.write(kName, old)) + options;
        const bool wasKilled = Commands::killWithin(longest, command);
        killed += wasKilled ? 1 : 0;
        longest = Commands::nextKill(longest, !wasKilled);
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

void InterruptedPreviewSaveTest::aFileForWhichMemoryIsMissingIsNotShown()
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

void InterruptedPreviewSaveTest::aFolderThatMayNotBeWrittenLeavesTheOldFile()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    folder.write(kBackup, "older\n");
    const QString path = folder.write(kName, "old text\n");
    if (!tree.setMode("f.txt", 0666) || !tree.setMode(".", 0555))
        QSKIP("permissions mean nothing here");
    QStringList command = saveCommand(path);
    const bool possible = Commands::asOrdinaryUser(command);
    const int code = possible ? run(command) : 0;
    tree.setMode(".", 0755);
    if (!possible)
        QSKIP("nobody without rights to run the test as");
    QCOMPARE(code, 3);
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("older\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
}

void InterruptedPreviewSaveTest::ofProcessesThatSaveAtOnceOneSavesAndTheOthersAreTold_data()
{
    addCrowds();
}

void InterruptedPreviewSaveTest::ofProcessesThatSaveAtOnceOneSavesAndTheOthersAreTold()
{
    if (isOnWindows())
        QSKIP(kHeldFiles);
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

void InterruptedPreviewSaveTest::whoSavesAllTheSameHasWhatHeReplacesAsBackup_data()
{
    addCrowds();
}

void InterruptedPreviewSaveTest::whoSavesAllTheSameHasWhatHeReplacesAsBackup()
{
    if (isOnWindows())
        QSKIP(kHeldFiles);
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

void InterruptedPreviewSaveTest::ofProcessesThatWriteAVanishedFileOneDoes()
{
    if (isOnWindows())
        QSKIP(kHeldFiles);
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

QTEST_GUILESS_MAIN(InterruptedPreviewSaveTest)
#include "InterruptedPreviewSaveTest.moc"
