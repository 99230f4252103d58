#include "mainwindow/preview/NativeFile.h"

#include "engine/NativePath.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchFolder.h"

#include <QTest>

#include <iterator>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

/// Whose a file is after a save.
class NativeFileOwnerTest : public QObject {
    Q_OBJECT

private slots:
    void aSharedFileStaysItsGroups();
    void anotherGroupMayNoMoreThanEverybody_data();
    void anotherGroupMayNoMoreThanEverybody();
};

void NativeFileOwnerTest::aSharedFileStaysItsGroups()
{
    if (::geteuid() != 0)
        QSKIP("only the super-user can be a member of any group");
    constexpr gid_t kGroup = 4711;
    const ScratchFolder folder;
    const QString path = folder.write(QStringLiteral("a"), "text");
    const QString saved = folder.filePath(QStringLiteral("b"));
    QVERIFY(::chmod(NativePath::toNative(folder.path()).constData(), 0777) == 0);
    gid_t groups[64] = {};
    const int count = ::getgroups(int(std::size(groups)), groups);
    if (count < 0 || ::chown(NativePath::toNative(path).constData(), 0, kGroup) != 0
        || ::setgroups(1, &kGroup) != 0)
        QSKIP("this super-user may not do all");
    auto written = NativeFile::Written::Failed;
    bool inForce = false;
    {
        const OrdinaryUser user;
        inForce = user.inForce();
        written = NativeFile::writeNew(saved, "more", path);
    }
    QVERIFY(::setgroups(size_t(count), groups) == 0);
    if (!inForce)
        QSKIP("permissions mean nothing here");
    QVERIFY(written == NativeFile::Written::Yes);
    struct stat status = {};
    QVERIFY(::stat(NativePath::toNative(saved).constData(), &status) == 0);
    QVERIFY(status.st_uid != 0);
    QCOMPARE(status.st_gid, kGroup);
}

void NativeFileOwnerTest::anotherGroupMayNoMoreThanEverybody_data()
{
    QTest::addColumn<uint>("mode");
    QTest::addColumn<uint>("expected");
    QTest::newRow("nobody else") << 0640u << 0600u;
    QTest::newRow("everybody reads") << 0664u << 0644u;
    QTest::newRow("the group less than everybody") << 0604u << 0604u;
}

void NativeFileOwnerTest::anotherGroupMayNoMoreThanEverybody()
{
    QFETCH(uint, mode);
    QFETCH(uint, expected);
    const ScratchFolder folder;
    const QString former = folder.write(QStringLiteral("a"), "text");
    const QString saved = folder.write(QStringLiteral("b"), "more");
    QCOMPARE(NativeFile::attributesFor(saved, mode, former), mode);
    if (::chown(NativePath::toNative(former).constData(), uid_t(-1), 4711) != 0)
        QSKIP("this user may not give a file to a group");
    QCOMPARE(NativeFile::attributesFor(saved, mode, former), expected);
    QCOMPARE(NativeFile::attributesFor(saved, NativeFile::kNoAttributes, former),
             NativeFile::kNoAttributes);
}

QTEST_GUILESS_MAIN(NativeFileOwnerTest)
#include "NativeFileOwnerTest.moc"
