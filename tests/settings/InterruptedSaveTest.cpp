#include "settings/IniDocument.h"

#include "tests/support/Commands.h"
#include "tests/support/FileTime.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestLength.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QOperatingSystemVersion>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

// Real processes that are stopped half-way, that disturb each other, or that
// have no disk left: what is on the disk afterwards must be whole files.
class InterruptedSaveTest : public QObject {
    Q_OBJECT

private slots:
    void anEndBetweenTwoStepsLeavesAWholeFile_data();
    void anEndBetweenTwoStepsLeavesAWholeFile();
    void aKillAtAnyMomentLeavesAWholeFile_data();
    void aKillAtAnyMomentLeavesAWholeFile();
    void processesThatSaveAtOnceLeaveAWholeFile_data();
    void processesThatSaveAtOnceLeaveAWholeFile();
    void aFullDiskLeavesEveryFileAsItWas_data();
    void aFullDiskLeavesEveryFileAsItWas();
    void roomForTheNewFileOnlyMovesNoBackup();
    void aFileThatMayNotGrowLeavesEveryFileAsItWas_data();
    void aFileThatMayNotGrowLeavesEveryFileAsItWas();
    void aFolderThatMayNotBeWrittenLeavesEveryFileAsItWas_data();
    void aFolderThatMayNotBeWrittenLeavesEveryFileAsItWas();
    void aFileThatMayNotBeReadIsNotReplaced_data();
    void aFileThatMayNotBeReadIsNotReplaced();
};

using Commands::asOrdinaryUser;
using Commands::run;

namespace {

const QString kOld = QStringLiteral("旧");
const QString kNew = QStringLiteral("新");
const QString kOther = QStringLiteral("別");
const QString kThird = QStringLiteral("三");

const char *const kKinds[] = {"settings", "keywords", "parameters", "paths", "chooser", "note"};

using Files = QMap<QString, QByteArray>;

void addKinds()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : kKinds)
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

QString fileOf(const QString &kind)
{
    static const QMap<QString, QString> files{
        {QStringLiteral("settings"), QStringLiteral("sarvik.ini")},
        {QStringLiteral("keywords"), QStringLiteral("keywordhistory.ini")},
        {QStringLiteral("parameters"), QStringLiteral("sarvikpara.ini")},
        {QStringLiteral("paths"), QStringLiteral("inputSearchPath.ini")},
        {QStringLiteral("chooser"), QStringLiteral("fileDialog.ini")},
        {QStringLiteral("note"), QStringLiteral("note.ini")}};
    return files.value(kind);
}

QStringList saveCommand(const QString &kind, const QString &folder, const QString &tag,
                        int times = 1)
{
    return {QStringLiteral(SAVING_PROCESS), kind, folder, tag, QString::number(times)};
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Files filesIn(const QString &folder)
{
    Files files;
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden))
        files.insert(name, contentOf(folder + name));
    return files;
}

bool isOnWindows()
{
    return QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
}

