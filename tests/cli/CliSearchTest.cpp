#include "tests/cli/CliRun.h"
#include "tests/support/ScratchFolder.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTest>

namespace {

QStringList words(const char *line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '));
}

} // namespace

/// Searches of a small tree by the program itself.
class CliSearchTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void hitsGiveTheHeadsAndHitStringsAndStatusZero();
    void noHitsGiveNothingAndStatusOne();
    void eachOptionReachesTheSearch_data();
    void eachOptionReachesTheSearch();
    void exclusionsAreWarnedOfWordForWord();
    void aFileOverTheSizeIsAnErrorWordForWord();
    void aTabAdvancesTheColumnByItsWidth();
    void filesAndFoldersMayBeMixed();
    void aNamedFileIsSearchedWhateverMaskAndExclusionsSay();
    void aSingleFileIsSearched();
    void aListFileStandsForWhatItHolds();
    void namesWithoutHitsAloneAreNoHits();
    void jsonTellsTheEncodingOfEachFile();
    void colourIsForTerminalsUnlessAskedFor();
    void statisticsGoToTheStandardError();
    void sortingIsByTheBytesOfThePath();
    void theSettingsBesideTheProgramCount();
    void helpAndVersionGoToTheOutput();
    void debugLinesAreNotShown();
    void theJapaneseCodecsKnowWindowsCharacters();

private:
    CliRun search(const QStringList &arguments) const { return CliRun(arguments, m_tree.path()); }

    ScratchFolder m_tree;
};

void CliSearchTest::initTestCase()
{
    m_tree.write(QStringLiteral("tree/a.txt"), "one Foo\n\tfoo two\nbar\nlong gap\nbar foobar\n");
    m_tree.write(QStringLiteral("tree/b.cpp"), "foo.\nf.o\n");
    m_tree.write(QStringLiteral("tree/sub/c.txt"), "灯台 foo\n");
    m_tree.write(QStringLiteral("tree/sub/none.txt"), "nothing here\n");
    m_tree.write(QStringLiteral("sjis.txt"), QByteArray("\x93\x94\x91\xe4 foo\r\nx\r\n"));
}

void CliSearchTest::hitsGiveTheHeadsAndHitStringsAndStatusZero()
{
    const CliRun run = search(words("--sort foo tree"));
    QCOMPARE(run.output(),
             QByteArray("::tree/a.txt\n"
                        "      2:    5:\tfoo two\n"
                        "      5:    5:bar foobar\n"
                        "::tree/b.cpp\n"
                        "      1:    1:foo.\n"
                        "::tree/sub/c.txt\n"
                        "      1:    6:灯台 foo\n"));
    QCOMPARE(run.errors(), QByteArray());
    QCOMPARE(run.exitStatus(), 0);
}

void CliSearchTest::noHitsGiveNothingAndStatusOne()
{
    const CliRun run = search(words("absent tree"));
    QCOMPARE(run.output(), QByteArray());
    QCOMPARE(run.errors(), QByteArray());
    QCOMPARE(run.exitStatus(), 1);
}

