#include "tests/support/HostileTree.h"

#include "engine/NativePath.h"
#include "engine/TextGrepCore.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestLength.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

/// Searches and line counts over trees that real disks hold and tests seldom do.
/// A test that hangs here has found what would hang the program.
class HostileTreeTest : public QObject {
    Q_OBJECT

private slots:
    void whatIsNoFileIsInTheTree();
    void everyLineIsFoundOnce();
    void everyFileIsCountedOnce();
    void theHugeFileIsTheOnlyError();
    void aSecondSearchFindsTheSame();
    void aPathLongerThanTheSystemTakesIsSearched();
    void manyFilesInOneFolderAreAllFound();
    void whatMayNotBeReadIsLeftOutAndNothingElse();
    void aMountInTheTreeIsSearched();
    void aTreeMountedIntoItselfIsSearchedOnce();
    void virtualFilesEndASearchAndALineCount_data();
    void virtualFilesEndASearchAndALineCount();
    void whatWouldBeWaitedForEndsASearchAndALineCount_data();
    void whatWouldBeWaitedForEndsASearchAndALineCount();
};

namespace {

/// Paths with so many entries each, to compare what is found with what is there.
using Counts = QMap<QString, int>;

Counts expectedOf(const QByteArrayList &paths, int each)
{
    Counts counts;
    for (const QByteArray &path : paths)
        counts.insert(NativePath::fromNative(path), each);
    return counts;
}

/// The hits of each file; a file that comes twice has twice as many.
Counts hitsOf(const EngineRun &run)
{
    Counts counts;
    for (const auto &list : run.lists)
        counts[list.first] += list.second.size();
    return counts;
}

/// The lines of each file; a file that comes twice has twice as many, a link round
/// the tree has other names.
Counts linesOf(const EngineRun &run)
{
    Counts counts;
    for (const auto &count : run.lineCounts)
        counts[count.first] += count.second;
    return counts;
}

Counts linesIn(const HostileTree &tree)
{
    Counts counts = expectedOf(tree.steady(), HostileTree::linesOfContent());
    counts.insert(tree.path() + QStringLiteral("special/empty.txt"), 1);
    return counts;
}

QByteArray difference(const Counts &found, const Counts &expected)
{
    QByteArray text;
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        if (found.value(it.key()) != it.value())
            text += QByteArray::number(found.value(it.key())) + " in "
                + it.key().toUtf8().toPercentEncoding(" /") + '\n';
    }
    for (auto it = found.begin(); it != found.end(); ++it) {
        if (!expected.contains(it.key()))
            text += "too many: " + it.key().toUtf8().toPercentEncoding(" /") + '\n';
    }
    return text.left(4000);
}

/// A mount as long as the object lives, where this user may make one.
class Mount {
public:
    static Mount memory(const QByteArray &path)
    {
        return Mount(path, ::mount("tmpfs", path.constData(), "tmpfs", 0, "size=1m") == 0);
    }
    static Mount of(const QByteArray &source, const QByteArray &path)
    {
        return Mount(path,
                     ::mount(source.constData(), path.constData(), nullptr, MS_BIND, nullptr) == 0);
    }
    ~Mount()
    {
        if (m_mounted)
            ::umount2(m_path.constData(), MNT_DETACH);
    }
    Mount(const Mount &) = delete;
    Mount &operator=(const Mount &) = delete;

    bool isThere() const { return m_mounted; }

private:
    Mount(const QByteArray &path, bool mounted) : m_path(path), m_mounted(mounted) { }

    const QByteArray m_path;
    const bool m_mounted;
};

/// Not every super-user may: a container's may be refused.
bool mayMakeDevices()
{
    const ScratchFolder folder;
    return QProcess::execute(QStringLiteral("mknod"),
                             {folder.filePath(QStringLiteral("zero")), QStringLiteral("c"),
                              QStringLiteral("1"), QStringLiteral("5")})
        == 0;
}

