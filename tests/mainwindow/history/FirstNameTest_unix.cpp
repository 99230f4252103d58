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

} // namespace

/// Stands before the C library's, which the program calls otherwise.
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

class FirstNameTest : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<ScratchFolder>(); }
    void cleanup() { g_refusal = 0; }
    void aFreeNameIsGiven_data() { fileSystems(); }
    void aFreeNameIsGiven();
    void aTakenNameStaysAsItIs_data() { fileSystems(); }
    void aTakenNameStaysAsItIs();
    void aFolderThatIsNotThereFails_data() { fileSystems(); }
    void aFolderThatIsNotThereFails();
    void aFileThatIsNotThereLeavesNoName_data() { fileSystems(); }
    void aFileThatIsNotThereLeavesNoName();
    void anyOtherRefusalIsTheAnswer();

private:
    static void fileSystems();
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
    QTest::newRow("renames without replacing") << 0;
    QTest::newRow("knows no such renaming") << EINVAL;
    QTest::newRow("on a system that knows none") << ENOSYS;
}

void FirstNameTest::aFreeNameIsGiven()
{
    QFETCH(int, refusal);
    g_refusal = refusal;
    m_folder->makeFolder(QStringLiteral("folder"));
    m_folder->write(kTemporary, "text");
    QCOMPARE(give(), FirstName::Result::Given);
    QCOMPARE(m_folder->read(kName), QByteArray("text"));
    QVERIFY(!m_folder->exists(kTemporary));
}

void FirstNameTest::aTakenNameStaysAsItIs()
{
    QFETCH(int, refusal);
    g_refusal = refusal;
    m_folder->write(kTemporary, "text");
    m_folder->write(kName, "earlier");
    QCOMPARE(give(), FirstName::Result::Taken);
    QCOMPARE(m_folder->read(kName), QByteArray("earlier"));
    QCOMPARE(m_folder->read(kTemporary), QByteArray("text"));
}

void FirstNameTest::aFolderThatIsNotThereFails()
{
    QFETCH(int, refusal);
    g_refusal = refusal;
    m_folder->write(kTemporary, "text");
    QCOMPARE(give(), FirstName::Result::Failed);
    QCOMPARE(m_folder->read(kTemporary), QByteArray("text"));
}

void FirstNameTest::aFileThatIsNotThereLeavesNoName()
{
    QFETCH(int, refusal);
    g_refusal = refusal;
    m_folder->makeFolder(QStringLiteral("folder"));
    QCOMPARE(give(), FirstName::Result::Failed);
    QVERIFY(!m_folder->exists(kName));
}

void FirstNameTest::anyOtherRefusalIsTheAnswer()
{
    g_refusal = EACCES;
    m_folder->makeFolder(QStringLiteral("folder"));
    m_folder->write(kTemporary, "text");
    QCOMPARE(give(), FirstName::Result::Failed);
    QVERIFY(!m_folder->exists(kName));
}

QTEST_GUILESS_MAIN(FirstNameTest)
#include "FirstNameTest_unix.moc"