void CliSearchTest::eachOptionReachesTheSearch_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArrayList>("lines"); // of --format grep, sorted
    const auto row = [](const char *arguments, const QByteArrayList &lines) {
        QTest::newRow(arguments) << words(arguments) << lines;
    };
    const QByteArray aFoo = "tree/a.txt:2:5:\tfoo two";
    const QByteArray aBig = "tree/a.txt:1:5:one Foo";
    const QByteArray aFoobar = "tree/a.txt:5:5:bar foobar";
    const QByteArray bFoo = "tree/b.cpp:1:1:foo.";
    const QByteArray bDot = "tree/b.cpp:2:1:f.o";
    const QByteArray cFoo = "tree/sub/c.txt:1:6:灯台 foo";
    row("foo tree", {aFoo, aFoobar, bFoo, cFoo});
    row("f.o tree", {aFoo, aFoobar, bFoo, bDot, cFoo});
    row("-F f.o tree", {bDot});
    row("-i foo tree", {aBig, aFoo, aFoobar, bFoo, cFoo});
    row("-w foo tree", {aFoo, bFoo, cFoo});
    row("-wF foo tree", {aFoo, bFoo, cFoo});
    row("-m *.cpp foo tree", {bFoo});
    row("-m ^*.cpp foo tree", {aFoo, aFoobar, cFoo});
    row("--no-subdirs foo tree", {aFoo, aFoobar, bFoo});
    row("--not two foo tree", {aFoobar, bFoo, cFoo});
    row("--near two foo tree", {aFoo});
    row("--near bar Foo tree", {});
    row("--near bar --within 1 Foo tree", {});
    row("--near bar --within 2 Foo tree", {aBig});
    row("--exclude-dir sub foo tree", {aFoo, aFoobar, bFoo});
    row("--exclude-file .cpp --exclude-file c.t foo tree", {aFoo, aFoobar});
    row("灯台 tree", {"tree/sub/c.txt:1:1:灯台 foo"});
    row("灯台 sjis.txt", {"sjis.txt:1:1:灯台 foo"});
    row("--names-without-hits gap tree",
        {"tree/a.txt:4:6:long gap", "tree/b.cpp", "tree/sub/c.txt", "tree/sub/none.txt"});
    row("-- foo tree/b.cpp", {bFoo});
}

void CliSearchTest::eachOptionReachesTheSearch()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArrayList, lines);
    const CliRun run = search(words("--format grep") + arguments);
    QCOMPARE(run.sortedLines(), lines);
    QCOMPARE(run.exitStatus(), lines.isEmpty() ? 1 : 0);
}

void CliSearchTest::exclusionsAreWarnedOfWordForWord()
{
    QCOMPARE(search(words("--exclude-dir sub absent tree")).errors(),
             QByteArray("Warning exclution folder:tree/sub/\n"));
    QCOMPARE(search(words("--exclude-file b.c absent tree")).errors(),
             QByteArray("Warning exclution file:b.cpp\n"));
}

void CliSearchTest::aFileOverTheSizeIsAnErrorWordForWord()
{
    ScratchFolder scratch;
    const QString big =
        scratch.write(QStringLiteral("big.txt"), "foo\n" + QByteArray(1048576, 'x') + "\n");
    const CliRun refused(words("foo") + QStringList(big));
    QCOMPARE(refused.errors(), "Error File size over 1 MByte:" + big.toUtf8() + '\n');
    QCOMPARE(refused.exitStatus(), 1);
    const CliRun searched(words("--max-size 2 foo") + QStringList(big));
    QCOMPARE(searched.errors(), QByteArray());
    QCOMPARE(searched.exitStatus(), 0);
}

void CliSearchTest::aTabAdvancesTheColumnByItsWidth()
{
    QCOMPARE(search(words("--format grep --tab 8 two tree")).output(),
             QByteArray("tree/a.txt:2:13:\tfoo two\n"));
    QCOMPARE(search(words("--format grep two tree")).output(),
             QByteArray("tree/a.txt:2:9:\tfoo two\n"));
}

void CliSearchTest::filesAndFoldersMayBeMixed()
{
    const CliRun run = search(words("--format grep --sort foo sjis.txt tree/sub tree/b.cpp"));
    QCOMPARE(run.output(),
             QByteArray("sjis.txt:1:6:灯台 foo\n"
                        "tree/b.cpp:1:1:foo.\n"
                        "tree/sub/c.txt:1:6:灯台 foo\n"));
}

void CliSearchTest::aNamedFileIsSearchedWhateverMaskAndExclusionsSay()
{
    const CliRun run = search(words(
        "--format grep --sort -m *.txt --exclude-file c --exclude-file b foo tree/b.cpp tree"));
    QCOMPARE(run.output(),
             QByteArray("tree/a.txt:2:5:\tfoo two\n"
                        "tree/a.txt:5:5:bar foobar\n"
                        "tree/b.cpp:1:1:foo.\n"));
}