/// The one tag that a whole file carries throughout; something else otherwise.
QString tagIn(const QString &kind, const QByteArray &content)
{
    QStringList tags;
    if (kind == QLatin1String("keywords")) {
        const IniDocument file(content, IniDocument::Form::Escaped);
        for (int i = 1; i <= 100; ++i) {
            const QString key = QStringLiteral("keyword/%1").arg(i, 3, 10, QLatin1Char('0'));
            tags.append(
                file.text(key).remove(QStringLiteral("101")).remove(QStringLiteral("-%1").arg(i)));
        }
    } else if (kind == QLatin1String("settings")) {
        const IniDocument file(content, IniDocument::Form::Utf8);
        tags = file.list(QStringLiteral("pathhistory"));
        tags.append(tags.size() == 2000 ? file.text(QStringLiteral("browser")) : QString());
        tags.append(file.text(QStringLiteral("editor/editor")));
    } else if (kind == QLatin1String("paths")) {
        const IniDocument file(content, IniDocument::Form::Escaped);
        tags = file.list(QStringLiteral("history/list"));
        if (tags.size() != 2000)
            tags.append(QString());
    } else if (kind == QLatin1String("chooser")) {
        const IniDocument file(content, IniDocument::Form::Escaped);
        for (const char *key : {"splitterV", "splitterH"}) {
            const QString bytes = QString::fromUtf8(file.value(QLatin1String(key)).toByteArray());
            tags.append(bytes == bytes.left(1).repeated(2000) ? bytes.left(1) : QString());
        }
    } else if (kind == QLatin1String("note")) {
        const IniDocument file(content, IniDocument::Form::Utf8);
        for (const QString &number : file.list(QStringLiteral("note/window")))
            tags.append(QString(QChar(number.toInt())));
        if (content.count("text of the note") != 2000)
            tags.append(QString());
    } else {
        const IniDocument file(content, IniDocument::Form::Escaped);
        tags = file.list(QStringLiteral("pathlist"));
        tags.append(tags.size() == 2000 ? file.text(QStringLiteral("mask")) : QString());
        tags.append(file.text(QStringLiteral("findword")));
    }
    tags.removeDuplicates();
    return tags.join(QLatin1Char('|'));
}

/// Opens no other file: a lock that is read cannot be given back on Windows.
QString tagOf(const QString &kind, const QString &folder)
{
    return tagIn(kind, contentOf(folder + fileOf(kind)));
}

/// Windows lets nobody open a file at the moment at which it is replaced; a reader
/// tries again there.
QString tagWhileReplaced(const QString &kind, const QString &folder)
{
    constexpr int kPauseMilliseconds = 10;
    constexpr int kMostPauses = kPatienceMilliseconds / kPauseMilliseconds;
    QString tag = tagOf(kind, folder);
    for (int i = 0; isOnWindows() && tag.isEmpty() && i < kMostPauses; ++i) {
        QTest::qSleep(kPauseMilliseconds);
        tag = tagOf(kind, folder);
    }
    return tag;
}

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/// A file of each kind that carries kOld.
Files savedFiles()
{
    QByteArray note("[note]\n");
    for (int i = 1000; i < 3000; ++i)
        note += "l" + QByteArray::number(i) + "=text of the note\n";
    const ScratchFolder folder;
    folder.write(fileOf(QStringLiteral("note")), note);
    for (const char *name : kKinds) {
        const QString kind = QString::fromLatin1(name);
        if (run(saveCommand(kind, folder.path(), kOld)) != 0 || tagOf(kind, folder.path()) != kOld)
            return {};
    }
    return filesIn(folder.path());
}

QByteArray generation(int number)
{
    return "generation " + QByteArray::number(number);
}

QString backupName(int number)
{
    return QStringLiteral("sarvik.ini.bak%1").arg(number);
}

/// Files that carry kOld and were changed yesterday, so that a save makes the
/// daily backup, and three earlier generations of the settings.
void prepare(const QString &folder)
{
    // Six processes make them, which is too much for every row.
    static const Files files = savedFiles();
    QVERIFY(!files.isEmpty());
    const QDate yesterday = QDate::currentDate().addDays(-1);
    for (auto file = files.begin(); file != files.end(); ++file) {
        QVERIFY(write(folder + file.key(), file.value()));
        FileTime::setDayOfChange(folder + file.key(), yesterday);
    }
    for (int i = 1; i <= 3; ++i) {
        const QString backup = folder + backupName(i);
        QVERIFY(write(backup, generation(i)));
        FileTime::setDayOfChange(backup, yesterday.addDays(-i));
    }
}

/// A lock that a kill has left empty names no process that could be seen to be gone: it
/// is waited for until it is old, for longer than a round of kills takes.
void ageEmptyLocks(const QString &folder)
{
    for (const QFileInfo &file : QDir(folder).entryInfoList({QStringLiteral("*lock")}, QDir::Files))
        if (file.size() == 0)
            FileTime::setDayOfChange(file.filePath(), QDate::currentDate().addDays(-1));
}

