#include "tests/support/Commands.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestLength.h"

#include <QDir>
#include <QFile>
#include <QOperatingSystemVersion>
#include <QProcess>
#include <QTest>

#include <memory>
#include <vector>

// The first start, which makes the settings of the starter, stopped half-way or
// without a disk: a cut-off file would be the settings from then on.
class InterruptedStartTest : public QObject {
    Q_OBJECT

private slots:
    void anEndBetweenTwoStepsLeavesNoneOrAll();
    void aKillAtAnyMomentLeavesNoneOrAll();
    void processesThatStartAtOnceLeaveAll_data();
    void processesThatStartAtOnceLeaveAll();
    void aFullDiskLeavesNone();
    void aFolderThatMayNotBeWrittenLeavesNone();
};

namespace {

const QString kStarter = QStringLiteral("sarvik-starter.ini");
const QString kSettings = QStringLiteral("sarvik.ini");

QByteArray starter()
{
    return "[editor]\r\n" + QByteArray("; a line that is kept\r\n").repeated(5000)
        + "editor=/usr/bin/ed\r\n";
}

QByteArray whole()
{
    return "\xEF\xBB\xBF" + starter();
}

QStringList startCommand(const QString &folder)
{
    return {QStringLiteral(SAVING_PROCESS), QStringLiteral("starter"), folder, QStringLiteral("-")};
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

} // namespace

void InterruptedStartTest::anEndBetweenTwoStepsLeavesNoneOrAll()
{
    constexpr int kEnded = 77;
    int ended = 0;
    for (int step = 0;; ++step) {
        const ScratchFolder folder;
        folder.write(kStarter, starter());
        const QStringList stopped{QStringLiteral("1"), QString::number(step)};
        const int code = Commands::run(startCommand(folder.path()) + stopped);
        if (code == 0)
            break;
        QCOMPARE(code, kEnded);
        ++ended;
        QVERIFY(!folder.exists(kSettings) || folder.read(kSettings) == whole());
        // The next start is not held up.
        QCOMPARE(Commands::run(startCommand(folder.path())), 0);
        QVERIFY(folder.read(kSettings) == whole());
    }
    QCOMPARE(ended, 5);
}

void InterruptedStartTest::aKillAtAnyMomentLeavesNoneOrAll()
{
    const int rounds = TestLength::rounds(50, 500);
    quint32 longest = Commands::kFirstKillMicroseconds;
    int killed = 0;
    for (int i = 0; i < rounds; ++i) {
        const ScratchFolder folder;
        folder.write(kStarter, starter());
        const QStringList command = startCommand(folder.path());
        const bool wasKilled = Commands::killWithin(longest, command);
        killed += wasKilled ? 1 : 0;
        longest = Commands::nextKill(longest, !wasKilled);
        QVERIFY(!folder.exists(kSettings) || folder.read(kSettings) == whole());
    }
    // Pauses that are too long would stop nothing.
    QVERIFY2(killed > rounds / 10, qPrintable(QString::number(killed)));
}

void InterruptedStartTest::processesThatStartAtOnceLeaveAll_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("two") << 2;
    QTest::newRow("three") << 3;
}

void InterruptedStartTest::processesThatStartAtOnceLeaveAll()
{
    QFETCH(int, count);
    for (int round = 0; round < TestLength::rounds(10, 100); ++round) {
        const ScratchFolder folder;
        folder.write(kStarter, starter());
        const QStringList command = startCommand(folder.path());
        std::vector<std::unique_ptr<QProcess>> processes;
        for (int i = 0; i < count; ++i) {
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->start(command.first(), command.mid(1));
        }
        for (const auto &process : processes) {
            QVERIFY(process->waitForFinished(kPatienceMilliseconds));
            QCOMPARE(process->exitCode(), 0);
        }
        QVERIFY(folder.read(kSettings) == whole());
        QStringList files = filesIn(folder.path());
        // There a lock cannot be removed while another process looks whose it is.
        if (QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows)
            files.removeAll(kSettings + QStringLiteral(".lock"));
        QCOMPARE(files, QStringList({kStarter, kSettings}));
    }
}

void InterruptedStartTest::aFullDiskLeavesNone()
{
    SmallDisk disk;
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk");
    QFile file(disk.path() + kStarter);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(starter()) > 0);
    file.close();
    for (const int blocksLeft : {0, 1, 10}) {
        disk.fill(blocksLeft);
        QCOMPARE(Commands::run(startCommand(disk.path())), 1);
        disk.makeRoom();
        QCOMPARE(filesIn(disk.path()), QStringList(kStarter));
    }
    QCOMPARE(Commands::run(startCommand(disk.path())), 0);
}

void InterruptedStartTest::aFolderThatMayNotBeWrittenLeavesNone()
{
    const ScratchFolder folder;
    folder.write(kStarter, starter());
    const auto readable = QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadOther
        | QFileDevice::ExeOther;
    QVERIFY(QFile::setPermissions(folder.path(), readable));
    QStringList command = startCommand(folder.path());
    const bool possible = Commands::asOrdinaryUser(command);
    const int code = possible ? Commands::run(command) : 1;
    QVERIFY(QFile::setPermissions(folder.path(), readable | QFileDevice::WriteOwner));
    if (!possible)
        QSKIP("nobody without rights to run the test as");
    QCOMPARE(code, 1);
    QCOMPARE(filesIn(folder.path()), QStringList(kStarter));
}

QTEST_GUILESS_MAIN(InterruptedStartTest)
#include "InterruptedStartTest.moc"
