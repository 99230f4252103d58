#include "engine/TextGrepCore.h"

#include "engine/CodeSet.h"
#include "engine/HitString.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/engine_support/SlowLister.h"
#include "tests/engine_support/UnidentifiedLister.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/StreamedText.h"

#include <QMetaMethod>
#include <QTest>

#include <algorithm>

namespace {

QString key()
{
    return QStringLiteral("key");
}

QStringList sorted(QStringList texts)
{
    std::sort(texts.begin(), texts.end());
    return texts;
}

} // namespace

class TextGrepCoreTest : public QObject {
    Q_OBJECT

private slots:
    // The interface
    void signalsAndSlotsStandInTheirOrder();
    void theThreadLimitIsTheIdealCountPlusOneOrFour();

    // Search
    void everyHitIsFoundFileByFile();
    void aFileWithoutHitsIsNamedOnlyWhenWanted();
    void eachFileCountsOnceAsSearched();
    void aRefusedFileIsAnErrorAndNotSearched();
    void aSizeLimitBelowZeroRefusesEvenAnEmptyFile();
    void theSizeLimitPasses32Bits();
    void aBinaryFileGivesTheSizeError();
    void aRefusedFileIsNotNamedAsOneWithoutHits();
    void aFileWithCarriageReturnsAloneIsOneLine();
    void aMarkInFourBytesIsHeeded();
    void aFileThatCannotBeOpenedIsSkippedSilently();
    void otherRefusalsHaveTheirOwnMessage();

    // What is walked
    void theMaskChoosesAmongTheFiles();
    void subFoldersAreLeftOutWithoutSubdir();
    void anExcludedSubFolderGivesAWarningAtEachOccurrence();
    void anExcludedSubFolderGivesItsWarningWithoutSubdirToo();
    void aTopFolderIsExcludedOnlyByItsWholePath();
    void anExcludedFileGivesAWarningWithItsBareName();
    void emptyTopEntriesAreSkipped();
    void aSingleFileIsSearchedWhateverMaskAndExclusionsSay();
    void everyEntryAndEveryQueuedFileIsReported();

    // List files
    void aListFileNamesWhatIsSearched();
    void foldersOfAListFileNeedSubdir();
    void aFolderOfAListFileIsExcludedByItsWholePath();
    void theListFileIsAnnouncedWithItsLength();
    void aMissingListFileEndsAtOnce();

    // The walk's end
    void oneQueuedFileAloneEndsTheSearchUnloaded();
    void aThresholdOfOneLoadsASingleFile();
    void anEmptyFolderEndsTheSearch();
    void aSlowListingNeverEndsTheSearchEarly();
    void aSlowListingNeverEndsALineCountEarly();

    // Overlapping top folders
    void aTopFolderInsideAnotherIsSearchedUnderItsOwnPath();
    void foldersWithoutAnIdentityAreSearched();

    // Line count
    void lineCountsArriveInWalkOrder();
    void aTextThatEndsWithALineFeedCountsOneMoreLine();
    void aSingleFileIsCounted();

    // Abort and repeat
    void abortEndsTheLoadPhaseWithTrue();
    void abortEndsAPatternsFileBetweenItsLines();
    void abortEndsTheWalkWithTrue_data();
    void abortEndsTheWalkWithTrue();
    void abortEndsALineCountWithTrue();
    void aScanAfterAbortBlockingStartsFromEmptyQueues();
    void aNewScanStopsTheRunningOne();
    void anEngineIsDeletedInTheMiddleOfASearch();
    void theSameHitsComeFromEveryRun();
};

void TextGrepCoreTest::signalsAndSlotsStandInTheirOrder()
{
    const QMetaObject &meta = TextGrepCore::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names.append(QString::fromLatin1(meta.method(i).name()));
    const QStringList expected{QStringLiteral("progressReport"),
                               QStringLiteral("progressFileReport"),
                               QStringLiteral("foundAtFile"),
                               QStringLiteral("foundAtList"),
                               QStringLiteral("finished"),
                               QStringLiteral("linecntAt"),
                               QStringLiteral("lcntFinished"),
                               QStringLiteral("progressFileSemaphoreCount"),
                               QStringLiteral("progressDirSemaphoreCount"),
                               QStringLiteral("progressFileCount"),
                               QStringLiteral("progressFileAllCount"),
                               QStringLiteral("progressSrchCount"),
                               QStringLiteral("ThreadCount"),
                               QStringLiteral("ErrorMsg"),
                               QStringLiteral("WarningMsg"),
                               QStringLiteral("encodingAt"),
                               QStringLiteral("scan"),
                               QStringLiteral("abort"),
                               QStringLiteral("abortBlocking"),
                               QStringLiteral("doLoadFile"),
                               QStringLiteral("doWalkDirs"),
                               QStringLiteral("doWalkSubDirs")};
    QCOMPARE(names, expected);
}