/// day: when the folder was prepared; with the next one another backup is due.
void verifyBackupsMovedOnce(const QString &folder, const QDate &day)
{
    if (QDate::currentDate() != day)
        return;
    const Files files = filesIn(folder);
    QCOMPARE(tagIn(QStringLiteral("settings"), files.value(backupName(1))), kOld);
    QCOMPARE(files.value(backupName(2)), generation(1));
    QCOMPARE(files.value(backupName(3)), generation(2));
    QVERIFY(!files.contains(backupName(4)));
}

/// Who has waited too long for the others saves without a backup, and if that is the
/// first to save none is due any more.
void verifyBackupsMovedOnceAtMost(const QString &folder, const QDate &day)
{
    const Files files = filesIn(folder);
    if (files.value(backupName(1)) != generation(1))
        return verifyBackupsMovedOnce(folder, day);
    QCOMPARE(files.value(backupName(2)), generation(2));
    QCOMPARE(files.value(backupName(3)), generation(3));
}

/// Every backup that is there is one of the prepared, or the settings as one save
/// has left them.
void verifyBackupsAreWhole(const QString &folder)
{
    for (int i = 1; i <= 3; ++i) {
        const QString path = folder + backupName(i);
        const QByteArray content = contentOf(path);
        const QString tag = tagIn(QStringLiteral("settings"), content);
        const bool prepared =
            content == generation(1) || content == generation(2) || content == generation(3);
        QVERIFY2(!QFile::exists(path) || prepared || tag == kOld || tag == kNew || tag == kOther,
                 qPrintable(path + QLatin1Char(' ') + tag));
    }
}

} // namespace

void InterruptedSaveTest::anEndBetweenTwoStepsLeavesAWholeFile_data()
{
    addKinds();
}

void InterruptedSaveTest::anEndBetweenTwoStepsLeavesAWholeFile()
{
    QFETCH(QString, kind);
    constexpr int kEnded = 77;
    const int leastSteps = kind == QLatin1String("settings") ? 14 : 5;
    int ended = 0;
    for (int step = 0;; ++step) {
        const ScratchFolder folder;
        const QDate day = QDate::currentDate();
        prepare(folder.path());
        const int code =
            run(saveCommand(kind, folder.path(), kNew) + QStringList{QString::number(step)});
        if (code == 0)
            break;
        QCOMPARE(code, kEnded);
        ++ended;
        for (const char *name : kKinds) {
            const QString tag = tagOf(QString::fromLatin1(name), folder.path());
            QVERIFY2(tag == kOld || tag == kNew, qPrintable(tag));
        }
        // The next save is not held up and completes what was begun.
        QCOMPARE(run(saveCommand(kind, folder.path(), kOther)), 0);
        QCOMPARE(tagOf(kind, folder.path()), kOther);
        if (kind == QLatin1String("settings"))
            verifyBackupsMovedOnce(folder.path(), day);
    }
    QVERIFY2(ended >= leastSteps, qPrintable(QString::number(ended)));
}

void InterruptedSaveTest::aKillAtAnyMomentLeavesAWholeFile_data()
{
    addKinds();
}

