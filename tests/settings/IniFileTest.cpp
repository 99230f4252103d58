#include "settings/IniFile.h"

#include "settings/SaveSteps.h"
#include "tests/support/FileTime.h"
#include "tests/support/NativeLines.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SymbolicLink.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QOperatingSystemVersion>
#include <QProcess>
#include <QTest>

#include <memory>
#include <thread>

using Form = IniDocument::Form;
using SaveSteps::Step;

class IniFileTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aMissingFileReadsAsEmpty();
    void aFolderIsNeitherReadNorReplaced();
    void aFifoIsNeitherWaitedForNorReplaced();
    void aFileThatWouldFillTheMemoryIsNeitherReadNorReplaced();
    void anUpdateMakesTheFile();
    void anUpdateChangesWhatItIsToldTo();
    void nothingElseIsLeftInTheFolder();
    void theStepsComeInTheirOrder();
    void aFailedStepLeavesTheOldFile_data();
    void aFailedStepLeavesTheOldFile();
    void anUnreadableFileIsNotReplaced();
    void aMomentaryFailureToReplaceIsTriedAgain();
    void aLastingFailureToReplaceIsNotTriedForever();
    void aFailedUpdateMovesNoBackup();
    void theBackupIsMadeOnlyWhenTheNewFileIsWritten();
    void withoutALockTheFileIsReplacedAndTheBackupsAreLeftAlone();
    void aLockThatIsHeldIsWaitedForOnlySoLong();
    void aLockThatIsGivenBackIsTaken();
    void aFolderInTheWayOfTheLockStopsNothing();
    void aPathUnderAFileFailsAtOnce();
    void aMissingFolderFailsAtOnce();
    void aLinkStaysALinkAndItsTargetIsReplaced();
    void aChainOfLinksIsFollowed();
    void aLinkToAMissingFileMakesThatFile();
    void aCircleOfLinksIsRefused();
    void permissionsStay();
    void changesFromTwoThreadsAreBothKept();

private:
    QString path() const { return m_folder->filePath(QStringLiteral("a.ini")); }
    bool setKey(const QString &key, const QVariant &value,
                IniFile::Backup backup = IniFile::Backup::None) const;
    QStringList files() const;
    bool link(const QString &target, const QString &name) const;

    std::unique_ptr<ScratchFolder> m_folder;
};

namespace {

const QByteArray kOld = QByteArrayLiteral("[General]\na=1\n");

} // namespace

void IniFileTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
}

void IniFileTest::cleanup()
{
    SaveSteps::setObserver(nullptr);
    IniFile::setLongestWait(IniFile::kLongestWaitMilliseconds);
}

bool IniFileTest::setKey(const QString &key, const QVariant &value, IniFile::Backup backup) const
{
    return IniFile(path(), Form::Escaped)
        .update([&](IniDocument &file) { file.setValue(key, value); }, backup);
}