void TextGrepCoreTest::theThreadLimitIsTheIdealCountPlusOneOrFour()
{
    QCOMPARE(TextGrepCore::threadLimit(8), 9);
    QCOMPARE(TextGrepCore::threadLimit(2), 3);
    QCOMPARE(TextGrepCore::threadLimit(1), 4);
    const TextGrepCore engine;
    QCOMPARE(engine.maxThreadCount(), TextGrepCore::threadLimit(QThread::idealThreadCount()));
}

void TextGrepCoreTest::everyHitIsFoundFileByFile()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "one\nthe key\n\tkey\n");
    tree.write(QStringLiteral("sub/b.txt"), "key\r\nnothing\r\nkey\r\n");
    tree.write(QStringLiteral("sub/deep/c.txt"), "nothing\n");
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    QCOMPARE(run.lcntFinishedFlags.size(), 0);
    const QMap<QString, QStringList> expected{
        {tree.filePath(QStringLiteral("a.txt")),
         {QStringLiteral("      2:    5:the key"), QStringLiteral("      3:    5:\tkey")}},
        {tree.filePath(QStringLiteral("sub/b.txt")),
         {QStringLiteral("      1:    1:key"), QStringLiteral("      3:    1:key")}}};
    QCOMPARE(run.hitsByPath(), expected);
    QCOMPARE(run.lists.size(), 2);
    QVERIFY(run.filesWithoutHits.isEmpty());
    QVERIFY(run.errors.isEmpty());
    QVERIFY(run.warnings.isEmpty());
}

void TextGrepCoreTest::aFileWithoutHitsIsNamedOnlyWhenWanted()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("hit.txt"), "a key here\n");
    const QString without = tree.write(QStringLiteral("without.txt"), "nothing here\n");
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.fnameflg = true;
    EngineRun run;
    QVERIFY(run.run(condition));
    QCOMPARE(run.filesWithoutHits, QStringList{without});
    QCOMPARE(run.pathsWithHits(), QStringList{tree.filePath(QStringLiteral("hit.txt"))});
}

void TextGrepCoreTest::eachFileCountsOnceAsSearched()
{
    const ScratchFolder tree;
    for (int i = 0; i < 50; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), i % 2 ? "some key\n" : "nothing here\n");
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.searched, 50);
    QCOMPARE(run.topEntries, 1);
    QCOMPARE(run.lists.size(), 25);
}

void TextGrepCoreTest::aRefusedFileIsAnErrorAndNotSearched()
{
    const ScratchFolder tree;
    const QString large =
        tree.write(QStringLiteral("large.txt"), "key\n" + QByteArray(1048576, 'x'));
    tree.write(QStringLiteral("limit.txt"), "key\n" + QByteArray(1048572, 'x'));
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.errors, QStringList{QStringLiteral("Error File size over 1 MByte:") + large});
    QCOMPARE(run.searched, 1);
    QCOMPARE(run.pathsWithHits(), QStringList{tree.filePath(QStringLiteral("limit.txt"))});
}

void TextGrepCoreTest::aSizeLimitBelowZeroRefusesEvenAnEmptyFile()
{
    const ScratchFolder tree;
    const QString empty = tree.write(QStringLiteral("a.txt"), "");
    const QString small = tree.write(QStringLiteral("b.txt"), "key\n");
    EngineOptions options;
    options.limits.bigsize = -1;
    EngineRun none(options);
    QVERIFY(none.run(searchFor(key(), {tree.path()})));
    QCOMPARE(sorted(none.errors),
             QStringList({QStringLiteral("Error File size over -1 MByte:") + empty,
                          QStringLiteral("Error File size over -1 MByte:") + small}));
    QCOMPARE(none.searched, 0);
    options.limits.bigsize = 0;
    EngineRun onlyEmpty(options);
    QVERIFY(onlyEmpty.run(searchFor(key(), {tree.path()})));
    QCOMPARE(onlyEmpty.errors,
             QStringList{QStringLiteral("Error File size over 0 MByte:") + small});
    QCOMPARE(onlyEmpty.searched, 1);
}

