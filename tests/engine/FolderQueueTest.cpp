#include "engine/FolderQueue.h"

#include <QSet>
#include <QTest>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

class FolderQueueTest : public QObject {
    Q_OBJECT

private slots:
    void aNewQueueHasNoWork();
    void foldersComeOutInTheOrderTheyWentIn();
    void eachFolderBringsOnePermit();
    void aListingCountsAsWorkUntilItIsFinished();
    void theLastFinishedListingEndsTheWork();
    void subFoldersQueuedBeforeTheFinishKeepTheWorkGoing();
    void aPermitWithoutAFolderBeginsNoListing();
    void aQueueHeldOpenHasWork();
    void aQueueHeldOpenHandsOutNoLink();
    void aLinkWaitsAndIsNotQueued();
    void linksComeWhenNothingElseIsLeft();
    void linksAreFollowedFromTheFirstOnUntilCleared();
    void linksComeOneAtATimeInTheOrderOfTheirPaths();
    void whatIsBelowALinkComesBeforeTheNextLink();
    void aLinkFoundBelowALinkTakesItsPlaceInTheOrder();
    void aLinkNamedTwiceComesOnce();
    void clearForgetsFoldersListingsAndLinks();
    void drainingTakesThePermitsAndLeavesTheFolders();
    void manyThreadsListEveryFolderOnceAndEndOnce();
};

static QString text(const char *path)
{
    return QString::fromLatin1(path);
}

/// The next folder, an empty text when there is none.
static QString begin(FolderQueue &queue)
{
    QString folder;
    int length = 0;
    return queue.beginListing(&folder, &length) ? folder : QString();
}

void FolderQueueTest::aNewQueueHasNoWork()
{
    FolderQueue queue;
    QVERIFY(!queue.hasWork());
    QCOMPARE(queue.length(), 0);
    QCOMPARE(queue.permits(), 0);
    QCOMPARE(begin(queue), QString());
}

void FolderQueueTest::foldersComeOutInTheOrderTheyWentIn()
{
    FolderQueue queue;
    queue.append(text("/b/"));
    queue.append(QStringList{text("/c/"), text("/a/")});
    queue.append(QStringList());
    QCOMPARE(queue.length(), 3);
    QString folder;
    int length = 0;
    QVERIFY(queue.beginListing(&folder, &length));
    QCOMPARE(folder, text("/b/"));
    QCOMPARE(length, 3);
    QCOMPARE(begin(queue), text("/c/"));
    QCOMPARE(begin(queue), text("/a/"));
    QCOMPARE(queue.length(), 0);
}

void FolderQueueTest::eachFolderBringsOnePermit()
{
    FolderQueue queue;
    queue.append(text("/a/"));
    queue.append(QStringList{text("/b/"), text("/c/")});
    queue.append(QStringList());
    QCOMPARE(queue.permits(), 3);
    queue.acquirePermit();
    QCOMPARE(queue.permits(), 2);
    queue.releasePermit();
    QCOMPARE(queue.permits(), 3);
}

void FolderQueueTest::aListingCountsAsWorkUntilItIsFinished()
{
    FolderQueue queue;
    queue.append(text("/a/"));
    QVERIFY(queue.hasWork());
    QCOMPARE(begin(queue), text("/a/"));
    QCOMPARE(queue.length(), 0);
    QVERIFY(queue.hasWork());
    QVERIFY(queue.finishListing());
    QVERIFY(!queue.hasWork());
}

void FolderQueueTest::theLastFinishedListingEndsTheWork()
{
    FolderQueue queue;
    queue.append(QStringList{text("/a/"), text("/b/")});
    begin(queue);
    begin(queue);
    QVERIFY(!queue.finishListing());
    QVERIFY(queue.hasWork());
    QVERIFY(queue.finishListing());
    QVERIFY(!queue.hasWork());
}

void FolderQueueTest::subFoldersQueuedBeforeTheFinishKeepTheWorkGoing()
{
    FolderQueue queue;
    queue.append(text("/a/"));
    begin(queue);
    queue.append(QStringList{text("/a/1/"), text("/a/2/")});
    QVERIFY(!queue.finishListing());
    begin(queue);
    QVERIFY(!queue.finishListing());
    begin(queue);
    QVERIFY(queue.finishListing());
}

void FolderQueueTest::aPermitWithoutAFolderBeginsNoListing()
{
    FolderQueue queue;
    queue.append(text("/a/"));
    begin(queue);
    QString folder;
    int length = -1;
    QVERIFY(!queue.beginListing(&folder, &length));
    QCOMPARE(length, 0);
    // The failed call counts for nothing: one finish ends the one listing.
    QVERIFY(queue.finishListing());
}