void CliSearchTest::aSingleFileIsSearched()
{
    const CliRun run = search(words("foo tree/b.cpp"));
    QCOMPARE(run.output(), QByteArray("::tree/b.cpp\n      1:    1:foo.\n"));
    QCOMPARE(run.exitStatus(), 0);
}

void CliSearchTest::aListFileStandsForWhatItHolds()
{
    m_tree.write(QStringLiteral("list.ini"),
                 "[General]\nfiles=tree/a.txt, tree/b.cpp, tree/sub/, absent.txt\n");
    QCOMPARE(search(words("--format grep --sort -m *.txt foo @list.ini")).output(),
             QByteArray("tree/a.txt:2:5:\tfoo two\n"
                        "tree/a.txt:5:5:bar foobar\n"
                        "tree/sub/c.txt:1:6:灯台 foo\n"));
    QCOMPARE(search(words("--format grep --no-subdirs -m *.cpp foo @list.ini")).output(),
             QByteArray("tree/b.cpp:1:1:foo.\n"));
}

void CliSearchTest::namesWithoutHitsAloneAreNoHits()
{
    const CliRun run = search(words("--names-without-hits absent tree/sub --sort"));
    QCOMPARE(run.output(), QByteArray("::tree/sub/c.txt\n::tree/sub/none.txt\n"));
    QCOMPARE(run.exitStatus(), 1);
}

void CliSearchTest::jsonTellsTheEncodingOfEachFile()
{
    const CliRun run = search(words("--format json --sort 灯台 sjis.txt tree"));
    const QByteArrayList lines = run.output().split('\n');
    QCOMPARE(lines.size(), 3);
    const QJsonObject sjis = QJsonDocument::fromJson(lines.at(0)).object();
    QCOMPARE(sjis.value(QLatin1String("path")).toString(), QStringLiteral("sjis.txt"));
    QCOMPARE(sjis.value(QLatin1String("line")).toInt(), 1);
    QCOMPARE(sjis.value(QLatin1String("column")).toInt(), 1);
    QCOMPARE(sjis.value(QLatin1String("text")).toString(), QStringLiteral("灯台 foo"));
    QCOMPARE(sjis.value(QLatin1String("encoding")).toString(), QStringLiteral("Shift-JIS"));
    QCOMPARE(sjis.size(), 5);
    const QJsonObject utf8 = QJsonDocument::fromJson(lines.at(1)).object();
    QCOMPARE(utf8.value(QLatin1String("encoding")).toString(), QStringLiteral("UTF-8"));
}

void CliSearchTest::colourIsForTerminalsUnlessAskedFor()
{
    QVERIFY(!search(words("--color auto foo tree")).output().contains('\x1b'));
    QVERIFY(!search(words("--color never foo tree")).output().contains('\x1b'));
    QCOMPARE(search(words("--color always foo tree/b.cpp")).output(),
             QByteArray("::\x1b[35mtree/b.cpp\x1b[m\n"
                        "\x1b[32m      1:    1:\x1b[m\x1b[1;31mfoo\x1b[m.\n"));
}

void CliSearchTest::statisticsGoToTheStandardError()
{
    const CliRun run = search(words("--stats --names-without-hits --exclude-file b.cpp foo tree"));
    const QString pattern = QStringLiteral("^Warning exclution file:b.cpp\n"
                                           "files: 3\n"
                                           "hits: 3\n"
                                           "matched files: 2\n"
                                           "skipped: 1\n"
                                           "errors: 0\n"
                                           "seconds: \\d+\\.\\d{3}\n$");
    const QString errors = QString::fromUtf8(run.errors());
    QVERIFY2(QRegularExpression(pattern).match(errors).hasMatch(), qPrintable(errors));
}