void TextGrepCoreTest::theSizeLimitPasses32Bits()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    EngineOptions options;
    options.limits.bigsize = 4096;
    EngineRun run(options);
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.lists.size(), 2);
    QVERIFY(run.errors.isEmpty());
}

void TextGrepCoreTest::aBinaryFileGivesTheSizeError()
{
    const ScratchFolder tree;
    const QString binary = tree.write(QStringLiteral("a.bin"), QByteArray("key\0\0\0\0key\n", 12));
    tree.write(QStringLiteral("b.txt"), "nothing here\n");
    EngineOptions options;
    options.limits.bigsize = 12;
    EngineRun run(options);
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.errors, QStringList{QStringLiteral("Error File size over 12 MByte:") + binary});
    QVERIFY(run.lists.isEmpty());
}

void TextGrepCoreTest::aRefusedFileIsNotNamedAsOneWithoutHits()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("binary.txt"), QByteArray(8, '\0'));
    tree.write(QStringLiteral("large.txt"), QByteArray(1048577, 'x'));
    const QString without = tree.write(QStringLiteral("without.txt"), "nothing here\n");
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.fnameflg = true;
    EngineRun run;
    QVERIFY(run.run(condition));
    QCOMPARE(run.errors.size(), 2);
    QCOMPARE(run.filesWithoutHits, QStringList{without});
}

/// The toolkit's text mode takes every carriage return away, and a line ends at
/// a line feed only.
void TextGrepCoreTest::aFileWithCarriageReturnsAloneIsOneLine()
{
    const ScratchFolder tree;
    const QByteArray content("one\rkey\rthree\r");
    const QString a = tree.write(QStringLiteral("a.txt"), content);
    tree.write(QStringLiteral("b.txt"), "nothing here\r");
    QCOMPARE(StreamedText(content).read(CodeSet::codec(1)), QStringLiteral("onekeythree"));
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    const QMap<QString, QStringList> expected{{a, {QStringLiteral("      1:    4:onekeythree")}}};
    QCOMPARE(run.hitsByPath(), expected);
}

/// So short a file counts as Shift-JIS, but a mark of UTF-16 decides all the
/// same when the text is read; one of UTF-8 is no text in Shift-JIS.
void TextGrepCoreTest::aMarkInFourBytesIsHeeded()
{
    const ScratchFolder tree;
    const QString little = tree.write(QStringLiteral("le.txt"), QByteArray("\xFF\xFEk\0", 4));
    const QString big = tree.write(QStringLiteral("be.txt"), QByteArray("\xFE\xFF\0k", 4));
    const QByteArray utf8("\xEF\xBB\xBFk");
    const QString eight = tree.write(QStringLiteral("8.txt"), utf8);
    const QString asShiftJis = StreamedText(utf8).read(CodeSet::codec(1));
    EngineRun run;
    QVERIFY(run.run(searchFor(QStringLiteral("k"), {tree.path()})));
    QMap<QString, QStringList> expected{{little, {QStringLiteral("      1:    1:k")}},
                                        {big, {QStringLiteral("      1:    1:k")}}};
    if (asShiftJis.contains(QLatin1Char('k')))
        expected.insert(eight,
                        {HitString::format(1, 1 + 2 * asShiftJis.indexOf(QLatin1Char('k')),
                                           QStringView(asShiftJis))});
    QCOMPARE(run.hitsByPath(), expected);
}

void TextGrepCoreTest::aFileThatCannotBeOpenedIsSkippedSilently()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    const QString missing = tree.filePath(QStringLiteral("missing.txt"));
    SearchCondition condition = searchFor(key(), {tree.filePath(QStringLiteral("a.txt")), missing});
    condition.fnameflg = true;
    EngineRun run;
    QVERIFY(run.run(condition));
    QCOMPARE(run.searched, 1);
    QVERIFY(run.errors.isEmpty());
    QVERIFY(run.filesWithoutHits.isEmpty());
}

