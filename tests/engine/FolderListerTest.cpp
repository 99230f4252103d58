#include "engine/FolderLister.h"

#include "engine/NativePath.h"
#include "tests/support/OpenWatch.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QMap>
#include <QTest>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Kinds = QMap<QString, FolderEntry::Kind>;

bool always(const FolderIdentity &)
{
    return true;
}

bool keepGoing()
{
    return true;
}

} // namespace

class FolderListerTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void filesAndFoldersAreTold();
    void anEmptyFolderHasNoEntries();
    void hiddenEntriesAreListed();
    void dotAndDotDotAreLeftOut();
    void linksAreToldByTheirTarget();
    void linksToNothingAreOther();
    void fifosSocketsAndDevicesAreOther();
    void entriesAreNotOpened();
    void namesThatAreNoValidTextAreListed();
    void everyEntryOfALargeFolderIsListed();
    void aMissingFolderHasNoEntries_data();
    void aMissingFolderHasNoEntries();
    void aFolderWithoutPermissionHasNoEntries();
    void aFolderThatMayOnlyBeReadTellsItsEntries();
    void aFolderBehindAFileNameIsListed();
    void theClaimIsAskedOnceWithTheIdentity();
    void aRefusedClaimLeavesTheFolderUnlisted();
    void theListingEndsWithTheEntryAfterWhichItIsToldTo();
    void keepGoingIsAskedAfterEachEntry();
    void aFolderIsTheSameThroughLinks();
    void differentFoldersDiffer();
    void onlyFoldersAreIdentified();
    void nothingStaysOpen();
    void oneListerServesManyThreads();

private:
    QString path(const QByteArray &name) const
    {
        return NativePath::fromNative(m_tree->path(name));
    }
    Kinds list(const QByteArray &folder) const;

    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<TreeBuilder> m_tree;
    const NativeFolderLister m_lister;
};

void FolderListerTest::init()
{
    m_tree.reset();
    m_folder = std::make_unique<ScratchFolder>();
    m_tree = std::make_unique<TreeBuilder>(NativePath::toNative(m_folder->path()));
}

/// Fails the test when a name comes twice.
Kinds FolderListerTest::list(const QByteArray &folder) const
{
    Kinds kinds;
    for (const FolderEntry &entry : m_lister.list(path(folder), always, keepGoing)) {
        if (kinds.contains(entry.name))
            QTest::qFail("an entry came twice", __FILE__, __LINE__);
        kinds.insert(entry.name, entry.kind);
    }
    return kinds;
}

void FolderListerTest::filesAndFoldersAreTold()
{
    m_tree->file("a.txt");
    m_tree->file("empty", "");
    m_tree->file("sub/deep/b.txt");
    const Kinds expected{{QStringLiteral("a.txt"), FolderEntry::File},
                         {QStringLiteral("empty"), FolderEntry::File},
                         {QStringLiteral("sub"), FolderEntry::Folder}};
    QCOMPARE(list(""), expected);
    QCOMPARE(list("sub/"), (Kinds{{QStringLiteral("deep"), FolderEntry::Folder}}));
}

void FolderListerTest::anEmptyFolderHasNoEntries()
{
    QCOMPARE(list(""), Kinds());
}

void FolderListerTest::hiddenEntriesAreListed()
{
    m_tree->file(".profile");
    m_tree->folder(".git");
    Kinds expected{{QStringLiteral(".profile"), FolderEntry::File},
                   {QStringLiteral(".git"), FolderEntry::Folder}};
    if (m_tree->takesAnyName()) {
        m_tree->folder("...");
        expected.insert(QStringLiteral("..."), FolderEntry::Folder);
    }
    QCOMPARE(list(""), expected);
}

void FolderListerTest::dotAndDotDotAreLeftOut()
{
    m_tree->file("a.txt");
    m_tree->file("..b");
    const Kinds kinds = list("");
    QCOMPARE(kinds.size(), 2);
    QVERIFY(!kinds.contains(QStringLiteral(".")));
    QVERIFY(!kinds.contains(QStringLiteral("..")));
}