void InterruptedSaveTest::aKillAtAnyMomentLeavesAWholeFile()
{
    QFETCH(QString, kind);
    const bool withBackups = kind == QLatin1String("settings");
    const ScratchFolder folder;
    prepare(folder.path());
    quint32 longest = Commands::kFirstKillMicroseconds;
    int killed = 0;
    int changed = 0;
    // Processes start slowly on Windows, and slower under Wine.
    const int rounds = isOnWindows() ? 20 : TestLength::rounds(50, 500);
    // More where none has got as far as a save yet: the machine may be slow for a while.
    const int mostRounds = rounds + 20;
    for (int i = 0; i < rounds || (changed == 0 && i < mostRounds); ++i) {
        const QString path = folder.path() + fileOf(kind);
        // Another day than that of the last backup, so that one is due.
        if (withBackups)
            FileTime::setDayOfChange(path, QDate::currentDate().addDays(-10 - i));
        const QString before = tagWhileReplaced(kind, folder.path());
        const QString mine = before == kNew ? kOther : kNew;
        killed += Commands::killWithin(longest, saveCommand(kind, folder.path(), mine, 100000));
        const QString tag = tagWhileReplaced(kind, folder.path());
        QVERIFY2(tag == before || tag == mine, qPrintable(tag));
        if (withBackups)
            verifyBackupsAreWhole(folder.path());
        ageEmptyLocks(folder.path());
        changed += tag == mine ? 1 : 0;
        // About every other process gets as far as one save.
        longest = Commands::nextKill(longest, tag == mine);
    }
    QVERIFY(killed > 0);
    QVERIFY(changed > 0);
    if (withBackups)
        QVERIFY(contentOf(folder.path() + backupName(1)) != generation(1));
    QCOMPARE(run(saveCommand(kind, folder.path(), kThird)), 0);
    QCOMPARE(tagOf(kind, folder.path()), kThird);
}

void InterruptedSaveTest::processesThatSaveAtOnceLeaveAWholeFile_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QStringList>("tags");
    for (const char *kind : kKinds) {
        QTest::addRow("two: %s", kind) << QString::fromLatin1(kind) << QStringList{kNew, kOther};
        QTest::addRow("three: %s", kind)
            << QString::fromLatin1(kind) << QStringList{kNew, kOther, kThird};
    }
}

void InterruptedSaveTest::processesThatSaveAtOnceLeaveAWholeFile()
{
    QFETCH(QString, kind);
    QFETCH(QStringList, tags);
    const ScratchFolder folder;
    const QDate day = QDate::currentDate();
    prepare(folder.path());
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QString &tag : tags) {
        const QStringList command = saveCommand(kind, folder.path(), tag, 20);
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(command.first(), command.mid(1));
    }
    const auto isRunning = [](const auto &process) {
        return process->state() != QProcess::NotRunning;
    };
    while (std::any_of(processes.begin(), processes.end(), isRunning)) {
        const QString tag = tagWhileReplaced(kind, folder.path());
        QVERIFY2(tag == kOld || tags.contains(tag), qPrintable(tag));
        QTest::qWait(1);
    }
    if (isOnWindows())
        QSKIP(
            "whole; but a file that another process has open is not replaced, nor a lock removed");
    for (const auto &process : processes)
        QCOMPARE(process->exitCode(), 0);
    const QString tag = tagOf(kind, folder.path());
    QVERIFY2(tags.contains(tag), qPrintable(tag));
    if (kind == QLatin1String("settings"))
        verifyBackupsMovedOnceAtMost(folder.path(), day);
    QCOMPARE(filesIn(folder.path()).keys().filter(QStringLiteral(".lock")), QStringList());
}

void InterruptedSaveTest::aFullDiskLeavesEveryFileAsItWas_data()
{
    addKinds();
}

void InterruptedSaveTest::aFullDiskLeavesEveryFileAsItWas()
{
    QFETCH(QString, kind);
    SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk");
    prepare(disk.path());
    const Files before = filesIn(disk.path());
    // One block is room for the lock, and for nothing of the new file.
    for (const int blocksLeft : {0, 1}) {
        disk.fill(blocksLeft);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(run(saveCommand(kind, disk.path(), kNew)), 1);
        disk.makeRoom();
        QCOMPARE(filesIn(disk.path()), before);
    }
    disk.makeRoom();
    QCOMPARE(run(saveCommand(kind, disk.path(), kNew)), 0);
    QCOMPARE(tagOf(kind, disk.path()), kNew);
}