void TextGrepCoreTest::otherRefusalsHaveTheirOwnMessage()
{
    const QString path = QStringLiteral("/a/b.txt");
    QCOMPARE(TextGrepCore::refusalMessage(-2, 1, path),
             QStringLiteral("Error File size over 1 MByte:/a/b.txt"));
    QCOMPARE(TextGrepCore::refusalMessage(-2, 1234, path),
             QStringLiteral("Error File size over 1234 MByte:/a/b.txt"));
    QCOMPARE(TextGrepCore::refusalMessage(-1, 1, path),
             QStringLiteral("Error GetFileCode:/a/b.txt"));
}

void TextGrepCoreTest::theMaskChoosesAmongTheFiles()
{
    const ScratchFolder tree;
    for (const char *name : {"a.cpp", "b.H", "README", "d.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.mask = QStringLiteral("*.cpp *.h");
    EngineRun run;
    QVERIFY(run.run(condition));
    QCOMPARE(run.pathsWithHits(),
             QStringList(
                 {tree.filePath(QStringLiteral("a.cpp")), tree.filePath(QStringLiteral("b.H"))}));
    condition.mask = QStringLiteral("^*.cpp *.h");
    QVERIFY(run.run(condition));
    QCOMPARE(run.pathsWithHits(),
             QStringList({tree.filePath(QStringLiteral("README")),
                          tree.filePath(QStringLiteral("d.txt"))}));
    condition.mask = QStringLiteral("*.*");
    QVERIFY(run.run(condition));
    QCOMPARE(run.lists.size(), 4);
}

void TextGrepCoreTest::subFoldersAreLeftOutWithoutSubdir()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    tree.write(QStringLiteral("sub/c.txt"), "some key\n");
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.subdir = false;
    EngineRun run;
    QVERIFY(run.run(condition));
    QCOMPARE(run.pathsWithHits(),
             QStringList(
                 {tree.filePath(QStringLiteral("a.txt")), tree.filePath(QStringLiteral("b.txt"))}));
}

void TextGrepCoreTest::anExcludedSubFolderGivesAWarningAtEachOccurrence()
{
    const ScratchFolder tree;
    for (const char *name : {"a.txt", "b.txt", "obj/c.txt", "x/obj/d.txt", "y/Obj/e.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
    EngineOptions options;
    options.limits.excludedFolders = QStringList{QStringLiteral("obj")};
    EngineRun run(options);
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(
        sorted(run.warnings),
        sorted({QStringLiteral("Warning exclution folder:") + tree.path() + QStringLiteral("obj/"),
                QStringLiteral("Warning exclution folder:") + tree.path()
                    + QStringLiteral("x/obj/")}));
    QCOMPARE(run.lists.size(), 3);
}

void TextGrepCoreTest::anExcludedSubFolderGivesItsWarningWithoutSubdirToo()
{
    const ScratchFolder tree;
    for (const char *name : {"a.txt", "b.txt", "obj/c.txt", "x/obj/d.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
    EngineOptions options;
    options.limits.excludedFolders = QStringList{QStringLiteral("obj")};
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.subdir = false;
    EngineRun run(options);
    QVERIFY(run.run(condition));
    QCOMPARE(run.warnings,
             QStringList{QStringLiteral("Warning exclution folder:") + tree.path()
                         + QStringLiteral("obj/")});
    QCOMPARE(run.lists.size(), 2);
}

void TextGrepCoreTest::aTopFolderIsExcludedOnlyByItsWholePath()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("obj/a.txt"), "some key\n");
    tree.write(QStringLiteral("obj/b.txt"), "some key\n");
    const QString top = tree.filePath(QStringLiteral("obj/"));
    EngineOptions options;
    options.limits.excludedFolders = QStringList{QStringLiteral("obj")};
    EngineRun byName(options);
    QVERIFY(byName.run(searchFor(key(), {top})));
    QCOMPARE(byName.lists.size(), 2);
    options.limits.excludedFolders = QStringList{top};
    EngineRun byPath(options);
    QVERIFY(byPath.run(searchFor(key(), {top})));
    QCOMPARE(byPath.warnings, QStringList{QStringLiteral("Warning exclution folder:") + top});
    QVERIFY(byPath.lists.isEmpty());
}

void TextGrepCoreTest::anExcludedFileGivesAWarningWithItsBareName()
{
    const ScratchFolder tree;
    for (const char *name : {"a.bak", "bakery.txt", "c.BAK", "d.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
    EngineOptions options;
    options.limits.excludedFiles = QStringList{QStringLiteral("bak"), QString()};
    EngineRun run(options);
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(sorted(run.warnings),
             QStringList({QStringLiteral("Warning exclution file:a.bak"),
                          QStringLiteral("Warning exclution file:bakery.txt")}));
    QCOMPARE(run.lists.size(), 2);
}

void TextGrepCoreTest::emptyTopEntriesAreSkipped()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {QString(), tree.path(), QString()})));
    QCOMPARE(run.topEntries, 1);
    QCOMPARE(run.lists.size(), 2);
}

void TextGrepCoreTest::aSingleFileIsSearchedWhateverMaskAndExclusionsSay()
{
    const ScratchFolder tree;
    const QString file = tree.write(QStringLiteral("a.bak"), "some key\n");
    SearchCondition condition = searchFor(key(), {file});
    condition.mask = QStringLiteral("*.txt");
    EngineOptions options;
    options.loadThreshold = 1;
    options.limits.excludedFiles = QStringList{QStringLiteral("bak")};
    EngineRun run(options);
    QVERIFY(run.run(condition));
    QCOMPARE(run.pathsWithHits(), QStringList{file});
    QVERIFY(run.warnings.isEmpty());
}

void TextGrepCoreTest::everyEntryAndEveryQueuedFileIsReported()
{
    const ScratchFolder tree;
    const QString a = tree.write(QStringLiteral("a.txt"), "nothing here\n");
    const QString b = tree.write(QStringLiteral("b.txt"), "nothing here\n");
    const QString c = tree.write(QStringLiteral("c.log"), "nothing here\n");
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.mask = QStringLiteral("*.txt");
    EngineRun run;
    QVERIFY(run.run(condition));
    // Listed, queued, searched; the one that the mask leaves out only listed.
    QCOMPARE(run.reportedNames.count(a), 3);
    QCOMPARE(run.reportedNames.count(b), 3);
    QCOMPARE(run.reportedNames.count(c), 1);
}

void TextGrepCoreTest::aListFileNamesWhatIsSearched()
{
    const ScratchFolder tree;
    const QString a = tree.write(QStringLiteral("a.txt"), "some key\n");
    const QString b = tree.write(QStringLiteral("b.log"), "some key\n");
    const QString c = tree.write(QStringLiteral("c.bak.txt"), "some key\n");
    tree.write(QStringLiteral("other.txt"), "some key\n");
    const QString folder = tree.makeFolder(QStringLiteral("folder"));
    const QString d = tree.write(QStringLiteral("folder/d.txt"), "some key\n");
    const QString list =
        tree.write(QStringLiteral("list.ini"),
                   QStringLiteral("files=%1, %2, %3, %4\n").arg(a, b, c, folder).toLatin1());
    SearchCondition condition =
        searchFor(key(), {QStringLiteral("@") + list, tree.filePath(QStringLiteral("never/"))});
    condition.mask = QStringLiteral("*.txt");
    EngineOptions options;
    options.limits.excludedFiles = QStringList{QStringLiteral("bak")};
    EngineRun run(options);
    QVERIFY(run.run(condition));
    QCOMPARE(run.pathsWithHits(), QStringList({a, d}));
    QCOMPARE(run.warnings, QStringList{QStringLiteral("Warning exclution file:c.bak.txt")});
    QCOMPARE(run.topEntries, 4);
}

void TextGrepCoreTest::foldersOfAListFileNeedSubdir()
{
    const ScratchFolder tree;
    const QString a = tree.write(QStringLiteral("a.txt"), "some key\n");
    const QString b = tree.write(QStringLiteral("b.txt"), "some key\n");
    tree.write(QStringLiteral("folder/d.txt"), "some key\n");
    const QString list = tree.write(QStringLiteral("list.ini"),
                                    QStringLiteral("files=%1, %2, %3\n")
                                        .arg(a, tree.filePath(QStringLiteral("folder/")), b)
                                        .toLatin1());
    SearchCondition condition = searchFor(key(), {QStringLiteral("@") + list});
    condition.subdir = false;
    EngineRun run;
    QVERIFY(run.run(condition));
    QCOMPARE(run.pathsWithHits(), QStringList({a, b}));
}

void TextGrepCoreTest::aFolderOfAListFileIsExcludedByItsWholePath()
{
    const ScratchFolder tree;
    for (const char *name : {"obj/a.txt", "obj/b.txt", "other/c.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
    const QString excluded = tree.filePath(QStringLiteral("obj/"));
    const QString other = tree.filePath(QStringLiteral("other/"));
    const QString list =
        tree.write(QStringLiteral("list.ini"),
                   QStringLiteral("files=%1, %2\n").arg(excluded, other).toLatin1());
    SearchCondition condition = searchFor(key(), {QStringLiteral("@") + list});
    EngineOptions options;
    options.loadThreshold = 1;
    options.limits.excludedFolders = QStringList{excluded, QStringLiteral("other")};
    EngineRun run(options);
    QVERIFY(run.run(condition));
    QCOMPARE(run.warnings, QStringList{QStringLiteral("Warning exclution folder:") + excluded});
    QCOMPARE(run.pathsWithHits(), QStringList{other + QStringLiteral("c.txt")});
    // One that is not asked for is left out without a word.
    condition.subdir = false;
    QVERIFY(run.run(condition));
    QVERIFY(run.warnings.isEmpty());
    QVERIFY(run.lists.isEmpty());
}

void TextGrepCoreTest::theListFileIsAnnouncedWithItsLength()
{
    const ScratchFolder tree;
    const QString list =
        tree.write(QStringLiteral("list.ini"), "files=/none/a.txt, /none/b.txt, /none/c.txt\n");
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {QStringLiteral("@") + list})));
    QCOMPARE(run.announced, QVector<int>{3});
    QVERIFY(run.lists.isEmpty());
}

