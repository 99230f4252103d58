#include "mainwindow/preview/NativeFile.h"

#include "engine/NativePath.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchFolder.h"

#include <QTest>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

/// Whose a file is after a save.
class NativeFileOwnerTest : public QObject {
    Q_OBJECT

private slots:
    void aSharedFileStaysItsGroups();
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
    QVERIFY(::chown(NativePath::toNative(path).constData(), 0, kGroup) == 0);
    QVERIFY(::setgroups(1, &kGroup) == 0);
    auto written = NativeFile::Written::Failed;
    bool inForce = false;
    {
        const OrdinaryUser user;
        inForce = user.inForce();
        written = NativeFile::writeNew(saved, "more", path);
    }
    QVERIFY(::setgroups(0, nullptr) == 0);
    if (!inForce)
        QSKIP("permissions mean nothing here");
    QVERIFY(written == NativeFile::Written::Yes);
    struct stat status = {};
    QVERIFY(::stat(NativePath::toNative(saved).constData(), &status) == 0);
    QVERIFY(status.st_uid != 0);
    QCOMPARE(status.st_gid, kGroup);
}

QTEST_GUILESS_MAIN(NativeFileOwnerTest)
#include "NativeFileOwnerTest.moc"