/// uncertain: a file whose lines may be counted and which may be told as an error.
void verifySearchAndCount(const HostileTree &tree, const QStringList &errors,
                          const QString &uncertain = QString())
{
    const QString uncertainError = QStringLiteral("Error File read:") + uncertain;
    EngineRun search;
    QVERIFY(search.run(searchFor(HostileTree::keyword(), {tree.path()})));
    const Counts hits = expectedOf(tree.steady(), 1);
    QVERIFY2(hitsOf(search) == hits, difference(hitsOf(search), hits).constData());
    search.errors.removeAll(uncertainError);
    QCOMPARE(search.errors, errors);
    QCOMPARE(search.warnings, QStringList());
    EngineRun count;
    QVERIFY(count.run(countLinesIn({tree.path()})));
    const Counts lines = linesIn(tree);
    Counts counted = linesOf(count);
    counted.remove(uncertain);
    QVERIFY2(counted == lines, difference(counted, lines).constData());
    count.errors.removeAll(uncertainError);
    QCOMPARE(count.errors, errors);
    QCOMPARE(count.warnings, QStringList());
}

/// What every tree tells.
QStringList errorsOf(const HostileTree &tree)
{
    if (tree.hugeFile().isEmpty())
        return {};
    return {QStringLiteral("Error File size over 1 MByte:")
            + NativePath::fromNative(tree.hugeFile())};
}

} // namespace

/// Without it the other tests would show little.
void HostileTreeTest::whatIsNoFileIsInTheTree()
{
    const HostileTree tree;
    QByteArrayList expected{"a FIFO", "a socket"};
    if (mayMakeDevices())
        expected.append("a device");
    expected += {"/dev/zero", "/dev/null"};
    QCOMPARE(tree.specialFiles(), expected);
}

void HostileTreeTest::everyLineIsFoundOnce()
{
    const HostileTree tree;
    EngineRun run;
    QVERIFY(run.run(searchFor(HostileTree::keyword(), {tree.path()})));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    const Counts expected = expectedOf(tree.steady(), 1);
    QVERIFY2(hitsOf(run) == expected, difference(hitsOf(run), expected).constData());
}

void HostileTreeTest::everyFileIsCountedOnce()
{
    const HostileTree tree;
    EngineRun run;
    QVERIFY(run.run(countLinesIn({tree.path()})));
    QCOMPARE(run.lcntFinishedFlags, QVector<bool>{false});
    const Counts expected = linesIn(tree);
    const Counts counted = linesOf(run);
    QVERIFY2(counted == expected, difference(counted, expected).constData());
}

void HostileTreeTest::theHugeFileIsTheOnlyError()
{
    const HostileTree tree;
    if (tree.hugeFile().isEmpty())
        QSKIP("the disk holds no sparse files of this size");
    const QStringList expected{QStringLiteral("Error File size over 1 MByte:")
                               + NativePath::fromNative(tree.hugeFile())};
    EngineRun search;
    QVERIFY(search.run(searchFor(HostileTree::keyword(), {tree.path()})));
    QCOMPARE(search.errors, expected);
    QCOMPARE(search.warnings, QStringList());
    EngineRun count;
    QVERIFY(count.run(countLinesIn({tree.path()})));
    QCOMPARE(count.errors, expected);
}

void HostileTreeTest::aSecondSearchFindsTheSame()
{
    const HostileTree tree;
    const Counts expected = expectedOf(tree.steady(), 1);
    EngineRun run;
    for (int i = 0; i < 3; ++i) {
        QVERIFY(run.run(searchFor(HostileTree::keyword(), {tree.path()})));
        QVERIFY2(hitsOf(run) == expected, difference(hitsOf(run), expected).constData());
    }
}