void FolderQueueTest::aQueueHeldOpenHasWork()
{
    FolderQueue queue;
    queue.holdOpen();
    QVERIFY(queue.hasWork());
    QCOMPARE(queue.length(), 0);
    QCOMPARE(queue.permits(), 0);
    queue.append(text("/a/"));
    begin(queue);
    QVERIFY(!queue.finishListing());
    QVERIFY(queue.hasWork());
    QVERIFY(queue.finishListing());
    QVERIFY(!queue.hasWork());
}

void FolderQueueTest::aQueueHeldOpenHandsOutNoLink()
{
    FolderQueue queue;
    queue.holdOpen();
    queue.append(text("/a/"));
    begin(queue);
    queue.appendLink(text("/a/link/"));
    QVERIFY(!queue.finishListing());
    QCOMPARE(queue.length(), 0);
    QVERIFY(!queue.finishListing());
    QCOMPARE(begin(queue), text("/a/link/"));
    QVERIFY(queue.finishListing());
}

void FolderQueueTest::aLinkWaitsAndIsNotQueued()
{
    FolderQueue queue;
    queue.appendLink(text("/link/"));
    QVERIFY(queue.hasWork());
    QCOMPARE(queue.length(), 0);
    QCOMPARE(queue.permits(), 0);
    QCOMPARE(begin(queue), QString());
}

void FolderQueueTest::linksComeWhenNothingElseIsLeft()
{
    FolderQueue queue;
    queue.append(QStringList{text("/a/"), text("/b/")});
    begin(queue);
    queue.appendLink(text("/a/link/"));
    QVERIFY(!queue.finishListing());
    QCOMPARE(queue.length(), 1);
    QCOMPARE(begin(queue), text("/b/"));
    QCOMPARE(queue.length(), 0);
    queue.drainPermits();
    QVERIFY(!queue.finishListing());
    QCOMPARE(queue.length(), 1);
    QCOMPARE(queue.permits(), 1);
    QCOMPARE(begin(queue), text("/a/link/"));
    QVERIFY(queue.hasWork());
    QVERIFY(queue.finishListing());
    QVERIFY(!queue.hasWork());
}

void FolderQueueTest::linksAreFollowedFromTheFirstOnUntilCleared()
{
    FolderQueue queue;
    queue.holdOpen();
    queue.appendLink(text("/a/link/"));
    QVERIFY(!queue.followsLinks());
    QVERIFY(!queue.finishListing());
    QVERIFY(queue.followsLinks());
    QCOMPARE(begin(queue), text("/a/link/"));
    QVERIFY(queue.finishListing());
    QVERIFY(queue.followsLinks());
    queue.clear();
    QVERIFY(!queue.followsLinks());
}

void FolderQueueTest::linksComeOneAtATimeInTheOrderOfTheirPaths()
{
    FolderQueue queue;
    queue.append(text("/a/"));
    begin(queue);
    const QStringList sorted{text("/A/"), text("/a/10/"), text("/a/9/"), text("/a/b/"),
                             QStringLiteral("/a/日/")};
    for (const int index : {3, 1, 4, 0, 2})
        queue.appendLink(sorted.at(index));
    QStringList order;
    while (!queue.finishListing()) {
        QCOMPARE(queue.length(), 1);
        order.append(begin(queue));
    }
    QCOMPARE(order, sorted);
    QVERIFY(!queue.hasWork());
}

void FolderQueueTest::whatIsBelowALinkComesBeforeTheNextLink()
{
    FolderQueue queue;
    queue.holdOpen();
    queue.appendLink(text("/1/"));
    queue.appendLink(text("/2/"));
    QVERIFY(!queue.finishListing());
    QCOMPARE(begin(queue), text("/1/"));
    queue.append(text("/1/sub/"));
    QVERIFY(!queue.finishListing());
    QCOMPARE(queue.length(), 1);
    QCOMPARE(begin(queue), text("/1/sub/"));
    QCOMPARE(begin(queue), QString());
    QVERIFY(!queue.finishListing());
    QCOMPARE(begin(queue), text("/2/"));
    QVERIFY(queue.finishListing());
}