void FolderListerTest::linksAreToldByTheirTarget()
{
    m_tree->file("tree/file");
    m_tree->folder("tree/folder");
    m_tree->folder("links");
    if (!m_tree->link("links/file", "../tree/file"))
        QSKIP("no links here");
    m_tree->link("links/absolute", m_tree->path("tree/file"));
    m_tree->link("links/folder", "../tree/folder");
    m_tree->link("links/parent", "..");
    m_tree->link("links/self", ".");
    m_tree->link("links/linkToFile", "file");
    m_tree->link("links/linkToFolder", "folder");
    if (m_tree->fifo("tree/fifo"))
        m_tree->link("links/other", "../tree/fifo");
    const Kinds expected{{QStringLiteral("file"), FolderEntry::File},
                         {QStringLiteral("absolute"), FolderEntry::File},
                         {QStringLiteral("folder"), FolderEntry::FolderLink},
                         {QStringLiteral("parent"), FolderEntry::FolderLink},
                         {QStringLiteral("self"), FolderEntry::FolderLink},
                         {QStringLiteral("linkToFile"), FolderEntry::File},
                         {QStringLiteral("linkToFolder"), FolderEntry::FolderLink},
                         {QStringLiteral("other"), FolderEntry::Other}};
    QCOMPARE(list("links/"), expected);
}

void FolderListerTest::linksToNothingAreOther()
{
    if (!m_tree->link("dangling", "missing"))
        QSKIP("no links here");
    m_tree->link("one", "two");
    m_tree->link("two", "one");
    m_tree->link("itself", "itself");
    m_tree->file("file");
    m_tree->link("throughFile", "file/x");
    Kinds kinds = list("");
    QCOMPARE(kinds.take(QStringLiteral("file")), FolderEntry::File);
    QCOMPARE(kinds.size(), 5);
    for (const FolderEntry::Kind kind : qAsConst(kinds))
        QCOMPARE(kind, FolderEntry::Other);
}

void FolderListerTest::fifosSocketsAndDevicesAreOther()
{
    Kinds expected;
    if (m_tree->fifo("fifo"))
        expected.insert(QStringLiteral("fifo"), FolderEntry::Other);
    if (m_tree->socket("socket"))
        expected.insert(QStringLiteral("socket"), FolderEntry::Other);
    if (m_tree->device("device"))
        expected.insert(QStringLiteral("device"), FolderEntry::Other);
    if (expected.isEmpty())
        QSKIP("no such entries here");
    QCOMPARE(list(""), expected);
}

void FolderListerTest::entriesAreNotOpened()
{
    m_tree->file("file");
    m_tree->folder("folder");
    if (!m_tree->fifo("fifo"))
        QSKIP("no FIFOs here");
    m_tree->link("link", "fifo");
    const OpenWatch file(m_tree->path("file"));
    const OpenWatch folder(m_tree->path("folder"));
    const OpenWatch fifo(m_tree->path("fifo"));
    if (!fifo.isWatching())
        QSKIP("the platform does not tell who opens a file");
    QCOMPARE(list("").size(), 4);
    QVERIFY(!file.wasOpened());
    QVERIFY(!folder.wasOpened());
    QVERIFY(!fifo.wasOpened());
    list("folder/");
    QVERIFY(folder.wasOpened());
}

void FolderListerTest::namesThatAreNoValidTextAreListed()
{
    if (!m_tree->takesAnyName())
        QSKIP("names are text here");
    const QByteArrayList names{"two\nlines",       "caf\xE9",
                               "\x83\x65\x83\x58", "\xE6\x97\xA5\xE6\x9C\xAC",
                               "\xEF\xBB\xBFmark", " ",
                               "back\\slash",      "-",
                               "\xED\xA0\x80",     QByteArray(255, 'x')};
    for (const QByteArray &name : names)
        m_tree->file(name);
    const Kinds kinds = list("");
    QCOMPARE(kinds.size(), names.size());
    for (const QByteArray &name : names)
        QVERIFY2(kinds.contains(NativePath::fromNative(name)), name.toHex().constData());
    m_tree->file("\xFF\xFE/\x80/inner");
    QCOMPARE(list("\xFF\xFE/\x80/"), (Kinds{{QStringLiteral("inner"), FolderEntry::File}}));
}

void FolderListerTest::everyEntryOfALargeFolderIsListed()
{
    for (int i = 0; i < 3000; ++i)
        m_tree->file("large/file with a name of some length " + QByteArray::number(i), "");
    const Kinds kinds = list("large/");
    QCOMPARE(kinds.size(), 3000);
    for (int i = 0; i < 3000; ++i)
        QVERIFY(kinds.contains(QStringLiteral("file with a name of some length %1").arg(i)));
}