void HostileTreeTest::aPathLongerThanTheSystemTakesIsSearched()
{
    constexpr int kLevels = 30;
    const QByteArray level(255, 'x');
    const ScratchFolder tree;
    const QString start = QDir::currentPath();
    QVERIFY(QDir::setCurrent(tree.path()));
    // One after the other: no call takes the whole path.
    bool made = true;
    for (int i = 0; i < kLevels; ++i)
        made = made && ::mkdir(level.constData(), 0755) == 0 && ::chdir(level.constData()) == 0;
    const int descriptor = ::open("plain.txt", O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    const QByteArray content = HostileTree::content();
    made =
        made && ::write(descriptor, content.constData(), size_t(content.size())) == content.size();
    ::close(descriptor);
    made = made && ::symlink("plain.txt", "link.txt") == 0;
    QVERIFY(QDir::setCurrent(start));
    QVERIFY(made);

    const QByteArray folder =
        QFile::encodeName(tree.path()) + QByteArray(level + '/').repeated(kLevels);
    const QByteArrayList files{folder + "link.txt", folder + "plain.txt"};
    EngineRun run;
    const bool searched = run.run(searchFor(HostileTree::keyword(), {tree.path()}));
    const Counts hits = hitsOf(run);
    // As a top folder and as files, too: nothing lists them first.
    const bool fromBelow =
        run.run(searchFor(HostileTree::keyword(), {NativePath::fromNative(folder)}));
    const Counts hitsFromBelow = hitsOf(run);
    const bool named = run.run(
        searchFor(HostileTree::keyword(),
                  {NativePath::fromNative(files.first()), NativePath::fromNative(files.last())}));
    const Counts hitsOfNamed = hitsOf(run);
    const bool counted = run.run(countLinesIn({tree.path()}));
    const Counts lines = linesOf(run);
    // The folder's own removal would fail.
    QCOMPARE(QProcess::execute(QStringLiteral("rm"),
                               {QStringLiteral("-rf"), tree.path() + QString::fromLatin1(level)}),
             0);
    QVERIFY(searched && fromBelow && named && counted);
    QCOMPARE(lines, expectedOf(files, HostileTree::linesOfContent()));
    QCOMPARE(hits, expectedOf(files, 1));
    QCOMPARE(hitsFromBelow, expectedOf(files, 1));
    QCOMPARE(hitsOfNamed, expectedOf(files, 1));
}

void HostileTreeTest::manyFilesInOneFolderAreAllFound()
{
    const int files = TestLength::rounds(20000, 100000);
    const ScratchFolder folder;
    TreeBuilder tree(QFile::encodeName(folder.path()));
    QByteArrayList paths;
    for (int i = 0; i < files; ++i) {
        const QByteArray name = "many/" + QByteArray::number(i) + ".txt";
        tree.file(name, "needle\n");
        paths.append(tree.path(name));
    }
    EngineRun run;
    QVERIFY(run.run(searchFor(HostileTree::keyword(), {folder.path()}), 300000));
    QCOMPARE(run.searched, files);
    QVERIFY(hitsOf(run) == expectedOf(paths, 1));
    QVERIFY(run.run(countLinesIn({folder.path()}), 300000));
    QVERIFY(linesOf(run) == expectedOf(paths, 2));
}

void HostileTreeTest::whatMayNotBeReadIsLeftOutAndNothingElse()
{
    HostileTree tree;
    TreeBuilder &builder = tree.builder();
    builder.setMode("", 0755);
    builder.file("secret.txt", HostileTree::content());
    builder.setMode("secret.txt", 0);
    builder.file("secret/plain.txt", HostileTree::content());
    builder.setMode("secret", 0);
    builder.file("listed only/plain.txt", HostileTree::content());
    builder.setMode("listed only", 0444);
    // What is inside can be opened by who knows the name; a search does not.
    builder.file("entered only/plain.txt", HostileTree::content());
    builder.setMode("entered only", 0111);
    {
        const OrdinaryUser user;
        if (!user.inForce())
            QSKIP("no user without privileges to search as");
        verifySearchAndCount(tree, errorsOf(tree));
    }
    for (const char *name : {"secret", "listed only", "entered only"})
        builder.setMode(name, 0755);
}

void HostileTreeTest::aMountInTheTreeIsSearched()
{
    HostileTree tree;
    tree.builder().folder("mount");
    const Mount mount = Mount::memory(tree.builder().path("mount"));
    if (!mount.isThere())
        QSKIP("this user may mount nothing");
    tree.steadyFile("mount/plain.txt");
    tree.steadyFile("mount/deeper/plain.txt");
    verifySearchAndCount(tree, errorsOf(tree));
}

void HostileTreeTest::aTreeMountedIntoItselfIsSearchedOnce()
{
    HostileTree tree;
    tree.builder().folder("again");
    const Mount mount = Mount::of(QFile::encodeName(tree.path()), tree.builder().path("again"));
    if (!mount.isThere())
        QSKIP("this user may mount nothing");
    verifySearchAndCount(tree, errorsOf(tree));
}

void HostileTreeTest::virtualFilesEndASearchAndALineCount_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("excluded");
    QTest::addColumn<bool>("subdir");
    // Links to the whole system, what is as large as the kernel's memory, and a file
    // whose every read makes a device.
    const QString parts =
        QStringLiteral("root cwd fd task debug tracing slab subsystem device devices zram-control");
    for (const char *folder : {"/proc/self/", "/proc/sys/", "/proc/bus/", "/proc/driver/",
                               "/proc/irq/", "/sys/kernel/", "/sys/module/", "/sys/class/"})
        QTest::newRow(folder) << QString::fromLatin1(folder) << parts << true;
    // "root" and "cwd" are the disk and no part of it.
    QTest::newRow("all of /proc/self/")
        << QStringLiteral("/proc/self/") << QStringLiteral("root cwd") << true;
    QTest::newRow("the files right in /proc/") << QStringLiteral("/proc/") << QString() << false;
}