void TextGrepCoreTest::aMissingListFileEndsAtOnce()
{
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {QStringLiteral("@/none/list.ini")})));
    QCOMPARE(run.announced, QVector<int>{0});
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
}

void TextGrepCoreTest::oneQueuedFileAloneEndsTheSearchUnloaded()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    QCOMPARE(run.searched, 0);
    QVERIFY(run.lists.isEmpty());
}

void TextGrepCoreTest::aThresholdOfOneLoadsASingleFile()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    EngineOptions options;
    options.loadThreshold = 1;
    EngineRun run(options);
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.searched, 1);
    QCOMPARE(run.lists.size(), 1);
}

void TextGrepCoreTest::anEmptyFolderEndsTheSearch()
{
    const ScratchFolder tree;
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    QVERIFY(run.run(searchFor(key(), {tree.filePath(QStringLiteral("missing/"))})));
    QVERIFY(run.run(searchFor(key(), {})));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
}

void TextGrepCoreTest::aSlowListingNeverEndsTheSearchEarly()
{
    const ScratchFolder tree;
    // The top folder holds enough files for the load phase to begin with them.
    for (const char *name : {"a.txt", "b.txt", "s/c.txt", "s/t/d.txt", "s/t/u/e.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
    EngineOptions options;
    options.lister = std::make_shared<SlowLister>(60);
    EngineRun run(options);
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.lists.size(), 5);
}

void TextGrepCoreTest::aSlowListingNeverEndsALineCountEarly()
{
    const ScratchFolder tree;
    for (const char *name : {"a.txt", "s/c.txt", "s/t/d.txt", "s/t/u/e.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
    EngineOptions options;
    options.lister = std::make_shared<SlowLister>(60);
    EngineRun run(options);
    QVERIFY(run.run(countLinesIn({tree.path()})));
    QCOMPARE(run.lineCounts.size(), 4);
    QCOMPARE(run.lcntFinishedFlags, QVector<bool>{false});
}

void TextGrepCoreTest::aTopFolderInsideAnotherIsSearchedUnderItsOwnPath()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("t/a.txt"), "some key\n");
    tree.write(QStringLiteral("t/in/b.txt"), "some key\n");
    const QString inner = tree.filePath(QStringLiteral("t/../t/in/"));
    EngineRun run;
    QVERIFY(run.run(searchFor(key(), {tree.filePath(QStringLiteral("t/")), inner})));
    QCOMPARE(run.pathsWithHits(),
             sorted({tree.filePath(QStringLiteral("t/a.txt")), inner + QStringLiteral("b.txt")}));
}

void TextGrepCoreTest::foldersWithoutAnIdentityAreSearched()
{
    const ScratchFolder tree;
    for (const char *name : {"a.txt", "s/b.txt", "s/t/c.txt", "u/d.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
    EngineOptions options;
    options.lister = std::make_shared<UnidentifiedLister>();
    EngineRun run(options);
    for (int round = 0; round < 2; ++round) {
        QVERIFY(run.run(searchFor(key(), {tree.path()})));
        QCOMPARE(run.lists.size(), 4);
        QCOMPARE(run.pathsWithHits().size(), 4);
    }
}

void TextGrepCoreTest::lineCountsArriveInWalkOrder()
{
    const ScratchFolder tree;
    for (const char *name : {"b.txt", "a.txt", "c.log"})
        tree.write(QString::fromLatin1(name), "1\n2\n3\n");
    SearchCondition condition = countLinesIn({tree.path()});
    condition.mask = QStringLiteral("*.txt");
    EngineRun run;
    QVERIFY(run.run(condition));
    const QVector<QPair<QString, int>> expected{{tree.filePath(QStringLiteral("a.txt")), 4},
                                                {tree.filePath(QStringLiteral("b.txt")), 4}};
    QCOMPARE(run.lineCounts, expected);
    QCOMPARE(run.lcntFinishedFlags, QVector<bool>{false});
    QVERIFY(run.finishedFlags.isEmpty());
    QCOMPARE(run.searched, 0);
}

void TextGrepCoreTest::aTextThatEndsWithALineFeedCountsOneMoreLine()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("1empty"), "");
    tree.write(QStringLiteral("2open"), "one\ntwo");
    tree.write(QStringLiteral("3closed"), "one\ntwo\n");
    tree.write(QStringLiteral("4crlf"), "one\r\ntwo\r\n");
    tree.write(QStringLiteral("5cr"), "one\rtwo\rthree\r");
    EngineRun run;
    QVERIFY(run.run(countLinesIn({tree.path()})));
    QVector<int> counts;
    for (const auto &count : qAsConst(run.lineCounts))
        counts.append(count.second);
    QCOMPARE(counts, QVector<int>({1, 2, 3, 3, 1}));
}

void TextGrepCoreTest::aSingleFileIsCounted()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "one\ntwo\n");
    EngineRun run;
    QVERIFY(run.run(countLinesIn({tree.path()})));
    QCOMPARE(run.lineCounts.size(), 1);
}

