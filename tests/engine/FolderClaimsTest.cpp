#include "engine/FolderClaims.h"

#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

namespace {

const FolderIdentity kOne{1, 100};
const FolderIdentity kTwo{1, 101};
const FolderIdentity kOtherDevice{2, 100};

QString text(const char *path)
{
    return QString::fromLatin1(path);
}

} // namespace

class FolderClaimsTest : public QObject {
    Q_OBJECT

private slots:
    void aFolderIsListedByTheFirstPathThatClaimsIt();
    void aFolderIsListedOnceEvenByTheSamePath();
    void foldersAreToldApartByDeviceAndFile();
    void aReservedFolderWaitsForItsPath();
    void aReservationGoesToTheFirstPath();
    void reservingTwiceForOnePathKeepsTheFirst();
    void aListedFolderCannotBeReserved();
    void clearForgetsListingsAndReservations();
    void ofManyThreadsOneMayList();
    void ofManyThreadsTheOwnerMayList();
};

void FolderClaimsTest::aFolderIsListedByTheFirstPathThatClaimsIt()
{
    FolderClaims claims;
    QVERIFY(claims.claim(kOne, text("/a/")));
    QVERIFY(!claims.claim(kOne, text("/link/")));
    QVERIFY(!claims.claim(kOne, text("/b/")));
}

void FolderClaimsTest::aFolderIsListedOnceEvenByTheSamePath()
{
    FolderClaims claims;
    QVERIFY(claims.claim(kOne, text("/a/")));
    QVERIFY(!claims.claim(kOne, text("/a/")));
}

void FolderClaimsTest::foldersAreToldApartByDeviceAndFile()
{
    FolderClaims claims;
    QVERIFY(claims.claim(kOne, text("/a/")));
    QVERIFY(claims.claim(kTwo, text("/b/")));
    QVERIFY(claims.claim(kOtherDevice, text("/c/")));
    // Two paths that say the same may still lead to two folders: the first was
    // removed and made anew in between.
    QVERIFY(claims.claim(FolderIdentity{1, 102}, text("/a/")));
    QVERIFY(claims.claim(FolderIdentity{0, 0}, text("/d/")));
    QVERIFY(claims.claim(FolderIdentity{~0ULL, ~0ULL}, text("/e/")));
}

void FolderClaimsTest::aReservedFolderWaitsForItsPath()
{
    FolderClaims claims;
    QVERIFY(claims.reserve(kOne, text("/top/")));
    QVERIFY(!claims.claim(kOne, text("/other/link/")));
    QVERIFY(!claims.claim(kOne, text("/top")));
    QVERIFY(claims.claim(kOne, text("/top/")));
    QVERIFY(!claims.claim(kOne, text("/top/")));
    QVERIFY(!claims.claim(kOne, text("/other/link/")));
}

void FolderClaimsTest::aReservationGoesToTheFirstPath()
{
    FolderClaims claims;
    QVERIFY(claims.reserve(kOne, text("/first/")));
    QVERIFY(!claims.reserve(kOne, text("/second/")));
    QVERIFY(!claims.claim(kOne, text("/second/")));
    QVERIFY(claims.claim(kOne, text("/first/")));
    QVERIFY(claims.reserve(kTwo, text("/second/")));
}

void FolderClaimsTest::reservingTwiceForOnePathKeepsTheFirst()
{
    FolderClaims claims;
    QVERIFY(claims.reserve(kOne, text("/a/")));
    QVERIFY(!claims.reserve(kOne, text("/a/")));
    QVERIFY(claims.claim(kOne, text("/a/")));
    QVERIFY(!claims.claim(kOne, text("/a/")));
}

void FolderClaimsTest::aListedFolderCannotBeReserved()
{
    FolderClaims claims;
    QVERIFY(claims.claim(kOne, text("/a/")));
    QVERIFY(!claims.reserve(kOne, text("/b/")));
    QVERIFY(!claims.claim(kOne, text("/b/")));
}

void FolderClaimsTest::clearForgetsListingsAndReservations()
{
    FolderClaims claims;
    claims.claim(kOne, text("/a/"));
    claims.reserve(kTwo, text("/b/"));
    claims.clear();
    QVERIFY(claims.claim(kOne, text("/c/")));
    QVERIFY(claims.claim(kTwo, text("/c/")));
}

/// Lets four threads claim each of many folders; returns the number of claims
/// that were granted.
static int grantedToThreads(FolderClaims &claims, int folders)
{
    std::atomic<int> granted{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&claims, &granted, folders, thread] {
            const QString path = QString::number(thread);
            for (int folder = 0; folder < folders; ++folder)
                granted += claims.claim({7, static_cast<quint64>(folder)}, path) ? 1 : 0;
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    return granted.load();
}

void FolderClaimsTest::ofManyThreadsOneMayList()
{
    FolderClaims claims;
    QCOMPARE(grantedToThreads(claims, 5000), 5000);
}

void FolderClaimsTest::ofManyThreadsTheOwnerMayList()
{
    FolderClaims claims;
    for (int folder = 0; folder < 5000; ++folder)
        claims.reserve({7, static_cast<quint64>(folder)}, text("nobody"));
    QCOMPARE(grantedToThreads(claims, 5000), 0);
    for (int folder = 0; folder < 5000; ++folder)
        QVERIFY(claims.claim({7, static_cast<quint64>(folder)}, text("nobody")));
}

QTEST_GUILESS_MAIN(FolderClaimsTest)
#include "FolderClaimsTest.moc"