QStringList IniFileTest::files() const
{
    return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

// False where there are no symbolic links.
bool IniFileTest::link(const QString &target, const QString &name) const
{
    return makeLink(target, m_folder->filePath(name));
}

void IniFileTest::aMissingFileReadsAsEmpty()
{
    QVERIFY(IniFile(path(), Form::Escaped).tryRead().has_value());
    QCOMPARE(IniFile(path(), Form::Escaped).tryRead()->toBytes(), QByteArray());
    QCOMPARE(IniFile(path(), Form::Escaped).read().toBytes(), QByteArray());
    QVERIFY(files().isEmpty());
}

void IniFileTest::aFolderIsNeitherReadNorReplaced()
{
    m_folder->makeFolder(QStringLiteral("a.ini"));
    QVERIFY(!IniFile(path(), Form::Escaped).tryRead().has_value());
    QCOMPARE(IniFile(path(), Form::Escaped).read().toBytes(), QByteArray());
    QVERIFY(!setKey(QStringLiteral("b"), 2));
    QVERIFY(QFileInfo(path()).isDir());
}

void IniFileTest::aFifoIsNeitherWaitedForNorReplaced()
{
    if (QProcess::execute(QStringLiteral("mkfifo"), {path()}) != 0)
        QSKIP("no FIFOs here");
    QVERIFY(!IniFile(path(), Form::Escaped).tryRead().has_value());
    QCOMPARE(IniFile(path(), Form::Escaped).read().toBytes(), QByteArray());
    QVERIFY(!setKey(QStringLiteral("b"), 2));
    QVERIFY(QFileInfo::exists(path()) && !QFileInfo(path()).isFile());
}

void IniFileTest::aFileThatWouldFillTheMemoryIsNeitherReadNorReplaced()
{
    constexpr qint64 kHundredGigabytes = Q_INT64_C(100) << 30;
    TreeBuilder tree(QFile::encodeName(m_folder->path()));
    if (!tree.sparseFile("huge.ini", kHundredGigabytes))
        QSKIP("the disk holds no sparse files of this size");
    const QString path = m_folder->filePath(QStringLiteral("huge.ini"));
    const IniFile file(path, IniDocument::Form::Escaped);
    QVERIFY(!file.tryRead().has_value());
    QVERIFY(!file.update([](IniDocument &document) {
        document.setValue(QStringLiteral("a"), QStringLiteral("b"));
    }));
    QCOMPARE(QFileInfo(path).size(), kHundredGigabytes);
}

void IniFileTest::anUpdateMakesTheFile()
{
    QVERIFY(setKey(QStringLiteral("a"), 1));
    QCOMPARE(IniFile(path(), Form::Escaped).read().value(QStringLiteral("a")).toInt(), 1);
}

void IniFileTest::anUpdateChangesWhatItIsToldTo()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    QVERIFY(setKey(QStringLiteral("b"), 2));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), kOld + "b=2\n");
}

void IniFileTest::nothingElseIsLeftInTheFolder()
{
    QVERIFY(setKey(QStringLiteral("a"), 1));
    QVERIFY(setKey(QStringLiteral("b"), 2));
    QCOMPARE(files(), QStringList{QStringLiteral("a.ini")});
}

void IniFileTest::theStepsComeInTheirOrder()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    FileTime::setDayOfChange(path(), QDate::currentDate().addDays(-1));
    for (const char *name : {"a.ini.bak1", "a.ini.bak2", "a.ini.bak3"})
        m_folder->write(QString::fromLatin1(name), "backup");
    std::vector<Step> steps;
    SaveSteps::setObserver([&](Step step) {
        steps.push_back(step);
        return true;
    });
    QVERIFY(setKey(QStringLiteral("b"), 2, IniFile::Backup::Daily));
    const std::vector<Step> expected{Step::TakeLock,      Step::ReadOld,     Step::WriteNew,
                                     Step::CopyForBackup, Step::DateBackup,  Step::DropBackup,
                                     Step::ShiftBackup,   Step::ShiftBackup, Step::PlaceBackup,
                                     Step::ReplaceOld,    Step::Finished};
    QVERIFY(steps == expected);
}

void IniFileTest::aFailedStepLeavesTheOldFile_data()
{
    QTest::addColumn<int>("step");
    QTest::newRow("reading") << static_cast<int>(Step::ReadOld);
    QTest::newRow("writing") << static_cast<int>(Step::WriteNew);
    QTest::newRow("replacing") << static_cast<int>(Step::ReplaceOld);
}

void IniFileTest::aFailedStepLeavesTheOldFile()
{
    QFETCH(int, step);
    m_folder->write(QStringLiteral("a.ini"), kOld);
    SaveSteps::setObserver([step](Step taken) { return static_cast<int>(taken) != step; });
    QVERIFY(!setKey(QStringLiteral("b"), 2));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), kOld);
    QCOMPARE(files(), QStringList{QStringLiteral("a.ini")});
}

void IniFileTest::anUnreadableFileIsNotReplaced()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    constexpr QFileDevice::Permissions kEverything(0x7777);
    QVERIFY(QFile::setPermissions(m_folder->path(), kEverything));
    QVERIFY(QFile::setPermissions(path(), QFileDevice::WriteOwner));
    {
        const OrdinaryUser user;
        if (!user.inForce())
            QSKIP("permissions mean nothing here");
        QVERIFY(!setKey(QStringLiteral("b"), 2));
    }
    QVERIFY(QFile::setPermissions(path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), kOld);
}