void FolderQueueTest::aLinkFoundBelowALinkTakesItsPlaceInTheOrder()
{
    FolderQueue queue;
    queue.holdOpen();
    queue.appendLink(text("/b/"));
    queue.appendLink(text("/d/"));
    queue.finishListing();
    QCOMPARE(begin(queue), text("/b/"));
    queue.appendLink(text("/c/"));
    queue.appendLink(text("/a/"));
    QStringList order;
    while (!queue.finishListing())
        order.append(begin(queue));
    QCOMPARE(order.join(QLatin1Char(' ')), text("/a/ /c/ /d/"));
}

void FolderQueueTest::aLinkNamedTwiceComesOnce()
{
    FolderQueue queue;
    queue.holdOpen();
    queue.appendLink(text("/a/"));
    queue.appendLink(text("/a/"));
    QVERIFY(!queue.finishListing());
    QCOMPARE(begin(queue), text("/a/"));
    QVERIFY(queue.finishListing());
}

void FolderQueueTest::clearForgetsFoldersListingsAndLinks()
{
    FolderQueue queue;
    queue.holdOpen();
    queue.append(QStringList{text("/a/"), text("/b/")});
    queue.appendLink(text("/c/"));
    begin(queue);
    queue.clear();
    QVERIFY(!queue.hasWork());
    QCOMPARE(queue.length(), 0);
    queue.append(text("/d/"));
    QCOMPARE(begin(queue), text("/d/"));
    QVERIFY(queue.finishListing());
}

void FolderQueueTest::drainingTakesThePermitsAndLeavesTheFolders()
{
    FolderQueue queue;
    queue.append(QStringList{text("/a/"), text("/b/")});
    queue.drainPermits();
    QCOMPARE(queue.permits(), 0);
    QCOMPARE(queue.length(), 2);
    QVERIFY(queue.hasWork());
}

namespace {

/// A walk over a made-up tree: every folder of fewer than four steps has three
/// sub-folders and a link. Below a link there are two folders and a further
/// link.
class ThreadedWalk {
public:
    void run(int threads)
    {
        m_queue.holdOpen();
        m_queue.append(text("/"));
        std::vector<std::thread> workers;
        for (int i = 0; i < threads; ++i)
            workers.emplace_back([this] { work(); });
        if (m_queue.finishListing())
            ++ends;
        for (std::thread &worker : workers)
            worker.join();
    }

    std::atomic<int> ends{0};
    std::atomic<int> linksTogether{0}; ///< links begun while a folder was being listed
    QStringList links; ///< in the order in which they came
    QStringList listed;

private:
    void work()
    {
        for (;;) {
            m_queue.acquirePermit();
            QString folder;
            int length = 0;
            if (!m_queue.beginListing(&folder, &length))
                break;
            list(folder);
            if (m_queue.finishListing()) {
                ++ends;
                break;
            }
        }
        m_queue.releasePermit(); // wakes the next worker, which ends likewise
    }

    void list(const QString &folder)
    {
        const bool isLink = folder.endsWith(QLatin1String("link/"));
        if (m_listing.fetch_add(1) != 0 && isLink)
            ++linksTogether;
        {
            const std::lock_guard lock(m_mutex);
            listed.append(folder);
            if (isLink)
                links.append(folder);
        }
        const int depth = folder.count(QLatin1Char('/'));
        if (depth < 5) {
            const bool belowLink = folder.contains(QLatin1String("link/"));
            for (int i = 0; i < (belowLink ? 2 : 3); ++i)
                m_queue.append(QString(folder + QString::number(i) + QLatin1Char('/')));
            if (!belowLink || isLink)
                m_queue.appendLink(folder + QLatin1String("link/"));
        }
        --m_listing;
    }

    FolderQueue m_queue;
    std::mutex m_mutex;
    std::atomic<int> m_listing{0};
};

} // namespace

void FolderQueueTest::manyThreadsListEveryFolderOnceAndEndOnce()
{
    ThreadedWalk alone;
    alone.run(1);
    QVERIFY(alone.links.size() > 20);
    for (int round = 0; round < 20; ++round) {
        ThreadedWalk walk;
        walk.run(4);
        QCOMPARE(walk.ends.load(), 1);
        QCOMPARE(walk.linksTogether.load(), 0);
        QCOMPARE(walk.links, alone.links);
        QCOMPARE(walk.listed.size(), alone.listed.size());
        QCOMPARE(QSet<QString>(walk.listed.begin(), walk.listed.end()),
                 QSet<QString>(alone.listed.begin(), alone.listed.end()));
    }
}

QTEST_GUILESS_MAIN(FolderQueueTest)
#include "FolderQueueTest.moc"
