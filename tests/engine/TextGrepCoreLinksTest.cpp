#include "engine/TextGrepCore.h"

#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/engine_support/SlowLister.h"
#include "tests/engine_support/UnidentifiedLister.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SymbolicLink.h"
#include "tests/support/TreeBuilder.h"

#include <QFile>
#include <QSettings>
#include <QTest>

namespace {

QString key()
{
    return QStringLiteral("key");
}

/// False where there are no such links, or none of this user's.
bool link(const QString &target, const QString &path)
{
    return makeLink(target, path);
}

} // namespace

/// A search among symbolic links, FIFOs and devices.
class TextGrepCoreLinksTest : public QObject {
    Q_OBJECT

private slots:
    void aLinkToAFileIsAFile();
    void aFolderBehindALinkIsSearchedOnce();
    void aRealFolderWinsOverItsLink();
    void loopsOfLinksEnd();
    void linksToFoldersWithoutAnIdentityAreNotFollowed();
    void theSameTopFolderTwiceIsSearchedOnce();
    void theSameTopFolderBehindALinkIsSearchedOnce();
    void specialFilesAreNeverOpened();
    void aFifoInAListFileHangsNothing();
    void anEntryOfAListFileWithANulNamesNothing();
};

void TextGrepCoreLinksTest::aLinkToAFileIsAFile()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    if (!link(tree.filePath(QStringLiteral("a.txt")), tree.filePath(QStringLiteral("l.txt"))))
        QSKIP("no links here");
    QVERIFY(link(tree.filePath(QStringLiteral("none.txt")),
                 tree.filePath(QStringLiteral("dangling.txt"))));
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.pathsWithHits(),
             QStringList(
                 {tree.filePath(QStringLiteral("a.txt")), tree.filePath(QStringLiteral("l.txt"))}));
    QVERIFY(run.errors.isEmpty());
}

void TextGrepCoreLinksTest::aFolderBehindALinkIsSearchedOnce()
{
    const ScratchFolder outside;
    outside.write(QStringLiteral("o.txt"), "some key\n");
    outside.write(QStringLiteral("in/p.txt"), "some key\n");
    const ScratchFolder tree;
    if (!link(outside.path(), tree.filePath(QStringLiteral("z"))))
        QSKIP("no links here");
    QVERIFY(link(outside.path(), tree.filePath(QStringLiteral("y"))));
    tree.makeFolder(QStringLiteral("sub"));
    QVERIFY(link(outside.filePath(QStringLiteral("in")), tree.filePath(QStringLiteral("sub/x"))));
    EngineRun run;
    // The links are followed in the order of their paths.
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.pathsWithHits(),
             QStringList({tree.filePath(QStringLiteral("sub/x/p.txt")),
                          tree.filePath(QStringLiteral("y/o.txt"))}));
}

void TextGrepCoreLinksTest::aRealFolderWinsOverItsLink()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("real/deep/a.txt"), "some key\n");
    tree.write(QStringLiteral("real/deep/b.txt"), "some key\n");
    if (!link(tree.filePath(QStringLiteral("real")), tree.filePath(QStringLiteral("a_link"))))
        QSKIP("no links here");
    QVERIFY(
        link(tree.filePath(QStringLiteral("real/deep")), tree.filePath(QStringLiteral("b_link"))));
    EngineOptions options;
    options.lister = std::make_shared<SlowLister>(5);
    EngineRun run(options);
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.pathsWithHits(),
             QStringList({tree.filePath(QStringLiteral("real/deep/a.txt")),
                          tree.filePath(QStringLiteral("real/deep/b.txt"))}));
}

void TextGrepCoreLinksTest::loopsOfLinksEnd()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("s/b.txt"), "some key\n");
    if (!link(tree.path(), tree.filePath(QStringLiteral("s/up"))))
        QSKIP("no links here");
    QVERIFY(link(QStringLiteral("."), tree.filePath(QStringLiteral("self"))));
    QVERIFY(link(QStringLiteral("loop2"), tree.filePath(QStringLiteral("loop1"))));
    QVERIFY(link(QStringLiteral("loop1"), tree.filePath(QStringLiteral("loop2"))));
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.lists.size(), 2);
}