void IniFileTest::aMomentaryFailureToReplaceIsTriedAgain()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    int attempts = 0;
    SaveSteps::setObserver([&](Step step) { return step != Step::ReplaceOld || ++attempts == 3; });
    QVERIFY(setKey(QStringLiteral("b"), 2));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), kOld + "b=2\n");
    QCOMPARE(files(), QStringList{QStringLiteral("a.ini")});
}

void IniFileTest::aLastingFailureToReplaceIsNotTriedForever()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    int attempts = 0;
    SaveSteps::setObserver([&](Step step) {
        attempts += step == Step::ReplaceOld ? 1 : 0;
        return step != Step::ReplaceOld;
    });
    QVERIFY(!setKey(QStringLiteral("b"), 2));
    const bool onWindows =
        QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    QCOMPARE(attempts, onWindows ? 21 : 3);
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), kOld);
}

void IniFileTest::aFailedUpdateMovesNoBackup()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    m_folder->write(QStringLiteral("a.ini.bak1"), "one");
    FileTime::setDayOfChange(path(), QDate::currentDate().addDays(-1));
    SaveSteps::setObserver([](Step step) { return step != Step::WriteNew; });
    QVERIFY(!setKey(QStringLiteral("b"), 2, IniFile::Backup::Daily));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini.bak1")), QByteArray("one"));
    QVERIFY(!m_folder->exists(QStringLiteral("a.ini.bak2")));
}

void IniFileTest::theBackupIsMadeOnlyWhenTheNewFileIsWritten()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    FileTime::setDayOfChange(path(), QDate::currentDate().addDays(-1));
    QVERIFY(setKey(QStringLiteral("b"), 2));
    QVERIFY(!m_folder->exists(QStringLiteral("a.ini.bak1")));
    FileTime::setDayOfChange(path(), QDate::currentDate().addDays(-1));
    QVERIFY(setKey(QStringLiteral("b"), 3, IniFile::Backup::Daily));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini.bak1")), kOld + "b=2\n");
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), kOld + "b=3\n");
    // Changed today now.
    QVERIFY(setKey(QStringLiteral("b"), 4, IniFile::Backup::Daily));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini.bak1")), kOld + "b=2\n");
}

void IniFileTest::withoutALockTheFileIsReplacedAndTheBackupsAreLeftAlone()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    FileTime::setDayOfChange(path(), QDate::currentDate().addDays(-1));
    SaveSteps::setObserver([](Step step) { return step != Step::TakeLock; });
    QVERIFY(setKey(QStringLiteral("b"), 2, IniFile::Backup::Daily));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), kOld + "b=2\n");
    QVERIFY(!m_folder->exists(QStringLiteral("a.ini.bak1")));
}

void IniFileTest::aLockThatIsHeldIsWaitedForOnlySoLong()
{
    QLockFile lock(path() + QStringLiteral(".lock"));
    QVERIFY(lock.lock());
    // Coming back is what counts; the holder never lets go.
    QVERIFY(setKey(QStringLiteral("a"), 1));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), nativeLines(kOld));
}

void IniFileTest::aLockThatIsGivenBackIsTaken()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    FileTime::setDayOfChange(path(), QDate::currentDate().addDays(-1));
    IniFile::setLongestWait(kPatienceMilliseconds);
    QLockFile lock(path() + QStringLiteral(".lock"));
    QVERIFY(lock.lock());
    std::thread other([this] { setKey(QStringLiteral("b"), 2, IniFile::Backup::Daily); });
    lock.unlock();
    other.join();
    // The backup is the sign that it was done under the lock.
    QCOMPARE(m_folder->read(QStringLiteral("a.ini.bak1")), kOld);
}

void IniFileTest::aFolderInTheWayOfTheLockStopsNothing()
{
    m_folder->makeFolder(QStringLiteral("a.ini.lock"));
    QVERIFY(setKey(QStringLiteral("a"), 1));
    QCOMPARE(m_folder->read(QStringLiteral("a.ini")), nativeLines(kOld));
}