void CliSearchTest::sortingIsByTheBytesOfThePath()
{
    ScratchFolder scratch;
    // U+FF41 comes behind U+1F600 in UTF-16 and before it in bytes.
    for (const char *name : {"c", "a/b", "a-b", "a.b", "B", "\xf0\x9f\x98\x80", "ａ"})
        scratch.write(QString::fromUtf8(name), "foo\n");
    const CliRun run(words("--sort foo ."), scratch.path());
    QByteArrayList heads;
    for (const QByteArray &line : run.output().split('\n')) {
        if (line.startsWith("::"))
            heads += line.mid(4);
    }
    QCOMPARE(heads, QByteArrayList({"B", "a-b", "a.b", "a/b", "c", "ａ", "\xf0\x9f\x98\x80"}));
}

void CliSearchTest::theSettingsBesideTheProgramCount()
{
    ScratchFolder folder;
    const QString program = folder.filePath(QStringLiteral("sarvik-cli"));
    QVERIFY(QFile::copy(CliRun::program(), program));
    folder.write(QStringLiteral("sarvik.ini"),
                 "[General]\nexcusiondir=sub\nexcusionfile=b.c\ntabcolm=8\n");
    const auto run = [&](const QStringList &arguments) {
        QProcess process;
        CliRun::prepare(process, arguments);
        process.setProgram(program);
        process.setWorkingDirectory(m_tree.path());
        process.start();
        CliRun::waitForExit(process);
        return process.readAllStandardOutput();
    };
    QCOMPARE(run(words("--format grep --sort foo tree")),
             QByteArray("tree/a.txt:2:9:\tfoo two\ntree/a.txt:5:5:bar foobar\n"));
    QCOMPARE(run(words("--format grep --sort --tab 2 --exclude-file a. foo tree")), QByteArray());
    QCOMPARE(run(words("--format grep --tab 2 two tree")),
             QByteArray("tree/a.txt:2:7:\tfoo two\n"));
    QCOMPARE(run(words("--format grep --no-settings --sort -m *.cpp foo tree")),
             QByteArray("tree/b.cpp:1:1:foo.\n"));
}

void CliSearchTest::helpAndVersionGoToTheOutput()
{
    const CliRun help(words("-h"));
    QVERIFY(help.output().startsWith("sarvik-cli [OPTION]... KEYWORD PATH...\n"));
    QCOMPARE(help.errors(), QByteArray());
    QCOMPARE(help.exitStatus(), 0);
    const CliRun version(words("-V"));
    QCOMPARE(version.output(), QByteArray("sarvik-cli 5.00\n"));
    QCOMPARE(version.exitStatus(), 0);
}

void CliSearchTest::debugLinesAreNotShown()
{
    // Two queued files: the engine writes a debug line when it starts to load.
    QCOMPARE(search(words("foo tree/a.txt tree/b.cpp tree/sub")).errors(), QByteArray());
}

void CliSearchTest::theJapaneseCodecsKnowWindowsCharacters()
{
    ScratchFolder scratch;
    scratch.write(QStringLiteral("nec.txt"), "\x87\x40 \x81\x60\r\n");
    for (const char *map : {"", "euc"}) {
        QProcess process;
        CliRun::prepare(process, {QStringLiteral("①"), QStringLiteral("nec.txt")});
        QProcessEnvironment environment = process.processEnvironment();
        environment.insert(QStringLiteral("UNICODEMAP_JP"), QLatin1String(map));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(scratch.path());
        process.start();
        QCOMPARE(CliRun::waitForExit(process), 0);
        QCOMPARE(QString::fromUtf8(process.readAllStandardOutput()),
                 QStringLiteral("::nec.txt\n      1:    1:① ～\n"));
    }
}

QTEST_GUILESS_MAIN(CliSearchTest)
#include "CliSearchTest.moc"