void FolderListerTest::aMissingFolderHasNoEntries_data()
{
    QTest::addColumn<QByteArray>("folder");
    QTest::newRow("missing") << QByteArray("missing/");
    QTest::newRow("missing parent") << QByteArray("missing/too/");
    QTest::newRow("a file") << QByteArray("file/");
    QTest::newRow("a file without the slash") << QByteArray("file");
    QTest::newRow("a FIFO") << QByteArray("fifo/");
    QTest::newRow("a FIFO without the slash") << QByteArray("fifo");
    QTest::newRow("dangling link") << QByteArray("dangling/");
    QTest::newRow("name too long") << QByteArray(300, 'x') + '/';
    QTest::newRow("path too long") << QByteArray("folder/").repeated(1000);
}

void FolderListerTest::aMissingFolderHasNoEntries()
{
    QFETCH(QByteArray, folder);
    m_tree->file("file");
    m_tree->folder("folder");
    m_tree->fifo("fifo");
    m_tree->link("dangling", "nothing");
    bool asked = false;
    const auto claim = [&asked](const FolderIdentity &) {
        return asked = true;
    };
    QCOMPARE(m_lister.list(path(folder), claim, keepGoing).size(), 0);
    QVERIFY(!asked);
    FolderIdentity identity;
    QVERIFY(!m_lister.identify(path(folder), &identity));
}

void FolderListerTest::aFolderWithoutPermissionHasNoEntries()
{
    m_tree->file("secret/a.txt");
    m_tree->file("closed/sub/b.txt");
    if (!m_tree->setMode("", 0755) || !m_tree->setMode("secret", 0)
        || !m_tree->setMode("closed", 0))
        QSKIP("permissions mean nothing here");
    {
        const OrdinaryUser user;
        if (!user.inForce())
            QSKIP("the privileges could not be laid down");
        QCOMPARE(list("secret/"), Kinds());
        QCOMPARE(list("closed/sub/"), Kinds());
        // What can be seen from outside is told.
        const Kinds expected{{QStringLiteral("secret"), FolderEntry::Folder},
                             {QStringLiteral("closed"), FolderEntry::Folder}};
        QCOMPARE(list(""), expected);
        FolderIdentity identity;
        QVERIFY(m_lister.identify(path("secret"), &identity));
        QVERIFY(!m_lister.identify(path("closed/sub"), &identity));
    }
    m_tree->setMode("secret", 0755);
    m_tree->setMode("closed", 0755);
}

void FolderListerTest::aFolderThatMayOnlyBeReadTellsItsEntries()
{
    m_tree->file("read/a.txt");
    m_tree->folder("read/sub");
    if (!m_tree->link("read/link", "a.txt") || !m_tree->setMode("", 0755)
        || !m_tree->setMode("read", 0444))
        QSKIP("no links or permissions here");
    {
        const OrdinaryUser user;
        if (!user.inForce())
            QSKIP("the privileges could not be laid down");
        // Where a link leads cannot be asked here.
        const Kinds expected{{QStringLiteral("a.txt"), FolderEntry::File},
                             {QStringLiteral("sub"), FolderEntry::Folder},
                             {QStringLiteral("link"), FolderEntry::Other}};
        QCOMPARE(list("read/"), expected);
    }
    m_tree->setMode("read", 0755);
}

void FolderListerTest::aFolderBehindAFileNameIsListed()
{
    m_tree->file("real/a.txt");
    if (!m_tree->link("link", "real"))
        QSKIP("no links here");
    const Kinds expected{{QStringLiteral("a.txt"), FolderEntry::File}};
    QCOMPARE(list("link/"), expected);
    QCOMPARE(list("real/../link/./"), expected);
}

void FolderListerTest::theClaimIsAskedOnceWithTheIdentity()
{
    m_tree->file("folder/a");
    m_tree->file("folder/b");
    QVector<FolderIdentity> asked;
    const auto claim = [&asked](const FolderIdentity &identity) {
        asked.append(identity);
        return true;
    };
    QCOMPARE(m_lister.list(path("folder/"), claim, keepGoing).size(), 2);
    QCOMPARE(asked.size(), 1);
    FolderIdentity identity;
    QVERIFY(m_lister.identify(path("folder/"), &identity));
    QVERIFY(asked.first() == identity);
}

void FolderListerTest::aRefusedClaimLeavesTheFolderUnlisted()
{
    m_tree->file("folder/a");
    bool told = false;
    const auto refuse = [](const FolderIdentity &) {
        return false;
    };
    const auto tell = [&told] {
        return told = true;
    };
    QCOMPARE(m_lister.list(path("folder/"), refuse, tell).size(), 0);
    QVERIFY(!told);
}