void TextGrepCoreTest::abortEndsTheLoadPhaseWithTrue()
{
    const ScratchFolder tree;
    for (int i = 0; i < 400; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), "some key\n" + QByteArray(20000, 'x') + "\n");
    EngineOptions options;
    options.visitEveryLine = true;
    EngineRun run(options);
    connect(run.engine(), &TextGrepCore::foundAtList, run.engine(), &TextGrepCore::abort,
            Qt::DirectConnection);
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    QCOMPARE(run.finishedFlags, QVector<bool>{true});
    QVERIFY(run.lists.size() < 400);
}

void TextGrepCoreTest::abortEndsAPatternsFileBetweenItsLines()
{
    const ScratchFolder tree;
    for (int i = 0; i < 3; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), QByteArray("some key\n").repeated(1000));
    EngineRun run;
    // The file is read as a whole by then: nothing but its lines is left.
    connect(run.engine(), &TextGrepCore::progressSrchCount, run.engine(), &TextGrepCore::abort,
            Qt::DirectConnection);
    SearchCondition condition = searchFor(QStringLiteral("k[a-f]y"), {tree.path()});
    condition.flg = SearchCondition::RegExpFlag;
    QVERIFY(run.run(condition));
    QCOMPARE(run.finishedFlags, QVector<bool>{true});
    QVERIFY(run.lists.isEmpty());
}