void IniFileTest::aPathUnderAFileFailsAtOnce()
{
    m_folder->write(QStringLiteral("file"), "content");
    const IniFile file(m_folder->filePath(QStringLiteral("file/a.ini")), Form::Escaped);
    QVERIFY(!file.update([](IniDocument &document) { document.setValue(QStringLiteral("a"), 1); },
                         IniFile::Backup::Daily));
    QCOMPARE(m_folder->read(QStringLiteral("file")), QByteArray("content"));
}

void IniFileTest::aMissingFolderFailsAtOnce()
{
    const IniFile file(m_folder->filePath(QStringLiteral("none/a.ini")), Form::Escaped);
    QVERIFY(!file.update([](IniDocument &document) { document.setValue(QStringLiteral("a"), 1); }));
    QVERIFY(files().isEmpty());
}

void IniFileTest::aLinkStaysALinkAndItsTargetIsReplaced()
{
    const QString target = m_folder->write(QStringLiteral("elsewhere/real.ini"), kOld);
    if (!link(target, QStringLiteral("a.ini")))
        QSKIP("no symbolic links here");
    QVERIFY(setKey(QStringLiteral("b"), 2));
    QVERIFY(QFileInfo(path()).isSymLink());
    QVERIFY(!QFileInfo(target).isSymLink());
    QCOMPARE(m_folder->read(QStringLiteral("elsewhere/real.ini")), kOld + "b=2\n");
}

void IniFileTest::aChainOfLinksIsFollowed()
{
    if (!link(m_folder->write(QStringLiteral("elsewhere/real.ini"), kOld),
              QStringLiteral("elsewhere/link.ini")))
        QSKIP("no symbolic links here");
    if (!link(QStringLiteral("elsewhere/link.ini"), QStringLiteral("a.ini")))
        QSKIP("no symbolic links here");
    QVERIFY(setKey(QStringLiteral("b"), 2));
    QVERIFY(QFileInfo(path()).isSymLink());
    QVERIFY(QFileInfo(m_folder->filePath(QStringLiteral("elsewhere/link.ini"))).isSymLink());
    QCOMPARE(m_folder->read(QStringLiteral("elsewhere/real.ini")), kOld + "b=2\n");
}

void IniFileTest::aLinkToAMissingFileMakesThatFile()
{
    if (!link(m_folder->filePath(QStringLiteral("real.ini")), QStringLiteral("a.ini")))
        QSKIP("no symbolic links here");
    QVERIFY(setKey(QStringLiteral("a"), 1));
    QVERIFY(QFileInfo(path()).isSymLink());
    QCOMPARE(m_folder->read(QStringLiteral("real.ini")), nativeLines(kOld));
}

void IniFileTest::aCircleOfLinksIsRefused()
{
    if (!link(m_folder->filePath(QStringLiteral("b.ini")), QStringLiteral("a.ini")))
        QSKIP("no symbolic links here");
    if (!link(path(), QStringLiteral("b.ini")))
        QSKIP("no symbolic links here");
    QVERIFY(!setKey(QStringLiteral("a"), 1));
    QVERIFY(QFileInfo(path()).isSymLink());
}

void IniFileTest::permissionsStay()
{
    m_folder->write(QStringLiteral("a.ini"), kOld);
    const auto permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    QVERIFY(QFile::setPermissions(path(), permissions));
    const QFile::Permissions before = QFile::permissions(path());
    QVERIFY(setKey(QStringLiteral("b"), 2));
    QCOMPARE(QFile::permissions(path()), before);
}

void IniFileTest::changesFromTwoThreadsAreBothKept()
{
    // A thread that the machine keeps for longer from running would lose its lock.
    IniFile::setLongestWait(kPatienceMilliseconds);
    const auto work = [this](const QString &prefix) {
        for (int i = 0; i < 10; ++i)
            setKey(prefix + QString::number(i), i);
    };
    std::thread one(work, QStringLiteral("one"));
    std::thread two(work, QStringLiteral("two"));
    one.join();
    two.join();
    const IniDocument file = IniFile(path(), Form::Escaped).read();
    for (int i = 0; i < 10; ++i) {
        QVERIFY(file.contains(QStringLiteral("one%1").arg(i)));
        QVERIFY(file.contains(QStringLiteral("two%1").arg(i)));
    }
}

QTEST_GUILESS_MAIN(IniFileTest)
#include "IniFileTest.moc"
