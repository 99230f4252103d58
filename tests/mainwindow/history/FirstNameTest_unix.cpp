#include "mainwindow/history/FirstName.h"

#include "tests/support/ScratchFolder.h"

#include <QtTest>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// What the file system answers to a renaming that replaces nothing; 0 is its own answer.
int g_refusal = 0;
/// What it answers to a second name; 0 again is its own.
int g_refusalOfLinks = 0;
bool g_linked = false;

} // namespace

/// Both stand before the C library's, which FirstName calls otherwise.
extern "C" int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
                         unsigned int flags) noexcept
{
    if (g_refusal != 0) {
        errno = g_refusal;
        return -1;
    }
    if (flags == RENAME_NOREPLACE && ::faccessat(toFolder, to, F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
        errno = EEXIST;
        return -1;
    }
    return ::renameat(fromFolder, from, toFolder, to);
}

extern "C" int link(const char *from, const char *to) noexcept
{
    if (g_refusalOfLinks != 0) {
        errno = g_refusalOfLinks;
        return -1;
    }
    g_linked = true;
    return ::linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

class FirstNameTest : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<ScratchFolder>(); }
    void cleanup() { setFileSystem(0, 0); }
    void aFreeNameIsGiven_data() { fileSystems(); }
    void aFreeNameIsGiven();
    void aTakenNameStaysAsItIs_data() { fileSystems(); }
    void aTakenNameStaysAsItIs();
    void aFolderThatIsNotThereFails_data() { fileSystems(); }
    void aFolderThatIsNotThereFails();
    void aFileThatIsNotThereLeavesNoName_data() { fileSystems(); }
    void aFileThatIsNotThereLeavesNoName();
    void noNameIsClaimedWhereSecondNamesAreKnown();
    void anyOtherRefusalIsTheAnswer();

private:
    static void fileSystems();
    static void setFileSystem(int refusal, int refusalOfLinks);
    static void setFileSystem();
    FirstName::Result give() const
    {
        return FirstName::give(m_folder->filePath(kTemporary), m_folder->filePath(kName));
    }

    const QString kTemporary = QStringLiteral("temporary");
    const QString kName = QStringLiteral("folder/name");
    std::unique_ptr<ScratchFolder> m_folder;
};

void FirstNameTest::fileSystems()
{
    QTest::addColumn<int>("refusal");
    QTest::addColumn<int>("refusalOfLinks");
    QTest::newRow("renames without replacing") << 0 << 0;
    QTest::newRow("knows no such renaming") << EINVAL << 0;
    QTest::newRow("on a system that knows none") << ENOSYS << 0;
    QTest::newRow("knows no second names either") << EINVAL << EPERM;
    QTest::newRow("nor does its network") << EINVAL << EOPNOTSUPP;
}

void FirstNameTest::setFileSystem(int refusal, int refusalOfLinks)
{
    g_refusal = refusal;
    g_refusalOfLinks = refusalOfLinks;
    g_linked = false;
}

void FirstNameTest::setFileSystem()
{
    QFETCH(int, refusal);
    QFETCH(int, refusalOfLinks);
    setFileSystem(refusal, refusalOfLinks);
}

void FirstNameTest::aFreeNameIsGiven()
{
    setFileSystem();
    m_folder->makeFolder(QStringLiteral("folder"));
    m_folder->write(kTemporary, "text");
    QCOMPARE(give(), FirstName::Result::Given);
    QCOMPARE(m_folder->read(kName), QByteArray("text"));
    QVERIFY(!m_folder->exists(kTemporary));
}

void FirstNameTest::aTakenNameStaysAsItIs()
{
    setFileSystem();
    m_folder->write(kTemporary, "text");
    m_folder->write(kName, "earlier");
    QCOMPARE(give(), FirstName::Result::Taken);
    QCOMPARE(m_folder->read(kName), QByteArray("earlier"));
    QCOMPARE(m_folder->read(kTemporary), QByteArray("text"));
}

void FirstNameTest::aFolderThatIsNotThereFails()
{
    setFileSystem();
    m_folder->write(kTemporary, "text");
    QCOMPARE(give(), FirstName::Result::Failed);
    QCOMPARE(m_folder->read(kTemporary), QByteArray("text"));
}

void FirstNameTest::aFileThatIsNotThereLeavesNoName()
{
    setFileSystem();
    m_folder->makeFolder(QStringLiteral("folder"));
    QCOMPARE(give(), FirstName::Result::Failed);
    QVERIFY(!m_folder->exists(kName));
}

void FirstNameTest::noNameIsClaimedWhereSecondNamesAreKnown()
{
    setFileSystem(EINVAL, 0);
    m_folder->makeFolder(QStringLiteral("folder"));
    m_folder->write(kTemporary, "text");
    QCOMPARE(give(), FirstName::Result::Given);
    QVERIFY2(g_linked, "a kill would have left an empty file");
}

void FirstNameTest::anyOtherRefusalIsTheAnswer()
{
    m_folder->makeFolder(QStringLiteral("folder"));
    m_folder->write(kTemporary, "text");
    setFileSystem(EACCES, 0);
    QCOMPARE(give(), FirstName::Result::Failed);
    setFileSystem(EINVAL, EACCES);
    QCOMPARE(give(), FirstName::Result::Failed);
    QVERIFY(!m_folder->exists(kName));
}

QTEST_GUILESS_MAIN(FirstNameTest)
#include "FirstNameTest_unix.moc"
