#include "engine/ExclusionList.h"

#include <QTest>

class ExclusionListTest : public QObject {
    Q_OBJECT

private slots:
    void aFileIsExcludedWhenAnEntryOccursAnywhereInItsName();
    void anyEntryExcludesAFile();
    void fileEntriesMindTheCase();
    void fileEntriesArePlainTextNotPatterns();
    void anEmptyFileEntryExcludesNothing();
    void aFolderIsExcludedWhenAnEntryIsTheWholeName();
    void partOfAFolderNameExcludesNothing();
    void folderEntriesMindTheCase();
    void folderEntriesArePlainTextNotPatterns();
    void aTopFolderIsComparedByItsPathAsGiven();
    void withoutEntriesNothingIsExcluded();
};

void ExclusionListTest::aFileIsExcludedWhenAnEntryOccursAnywhereInItsName()
{
    const QStringList entries{QStringLiteral("bak")};
    QVERIFY(ExclusionList::excludesFile(entries, QStringLiteral("a.bak")));
    QVERIFY(ExclusionList::excludesFile(entries, QStringLiteral("bakery.txt")));
    QVERIFY(ExclusionList::excludesFile(entries, QStringLiteral("my bak file")));
    QVERIFY(ExclusionList::excludesFile(entries, QStringLiteral("bak")));
    QVERIFY(!ExclusionList::excludesFile(entries, QStringLiteral("b.ak")));
    QVERIFY(ExclusionList::excludesFile({QStringLiteral("控え")}, QStringLiteral("表の控え.txt")));
}

void ExclusionListTest::anyEntryExcludesAFile()
{
    const QStringList entries{QStringLiteral(".o"), QStringLiteral("~"), QStringLiteral(".tmp")};
    QVERIFY(ExclusionList::excludesFile(entries, QStringLiteral("a.o")));
    QVERIFY(ExclusionList::excludesFile(entries, QStringLiteral("a~")));
    QVERIFY(ExclusionList::excludesFile(entries, QStringLiteral("a.tmp")));
    QVERIFY(!ExclusionList::excludesFile(entries, QStringLiteral("a.c")));
}

void ExclusionListTest::fileEntriesMindTheCase()
{
    const QStringList entries{QStringLiteral("BAK")};
    QVERIFY(!ExclusionList::excludesFile(entries, QStringLiteral("a.bak")));
    QVERIFY(!ExclusionList::excludesFile(entries, QStringLiteral("bakery.txt")));
    QVERIFY(ExclusionList::excludesFile(entries, QStringLiteral("a.BAK")));
}

void ExclusionListTest::fileEntriesArePlainTextNotPatterns()
{
    QVERIFY(!ExclusionList::excludesFile({QStringLiteral("*.bak")}, QStringLiteral("a.bak")));
    QVERIFY(!ExclusionList::excludesFile({QStringLiteral("a.c")}, QStringLiteral("abc")));
    QVERIFY(ExclusionList::excludesFile({QStringLiteral("*")}, QStringLiteral("a*b")));
}

void ExclusionListTest::anEmptyFileEntryExcludesNothing()
{
    QVERIFY(!ExclusionList::excludesFile({QString()}, QStringLiteral("a.txt")));
    QVERIFY(!ExclusionList::excludesFile({QLatin1String("")}, QStringLiteral("a.txt")));
    QVERIFY(
        ExclusionList::excludesFile({QString(), QStringLiteral("txt")}, QStringLiteral("a.txt")));
}

void ExclusionListTest::aFolderIsExcludedWhenAnEntryIsTheWholeName()
{
    const QStringList entries{QStringLiteral(".git"), QStringLiteral("build")};
    QVERIFY(ExclusionList::excludesFolder(entries, QStringLiteral(".git")));
    QVERIFY(ExclusionList::excludesFolder(entries, QStringLiteral("build")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("src")));
}

void ExclusionListTest::partOfAFolderNameExcludesNothing()
{
    const QStringList entries{QStringLiteral("build")};
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("builds")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("rebuild")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("buil")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("build/")));
}

void ExclusionListTest::folderEntriesMindTheCase()
{
    const QStringList entries{QStringLiteral("Build")};
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("build")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("BUILD")));
    QVERIFY(ExclusionList::excludesFolder(entries, QStringLiteral("Build")));
}

void ExclusionListTest::folderEntriesArePlainTextNotPatterns()
{
    QVERIFY(!ExclusionList::excludesFolder({QStringLiteral("*")}, QStringLiteral("build")));
    QVERIFY(!ExclusionList::excludesFolder({QStringLiteral("b.ild")}, QStringLiteral("build")));
}

void ExclusionListTest::aTopFolderIsComparedByItsPathAsGiven()
{
    const QStringList entries{QStringLiteral("c:/work/"), QStringLiteral("tmp")};
    QVERIFY(ExclusionList::excludesFolder(entries, QStringLiteral("c:/work/")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("c:/work")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("C:/work/")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("c:\\work\\")));
    QVERIFY(!ExclusionList::excludesFolder(entries, QStringLiteral("c:/tmp/")));
}

void ExclusionListTest::withoutEntriesNothingIsExcluded()
{
    QVERIFY(!ExclusionList::excludesFile({}, QStringLiteral("a.txt")));
    QVERIFY(!ExclusionList::excludesFile({}, QString()));
    QVERIFY(!ExclusionList::excludesFolder({}, QStringLiteral("a")));
    QVERIFY(!ExclusionList::excludesFolder({}, QString()));
}

QTEST_GUILESS_MAIN(ExclusionListTest)
#include "ExclusionListTest.moc"
