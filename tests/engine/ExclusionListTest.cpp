#include "engine/ExclusionList.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

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
    void manyEntriesExcludeWhatOneOfThemDoes();
};

namespace {

bool excludesFile(const QStringList &entries, const QString &name)
{
    return ExclusionList(entries, {}).excludesFile(name);
}

bool excludesFolder(const QStringList &entries, const QString &folder)
{
    return ExclusionList({}, entries).excludesFolder(folder);
}

QString randomText(QRandomGenerator &random, int maxLength)
{
    const QString letters = QStringLiteral("aabb.A\u3042\u3142\U00020BB7");
    QString text;
    for (int length = random.bounded(maxLength + 1); length > 0; --length)
        text += letters.at(random.bounded(letters.size()));
    return text;
}

} // namespace

void ExclusionListTest::aFileIsExcludedWhenAnEntryOccursAnywhereInItsName()
{
    const QStringList entries{QStringLiteral("bak")};
    QVERIFY(excludesFile(entries, QStringLiteral("a.bak")));
    QVERIFY(excludesFile(entries, QStringLiteral("bakery.txt")));
    QVERIFY(excludesFile(entries, QStringLiteral("my bak file")));
    QVERIFY(excludesFile(entries, QStringLiteral("bak")));
    QVERIFY(!excludesFile(entries, QStringLiteral("b.ak")));
    QVERIFY(excludesFile({QStringLiteral("控え")}, QStringLiteral("表の控え.txt")));
}

void ExclusionListTest::anyEntryExcludesAFile()
{
    const QStringList entries{QStringLiteral(".o"), QStringLiteral("~"), QStringLiteral(".tmp")};
    QVERIFY(excludesFile(entries, QStringLiteral("a.o")));
    QVERIFY(excludesFile(entries, QStringLiteral("a~")));
    QVERIFY(excludesFile(entries, QStringLiteral("a.tmp")));
    QVERIFY(!excludesFile(entries, QStringLiteral("a.c")));
}

void ExclusionListTest::fileEntriesMindTheCase()
{
    const QStringList entries{QStringLiteral("BAK")};
    QVERIFY(!excludesFile(entries, QStringLiteral("a.bak")));
    QVERIFY(!excludesFile(entries, QStringLiteral("bakery.txt")));
    QVERIFY(excludesFile(entries, QStringLiteral("a.BAK")));
}

void ExclusionListTest::fileEntriesArePlainTextNotPatterns()
{
    QVERIFY(!excludesFile({QStringLiteral("*.bak")}, QStringLiteral("a.bak")));
    QVERIFY(!excludesFile({QStringLiteral("a.c")}, QStringLiteral("abc")));
    QVERIFY(excludesFile({QStringLiteral("*")}, QStringLiteral("a*b")));
}

void ExclusionListTest::anEmptyFileEntryExcludesNothing()
{
    QVERIFY(!excludesFile({QString()}, QStringLiteral("a.txt")));
    QVERIFY(!excludesFile({QLatin1String("")}, QStringLiteral("a.txt")));
    QVERIFY(excludesFile({QString(), QStringLiteral("txt")}, QStringLiteral("a.txt")));
}

void ExclusionListTest::aFolderIsExcludedWhenAnEntryIsTheWholeName()
{
    const QStringList entries{QStringLiteral(".git"), QStringLiteral("build")};
    QVERIFY(excludesFolder(entries, QStringLiteral(".git")));
    QVERIFY(excludesFolder(entries, QStringLiteral("build")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("src")));
}

void ExclusionListTest::partOfAFolderNameExcludesNothing()
{
    const QStringList entries{QStringLiteral("build")};
    QVERIFY(!excludesFolder(entries, QStringLiteral("builds")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("rebuild")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("buil")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("build/")));
}

void ExclusionListTest::folderEntriesMindTheCase()
{
    const QStringList entries{QStringLiteral("Build")};
    QVERIFY(!excludesFolder(entries, QStringLiteral("build")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("BUILD")));
    QVERIFY(excludesFolder(entries, QStringLiteral("Build")));
}

void ExclusionListTest::folderEntriesArePlainTextNotPatterns()
{
    QVERIFY(!excludesFolder({QStringLiteral("*")}, QStringLiteral("build")));
    QVERIFY(!excludesFolder({QStringLiteral("b.ild")}, QStringLiteral("build")));
}

void ExclusionListTest::aTopFolderIsComparedByItsPathAsGiven()
{
    const QStringList entries{QStringLiteral("c:/work/"), QStringLiteral("tmp")};
    QVERIFY(excludesFolder(entries, QStringLiteral("c:/work/")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("c:/work")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("C:/work/")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("c:\\work\\")));
    QVERIFY(!excludesFolder(entries, QStringLiteral("c:/tmp/")));
}

void ExclusionListTest::withoutEntriesNothingIsExcluded()
{
    QVERIFY(!excludesFile({}, QStringLiteral("a.txt")));
    QVERIFY(!excludesFile({}, QString()));
    QVERIFY(!excludesFolder({}, QStringLiteral("a")));
    QVERIFY(!excludesFolder({}, QString()));
}

/// The rule, one entry after another.
void ExclusionListTest::manyEntriesExcludeWhatOneOfThemDoes()
{
    QRandomGenerator random(20240512);
    int files = 0;
    int folders = 0;
    constexpr int kCases = 20000;
    for (int i = 0; i < kCases; ++i) {
        QStringList entries;
        for (int entry = random.bounded(40); entry > 0; --entry)
            entries += randomText(random, 6);
        const QString name = randomText(random, 8);
        const bool isFile =
            std::any_of(entries.cbegin(), entries.cend(), [&](const QString &entry) {
                return !entry.isEmpty() && name.contains(entry);
            });
        const bool isFolder = entries.contains(name);
        files += isFile ? 1 : 0;
        folders += isFolder ? 1 : 0;
        const ExclusionList list(entries, entries);
        if (list.excludesFile(name) != isFile || list.excludesFolder(name) != isFolder)
            QFAIL(qPrintable(entries.join(QLatin1Char(' ')) + QStringLiteral(": ") + name));
    }
    QVERIFY2(files > kCases / 5 && files < kCases / 5 * 4, qPrintable(QString::number(files)));
    QVERIFY2(folders > kCases / 50, qPrintable(QString::number(folders)));
}

QTEST_GUILESS_MAIN(ExclusionListTest)
#include "ExclusionListTest.moc"