void FolderListerTest::theListingEndsWithTheEntryAfterWhichItIsToldTo()
{
    for (int i = 0; i < 20; ++i)
        m_tree->file("folder/" + QByteArray::number(i));
    for (const int wanted : {1, 2, 7, 20}) {
        int asked = 0;
        const auto countdown = [&asked, wanted] {
            return ++asked < wanted;
        };
        const QVector<FolderEntry> entries = m_lister.list(path("folder/"), always, countdown);
        QCOMPARE(entries.size(), wanted);
        QCOMPARE(asked, wanted);
    }
}

void FolderListerTest::keepGoingIsAskedAfterEachEntry()
{
    m_tree->file("folder/file");
    m_tree->folder("folder/sub");
    m_tree->fifo("folder/fifo");
    int asked = 0;
    const auto count = [&asked] {
        ++asked;
        return true;
    };
    const int entries = m_lister.list(path("folder/"), always, count).size();
    QVERIFY(entries >= 2);
    QCOMPARE(asked, entries);
}

void FolderListerTest::aFolderIsTheSameThroughLinks()
{
    m_tree->folder("real/sub");
    if (!m_tree->link("link", "real"))
        QSKIP("no links here");
    m_tree->link("linkToLink", "link");
    m_tree->link("real/sub/up", "../..");
    FolderIdentity real;
    QVERIFY(m_lister.identify(path("real/"), &real));
    for (const char *const name :
         {"real", "link/", "link", "linkToLink/", "real/sub/../", "real/sub/up/link/", "real/./"}) {
        FolderIdentity other;
        QVERIFY2(m_lister.identify(path(name), &other), name);
        QVERIFY2(other == real, name);
        QCOMPARE(qHash(other), qHash(real));
    }
}

void FolderListerTest::differentFoldersDiffer()
{
    m_tree->folder("a");
    m_tree->folder("b");
    FolderIdentity a;
    FolderIdentity b;
    QVERIFY(m_lister.identify(path("a"), &a));
    QVERIFY(m_lister.identify(path("b"), &b));
    QVERIFY(!(a == b));
    QCOMPARE(a.device, b.device);
    QVERIFY(!(FolderIdentity{1, 2} == FolderIdentity{2, 2}));
    QVERIFY(!(FolderIdentity{1, 2} == FolderIdentity{1, 3}));
}

void FolderListerTest::onlyFoldersAreIdentified()
{
    m_tree->file("file");
    FolderIdentity identity{1, 2};
    QVERIFY(!m_lister.identify(path("file"), &identity));
    QVERIFY(!m_lister.identify(QString(), &identity));
    if (m_tree->fifo("fifo"))
        QVERIFY(!m_lister.identify(path("fifo"), &identity));
    if (m_tree->link("link", "file"))
        QVERIFY(!m_lister.identify(path("link"), &identity));
    QVERIFY(identity == (FolderIdentity{1, 2}));
}

void FolderListerTest::nothingStaysOpen()
{
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    if (!descriptors.exists() || !OpenWatch(m_tree->path("")).isWatching())
        QSKIP("the platform does not tell what is open");
    m_tree->file("folder/a");
    m_tree->file("folder/b");
    const auto open = [&descriptors] {
        return descriptors.entryList(QDir::Files | QDir::System | QDir::Dirs).size();
    };
    const int before = open();
    for (int i = 0; i < 50; ++i) {
        m_lister.list(path("folder/"), always, keepGoing);
        m_lister.list(path("folder/"), always, [] { return false; });
        m_lister.list(
            path("folder/"), [](const FolderIdentity &) { return false; }, keepGoing);
        m_lister.list(path("missing/"), always, keepGoing);
        m_lister.list(path("folder/a/"), always, keepGoing);
    }
    QCOMPARE(open(), before);
}

void FolderListerTest::oneListerServesManyThreads()
{
    for (int i = 0; i < 200; ++i)
        m_tree->file("folder/" + QByteArray::number(i), "");
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this, &wrong] {
            for (int round = 0; round < 50; ++round)
                wrong += m_lister.list(path("folder/"), always, keepGoing).size() == 200 ? 0 : 1;
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_GUILESS_MAIN(FolderListerTest)
#include "FolderListerTest.moc"