void TextGrepCoreLinksTest::linksToFoldersWithoutAnIdentityAreNotFollowed()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("s/b.txt"), "some key\n");
    if (!link(tree.path(), tree.filePath(QStringLiteral("s/up"))))
        QSKIP("no links here");
    QVERIFY(link(tree.filePath(QStringLiteral("s")), tree.filePath(QStringLiteral("t"))));
    EngineOptions options;
    options.lister = std::make_shared<UnidentifiedLister>();
    EngineRun run(options);
    // What follows a loop's links would not end; the second run finds the
    // first one's links forgotten.
    for (int round = 0; round < 2; ++round) {
        QVERIFY(run.run(searchFor(key(), {tree.path()})));
        QCOMPARE(run.pathsWithHits(),
                 QStringList({tree.filePath(QStringLiteral("a.txt")),
                              tree.filePath(QStringLiteral("s/b.txt"))}));
        QCOMPARE(run.lists.size(), 2);
    }
}

void TextGrepCoreLinksTest::theSameTopFolderTwiceIsSearchedOnce()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("t/a.txt"), "some key\n");
    tree.write(QStringLiteral("t/deep/b.txt"), "some key\n");
    const QString top = tree.filePath(QStringLiteral("t/"));
    const QStringList files{top + QStringLiteral("a.txt"), top + QStringLiteral("deep/b.txt")};
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {top, top, top + QStringLiteral("deep/")})));
    QCOMPARE(run.pathsWithHits(), files);
    QVERIFY(run.run(searchFor(key(), {top + QStringLiteral("deep/../"), top})));
    QCOMPARE(run.lists.size(), 2);
}

void TextGrepCoreLinksTest::theSameTopFolderBehindALinkIsSearchedOnce()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("t/a.txt"), "some key\n");
    tree.write(QStringLiteral("t/b.txt"), "some key\n");
    const QString top = tree.filePath(QStringLiteral("t/"));
    if (!link(top, tree.filePath(QStringLiteral("l"))))
        QSKIP("no links here");
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {top, top, tree.filePath(QStringLiteral("l/"))})));
    QCOMPARE(run.lists.size(), 2);
    QVERIFY(run.pathsWithHits().first().startsWith(top));
    QVERIFY(run.run(searchFor(key(), {tree.filePath(QStringLiteral("l/")), top})));
    QCOMPARE(run.lists.size(), 2);
    QVERIFY(run.pathsWithHits().first().startsWith(tree.filePath(QStringLiteral("l/"))));
}

void TextGrepCoreLinksTest::specialFilesAreNeverOpened()
{
    const ScratchFolder tree;
    TreeBuilder builder(QFile::encodeName(tree.path()));
    if (!builder.fifo("fifo") || !builder.link("zero", "/dev/zero"))
        QSKIP("no special files here");
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.fnameflg = true;
    EngineRun run;
    QVERIFY(run.run(condition));
    QCOMPARE(run.searched, 2);
    QVERIFY(run.filesWithoutHits.isEmpty());
}

void TextGrepCoreLinksTest::anEntryOfAListFileWithANulNamesNothing()
{
    const ScratchFolder tree;
    for (const char *name : {"a.txt", "b.txt", "c.txt", "folder/d.txt"})
        tree.write(QString::fromLatin1(name), "key\n");
    const QString list = tree.filePath(QStringLiteral("list.ini"));
    QSettings file(list, QSettings::IniFormat);
    const QChar nul(0);
    file.setValue(QStringLiteral("files"),
                  QStringList{tree.filePath(QStringLiteral("a.txt")) + nul,
                              tree.filePath(QStringLiteral("folder")) + nul + QLatin1Char('/'),
                              tree.filePath(QStringLiteral("b.txt")),
                              tree.filePath(QStringLiteral("c.txt"))});
    file.sync();
    SearchCondition condition;
    condition.pathlist = QStringList{QLatin1Char('@') + list};
    condition.mask = QStringLiteral("*.*");
    condition.keyword1 = QStringLiteral("key");
    condition.subdir = true;
    EngineRun run;
    QVERIFY(run.run(condition));
    QCOMPARE(run.pathsWithHits(),
             (QStringList{tree.filePath(QStringLiteral("b.txt")),
                          tree.filePath(QStringLiteral("c.txt"))}));
}

void TextGrepCoreLinksTest::aFifoInAListFileHangsNothing()
{
    const ScratchFolder tree;
    const QString fifo = tree.filePath(QStringLiteral("fifo.txt"));
    TreeBuilder builder(QFile::encodeName(tree.path()));
    if (!builder.fifo("fifo.txt"))
        QSKIP("no special files here");
    const QString a = tree.write(QStringLiteral("a.txt"), "some key\n");
    const QString list = tree.write(QStringLiteral("list.ini"),
                                    QStringLiteral("files=%1, %2\n").arg(fifo, a).toLatin1());
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {QStringLiteral("@") + list})));
    QCOMPARE(run.pathsWithHits(), QStringList{a});
}

QTEST_GUILESS_MAIN(TextGrepCoreLinksTest)
#include "TextGrepCoreLinksTest.moc"