void InterruptedSaveTest::roomForTheNewFileOnlyMovesNoBackup()
{
    SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk");
    prepare(disk.path());
    const Files before = filesIn(disk.path());
    const int blocks = before.value(QStringLiteral("sarvik.ini")).size() / 4096 + 1;
    // One more for the lock.
    disk.fill(blocks + 1);
    QCOMPARE(run(saveCommand(QStringLiteral("settings"), disk.path(), kNew)), 0);
    QCOMPARE(tagOf(QStringLiteral("settings"), disk.path()), kNew);
    const Files after = filesIn(disk.path());
    for (const char *backup : {"sarvik.ini.bak1", "sarvik.ini.bak2", "sarvik.ini.bak3"}) {
        const QString name = QString::fromLatin1(backup);
        QCOMPARE(after.value(name), before.value(name));
    }
    QCOMPARE(after.size(), before.size() + 1);
}

void InterruptedSaveTest::aFileThatMayNotGrowLeavesEveryFileAsItWas_data()
{
    addKinds();
}

void InterruptedSaveTest::aFileThatMayNotGrowLeavesEveryFileAsItWas()
{
    QFETCH(QString, kind);
    const ScratchFolder folder;
    prepare(folder.path());
    const Files before = filesIn(folder.path());
    const int code = run(Commands::withLimitedFiles(1, saveCommand(kind, folder.path(), kNew)));
    if (code == -1 || code == 99)
        QSKIP("no shell that limits the size of files");
    QCOMPARE(code, 1);
    QCOMPARE(filesIn(folder.path()), before);
}

void InterruptedSaveTest::aFolderThatMayNotBeWrittenLeavesEveryFileAsItWas_data()
{
    addKinds();
}

void InterruptedSaveTest::aFolderThatMayNotBeWrittenLeavesEveryFileAsItWas()
{
    QFETCH(QString, kind);
    const ScratchFolder folder;
    prepare(folder.path());
    const Files before = filesIn(folder.path());
    const auto readable = QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadOther
        | QFileDevice::ExeOther;
    QVERIFY(QFile::setPermissions(folder.path(), readable));
    QStringList command = saveCommand(kind, folder.path(), kNew);
    const bool possible = asOrdinaryUser(command);
    const int code = possible ? run(command) : 0;
    QVERIFY(QFile::setPermissions(folder.path(), readable | QFileDevice::WriteOwner));
    if (!possible)
        QSKIP("nobody without rights to run the test as");
    QCOMPARE(code, 1);
    QCOMPARE(filesIn(folder.path()), before);
}

void InterruptedSaveTest::aFileThatMayNotBeReadIsNotReplaced_data()
{
    addKinds();
}

void InterruptedSaveTest::aFileThatMayNotBeReadIsNotReplaced()
{
    QFETCH(QString, kind);
    const ScratchFolder folder;
    prepare(folder.path());
    const Files before = filesIn(folder.path());
    QVERIFY(QFile::setPermissions(folder.path(),
                                  QFileDevice::ReadOwner | QFileDevice::WriteOwner
                                      | QFileDevice::ExeOwner | QFileDevice::ReadOther
                                      | QFileDevice::WriteOther | QFileDevice::ExeOther));
    const QString path = folder.path() + fileOf(kind);
    QVERIFY(QFile::setPermissions(path, QFileDevice::WriteOwner));
    QStringList command = saveCommand(kind, folder.path(), kNew);
    if (!asOrdinaryUser(command))
        QSKIP("nobody without rights to run the test as");
    const int code = run(command);
    QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    QCOMPARE(code, 1);
    QCOMPARE(filesIn(folder.path()).value(fileOf(kind)), before.value(fileOf(kind)));
}

QTEST_GUILESS_MAIN(InterruptedSaveTest)
#include "InterruptedSaveTest.moc"