void TextGrepCoreTest::abortEndsTheWalkWithTrue_data()
{
    QTest::addColumn<bool>("linecount");
    QTest::newRow("search") << false;
    QTest::newRow("line count") << true;
}

void TextGrepCoreTest::abortEndsTheWalkWithTrue()
{
    QFETCH(bool, linecount);
    const ScratchFolder tree;
    for (int i = 0; i < 50; ++i)
        tree.makeFolder(QStringLiteral("%1/sub").arg(i));
    EngineOptions options;
    options.lister = std::make_shared<SlowLister>(10);
    EngineRun run(options);
    connect(run.engine(), &TextGrepCore::progressFileReport, run.engine(), &TextGrepCore::abort,
            Qt::DirectConnection);
    const QStringList paths{tree.path()};
    QVERIFY(run.run(linecount ? countLinesIn(paths) : searchFor(key(), paths)));
    QCOMPARE(linecount ? run.lcntFinishedFlags : run.finishedFlags, QVector<bool>{true});
    QVERIFY((linecount ? run.finishedFlags : run.lcntFinishedFlags).isEmpty());
    QVERIFY(run.reportedNames.size() < 100);
}

void TextGrepCoreTest::abortEndsALineCountWithTrue()
{
    const ScratchFolder tree;
    for (int i = 0; i < 50; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), "1\n2\n");
    EngineRun run;
    connect(run.engine(), &TextGrepCore::linecntAt, run.engine(), &TextGrepCore::abort,
            Qt::DirectConnection);
    QVERIFY(run.run(countLinesIn({tree.path()})));
    QCOMPARE(run.lcntFinishedFlags, QVector<bool>{true});
    QVERIFY(run.finishedFlags.isEmpty());
    QCOMPARE(run.lineCounts.size(), 1);
}