void HostileTreeTest::virtualFilesEndASearchAndALineCount()
{
    QFETCH(QString, folder);
    QFETCH(QString, excluded);
    QFETCH(bool, subdir);
    if (!QFileInfo::exists(folder))
        QSKIP("not there");
    EngineOptions options;
    options.limits.excludedFolders = excluded.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    // What is read there the system's own log lacks.
    options.limits.excludedFiles = QStringList{QStringLiteral("kmsg")};
    EngineRun run(options);
    SearchCondition condition = searchFor(QStringLiteral("no such text"), {folder});
    condition.subdir = subdir;
    QVERIFY(run.run(condition, 300000));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    condition = countLinesIn({folder});
    condition.subdir = subdir;
    QVERIFY(run.run(condition, 300000));
    QCOMPARE(run.lcntFinishedFlags, QVector<bool>{false});
}

void HostileTreeTest::whatWouldBeWaitedForEndsASearchAndALineCount_data()
{
    QTest::addColumn<QString>("kind");
    // Reading this one waits for the kernel's next message, when all are read. What is
    // read here the system's own log lacks.
    if (TestLength::rounds(0, 1) == 1)
        QTest::newRow("the kernel's messages") << QStringLiteral("/proc/kmsg");
    // Behind these names stand an empty pipe's end and a terminal's.
    QTest::newRow("a pipe") << QStringLiteral("pipe");
    QTest::newRow("a terminal") << QStringLiteral("terminal");
}

void HostileTreeTest::whatWouldBeWaitedForEndsASearchAndALineCount()
{
    QFETCH(QString, kind);
    std::array<int, 2> ends{-1, -1};
    QString path = kind;
    if (kind == QLatin1String("pipe"))
        QVERIFY(::pipe2(ends.data(), O_CLOEXEC) == 0);
    else if (kind == QLatin1String("terminal"))
        ends[0] = ::posix_openpt(O_RDWR | O_NOCTTY);
    const auto close = qScopeGuard([&ends] {
        for (const int end : ends)
            ::close(end);
    });
    if (ends[0] != -1)
        path = QStringLiteral("/proc/self/fd/%1").arg(ends[0]);
    if (!QFileInfo(path).isReadable())
        QSKIP("not there, or not for this user");
    HostileTree tree;
    tree.builder().link("waited for.txt", QFile::encodeName(path));
    // Messages that came meanwhile are read, and then the next one is not waited for.
    verifySearchAndCount(tree, errorsOf(tree), tree.path() + QStringLiteral("waited for.txt"));
    EngineRun run;
    const QString folder = QFileInfo(path).path() + QLatin1Char('/');
    SearchCondition condition = searchFor(HostileTree::keyword(), {folder});
    condition.mask = QFileInfo(path).fileName();
    condition.subdir = false;
    QVERIFY(run.run(condition));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    condition = countLinesIn({folder});
    condition.mask = QFileInfo(path).fileName();
    condition.subdir = false;
    QVERIFY(run.run(condition));
    QCOMPARE(run.lcntFinishedFlags, QVector<bool>{false});
}

QTEST_GUILESS_MAIN(HostileTreeTest)
#include "HostileTreeTest.moc"
