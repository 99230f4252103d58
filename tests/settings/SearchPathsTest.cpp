#include "settings/SearchPaths.h"

#include "tests/support/ScratchFolder.h"

#include <QtTest>

class SearchPathsTest : public QObject {
    Q_OBJECT

private slots:
    void aFolderEndsInASlash_data();
    void aFolderEndsInASlash();
    void theLinesOfTheEditorAreThePaths_data();
    void theLinesOfTheEditorAreThePaths();
    void aPathListBecomesTheLinesOfTheEditor_data();
    void aPathListBecomesTheLinesOfTheEditor();
    void whatTheEditorShowsIsWhatIsSearched();
    void theFirstPathThatIsNotThereIsNamed_data();
    void theFirstPathThatIsNotThereIsNamed();

private:
    const ScratchFolder m_folder;
};

namespace {

QStringList list(std::initializer_list<const char *> paths)
{
    QStringList list;
    for (const char *path : paths)
        list += QString::fromUtf8(path);
    return list;
}

} // namespace

void SearchPathsTest::aFolderEndsInASlash_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("without one") << QStringLiteral("c:/src") << QStringLiteral("c:/src/");
    QTest::newRow("with one") << QStringLiteral("c:/src/") << QStringLiteral("c:/src/");
    QTest::newRow("with two") << QStringLiteral("c:/src//") << QStringLiteral("c:/src//");
    QTest::newRow("the root") << QStringLiteral("/") << QStringLiteral("/");
    QTest::newRow("a backslash is no slash") << QStringLiteral("c:\\") << QStringLiteral("c:\\/");
}

void SearchPathsTest::aFolderEndsInASlash()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(SearchPaths::withSlash(path), expected);
}

void SearchPathsTest::theLinesOfTheEditorAreThePaths_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const char *text,
                        std::initializer_list<const char *> expected) {
        QTest::newRow(name) << QString::fromUtf8(text) << list(expected);
    };
    row("nothing", "", {});
    row("only empty lines", "\n\n", {});
    row("a slash is appended", "c:/src", {"c:/src/"});
    row("a slash is there", "c:/src/", {"c:/src/"});
    row("in the order of the lines", "/b\n/a\n/c", {"/b/", "/a/", "/c/"});
    row("empty lines are skipped", "\n/a\n\n/b\n", {"/a/", "/b/"});
    row("a list file is kept as written", "@d:/files.txt", {"@d:/files.txt"});
    row("a list file keeps its slash", "@d:/files.txt/", {"@d:/files.txt/"});
    row("a list file ends the list", "/a\n@l\n/b\n@m", {"/a/", "@l"});
    row("an @ inside is part of a name", "/a@b\n/c", {"/a@b/", "/c/"});
    row("nothing twice", "/a\n/b\n/a", {"/a/", "/b/"});
    row("nothing twice but for its slash", "/a\n/a/", {"/a/"});
    row("blanks are part of a name", " /a ", {" /a /"});
    row("Japanese", "/検索/日本語", {"/検索/日本語/"});
}

void SearchPathsTest::theLinesOfTheEditorAreThePaths()
{
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    QCOMPARE(SearchPaths::fromText(text), expected);
}

void SearchPathsTest::aPathListBecomesTheLinesOfTheEditor_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, std::initializer_list<const char *> paths,
                        std::initializer_list<const char *> expected) {
        QTest::newRow(name) << list(paths) << list(expected);
    };
    row("nothing", {}, {});
    row("a folder stays as it is", {"c:/src/", "c:/lib"}, {"c:/src/", "c:/lib"});
    row("no empty one", {"", "/a/", ""}, {"/a/"});
    row("a list file loses its slash", {"@d:/files.txt/"}, {"@d:/files.txt"});
    row("only the last slash", {"@d:/files.txt//"}, {"@d:/files.txt/"});
    row("a list file without a slash", {"@d:/files.txt"}, {"@d:/files.txt"});
    row("nothing after a list file", {"/a/", "@l/", "/b/"}, {"/a/", "@l"});
    row("a name with @ inside ends nothing", {"/a@/", "/b/"}, {"/a@/", "/b/"});
    row("twice stays twice", {"/a/", "/a/"}, {"/a/", "/a/"});
}

void SearchPathsTest::aPathListBecomesTheLinesOfTheEditor()
{
    QFETCH(QStringList, paths);
    QFETCH(QStringList, expected);
    QCOMPARE(SearchPaths::toLines(paths), expected);
}

void SearchPathsTest::whatTheEditorShowsIsWhatIsSearched()
{
    const QStringList paths = list({"/a/", "/b/", "@/list.txt"});
    QCOMPARE(SearchPaths::fromText(SearchPaths::toLines(paths).join(QLatin1Char('\n'))), paths);
}

void SearchPathsTest::theFirstPathThatIsNotThereIsNamed_data()
{
    m_folder.write(QStringLiteral("file.txt"), "text");
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QString>("missing");
    const QString there = m_folder.path();
    const QString gone = there + QStringLiteral("gone/");
    const QString gone2 = there + QStringLiteral("gone too/");
    const QString file = there + QStringLiteral("file.txt");
    const QString noText = gone + QChar(0xDC80) + QLatin1Char('/');
    QTest::newRow("none") << QStringList() << QString();
    QTest::newRow("there") << QStringList{there} << QString();
    QTest::newRow("gone") << QStringList{gone} << gone;
    QTest::newRow("the second") << QStringList{there, gone} << gone;
    QTest::newRow("two") << QStringList{gone2, gone} << gone2;
    QTest::newRow("a file") << QStringList{file + QLatin1Char('/')} << file + QLatin1Char('/');
    QTest::newRow("a list file") << QStringList{QLatin1Char('@') + file} << QString();
    QTest::newRow("no list file") << QStringList{QLatin1Char('@') + gone}
                                  << QLatin1Char('@') + gone;
    QTest::newRow("a name that is no text") << QStringList{noText} << QString();
}

void SearchPathsTest::theFirstPathThatIsNotThereIsNamed()
{
    QFETCH(QStringList, paths);
    QTEST(SearchPaths::firstMissing(paths), "missing");
}

QTEST_GUILESS_MAIN(SearchPathsTest)

#include "SearchPathsTest.moc"