void TextGrepCoreTest::aScanAfterAbortBlockingStartsFromEmptyQueues()
{
    const ScratchFolder first;
    const ScratchFolder second;
    for (int i = 0; i < 200; ++i)
        first.write(QStringLiteral("%1.txt").arg(i), "some key\n");
    second.write(QStringLiteral("a.txt"), "some key\n");
    second.write(QStringLiteral("b.txt"), "some key\n");
    EngineRun run;
    run.start(searchFor(key(), {first.path()}));
    run.engine()->abortBlocking();
    QVERIFY(run.waitForEnd());
    QVERIFY(run.run(searchFor(key(), {second.path()})));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    QCOMPARE(run.pathsWithHits(),
             QStringList({second.filePath(QStringLiteral("a.txt")),
                          second.filePath(QStringLiteral("b.txt"))}));
}

void TextGrepCoreTest::aNewScanStopsTheRunningOne()
{
    const ScratchFolder first;
    const ScratchFolder second;
    for (int i = 0; i < 200; ++i)
        first.write(QStringLiteral("%1.txt").arg(i), "some key\n");
    second.write(QStringLiteral("a.txt"), "some key\n");
    second.write(QStringLiteral("b.txt"), "some key\n");
    EngineRun run;
    run.start(searchFor(key(), {first.path()}));
    run.start(searchFor(key(), {second.path()}));
    QVERIFY(QTest::qWaitFor([&run] { return run.finishedFlags.size() == 2; }, 60000));
    QCOMPARE(run.finishedFlags.last(), false);
    QVERIFY(run.pathsWithHits().contains(second.filePath(QStringLiteral("a.txt"))));
    QVERIFY(run.pathsWithHits().contains(second.filePath(QStringLiteral("b.txt"))));
}

void TextGrepCoreTest::anEngineIsDeletedInTheMiddleOfASearch()
{
    const ScratchFolder tree;
    for (int i = 0; i < 200; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\n");
    for (int round = 0; round < 20; ++round) {
        EngineRun run;
        run.start(searchFor(key(), {tree.path()}));
        QThread::usleep(static_cast<unsigned long>(round) * 200);
    }
}

void TextGrepCoreTest::theSameHitsComeFromEveryRun()
{
    const ScratchFolder tree;
    for (int i = 0; i < 300; ++i)
        tree.write(QStringLiteral("%1/%2.txt").arg(i % 17).arg(i), "some key\nkey\n");
    EngineRun run;
    QMap<QString, QStringList> first;
    for (int round = 0; round < 30; ++round) {
        QVERIFY(run.run(searchFor(key(), {tree.path()})));
        if (round == 0)
            first = run.hitsByPath();
        QCOMPARE(run.lists.size(), 300);
        QCOMPARE(run.hitsByPath(), first);
    }
}

QTEST_GUILESS_MAIN(TextGrepCoreTest)
#include "TextGrepCoreTest.moc"
