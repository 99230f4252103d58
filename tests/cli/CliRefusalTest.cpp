#include "tests/cli/CliRun.h"
#include "tests/support/ScratchFolder.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

/// What the program refuses: one line on the standard error that names the
/// value, nothing on the output, exit status 2.
class CliRefusalTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void badInputIsRefusedBeforeAnythingIsDone_data();
    void badInputIsRefusedBeforeAnythingIsDone();
    void aListFileWithDeadEntriesWarnsAndIsSearched();
    void aKeywordOfBrokenUtf8IsRefused();
    void anUnreadablePathIsRefused_data();
    void anUnreadablePathIsRefused();

private:
    ScratchFolder m_tree;
};

void CliRefusalTest::initTestCase()
{
    m_tree.write(QStringLiteral("tree/a.txt"), "foo\n");
    m_tree.write(QStringLiteral("list.ini"), "[General]\nfiles=tree/a.txt\n");
    m_tree.write(QStringLiteral("other.ini"), "[General]\nfile=tree/a.txt\n");
    QCOMPARE(::mkfifo(m_tree.filePath(QStringLiteral("fifo")).toUtf8().constData(), 0600), 0);
}

void CliRefusalTest::badInputIsRefusedBeforeAnythingIsDone_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *error, const QStringList &arguments) {
        QTest::newRow(error) << arguments << QString::fromUtf8(error);
    };
    const auto words = [](const char *line) {
        return QString::fromUtf8(line).split(QLatin1Char(' '));
    };
    row("KEYWORD and PATH are missing (-h shows the options)", {});
    row("PATH is missing after KEYWORD 'foo'", words("foo"));
    row("KEYWORD is empty: ''", {QString(), QStringLiteral("tree")});
    row("KEYWORD is not a valid pattern: '[灯' (unexpected end)", words("[灯 tree"));
    row("--near is not a valid pattern: '(a' (unexpected end)", words("--near (a foo tree"));
    row("--not is not a valid pattern: 'a\\\\' (unexpected end)", words("--not a\\ foo tree"));
    row("KEYWORD is too complex a pattern: '(((a{999}){999}){999})'",
        words("(((a{999}){999}){999}) tree"));
    row("--not is too complex a pattern: '((a{999}){999})'",
        words("--not ((a{999}){999}) foo tree"));
    row("KEYWORD holds a line feed, and no line does: 'a\\x0ab'",
        {QStringLiteral("a\nb"), QStringLiteral("tree")});
    row("--near holds a line feed, and no line does: '\\x0a'",
        {QStringLiteral("--near"), QStringLiteral("\n"), QStringLiteral("-F"),
         QStringLiteral("foo"), QStringLiteral("tree")});
    row("no such file or folder: 'a\\x9b\\u202e\\u2028b'",
        {QStringLiteral("foo"), QStringLiteral("a\u009b\u202e\u2028b")});
    row("--mask is blank: ' '",
        {QStringLiteral("-m"), QStringLiteral(" "), QStringLiteral("foo"), QStringLiteral("tree")});
    row("--within takes a number from 0 to 1000000: '-1'", words("--near a --within -1 foo tree"));
    row("--max-size takes a number from 1 to 1000: '99999999999'",
        words("--max-size 99999999999 foo tree"));
    row("--tab takes a number from 1 to 1000: '0'", words("--tab 0 foo tree"));
    row("unknown option '--colour'", words("--colour never foo tree"));
    row("no such file or folder: '灯台'", words("foo tree 灯台"));
    row("no such file or folder: ''", {QStringLiteral("foo"), QString()});
    row("neither a file nor a folder: 'fifo'", words("foo tree fifo"));
    row("neither a file nor a folder: '/dev/zero'", words("--line-count /dev/zero"));
    row("no such file or folder: '@absent'", words("foo @absent"));
    row("the list file holds no \"files\": '@other.ini'", words("foo @other.ini"));
    row("a list file stands alone, without 'tree'", words("foo @list.ini tree"));
    row("a list file stands alone: '@list.ini'", words("--encodings tree @list.ini"));
}

void CliRefusalTest::badInputIsRefusedBeforeAnythingIsDone()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const CliRun run(arguments, m_tree.path());
    QCOMPARE(QString::fromUtf8(run.errors()), QStringLiteral("sarvik-cli: %1\n").arg(error));
    QCOMPARE(run.output(), QByteArray());
    QCOMPARE(run.exitStatus(), 2);
}

void CliRefusalTest::aListFileWithDeadEntriesWarnsAndIsSearched()
{
    m_tree.write(QStringLiteral("old.ini"), "[General]\nfiles=tree/gone.txt, tree/a.txt\n");
    const CliRun run({QStringLiteral("--format"), QStringLiteral("grep"), QStringLiteral("foo"),
                      QStringLiteral("@old.ini")},
                     m_tree.path());
    QCOMPARE(run.errors(),
             QByteArray("sarvik-cli: '@old.ini': no such file or folder: 'tree/gone.txt'\n"));
    QCOMPARE(run.output(), QByteArray("tree/a.txt:1:1:foo\n"));
    QCOMPARE(run.exitStatus(), 0);
}

void CliRefusalTest::aKeywordOfBrokenUtf8IsRefused()
{
    QProcess process;
    CliRun::prepare(process, {});
    process.setProgram(QStringLiteral("/bin/sh"));
    process.setArguments({QStringLiteral("-c"),
                          QStringLiteral("exec \"$0\" \"$(printf '\\201')\" ."),
                          CliRun::program()});
    process.start();
    QCOMPARE(CliRun::waitForExit(process), 2);
    QCOMPARE(process.readAllStandardError(),
             QByteArray("sarvik-cli: KEYWORD is not valid UTF-8: '\x81'\n"));
}

void CliRefusalTest::anUnreadablePathIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("file") << QStringLiteral("secret.txt");
    QTest::newRow("folder") << QStringLiteral("secret");
    QTest::newRow("folder that can be listed but not entered") << QStringLiteral("half");
    QTest::newRow("in an unreadable folder") << QStringLiteral("secret/a.txt");
    QTest::newRow("list file") << QStringLiteral("@secret.txt");
}

void CliRefusalTest::anUnreadablePathIsRefused()
{
    QFETCH(QString, path);
    m_tree.write(QStringLiteral("secret.txt"), "foo\n");
    m_tree.write(QStringLiteral("secret/a.txt"), "foo\n");
    m_tree.write(QStringLiteral("half/a.txt"), "foo\n");
    const auto setMode = [this](const char *name, mode_t mode) {
        ::chmod(m_tree.filePath(QLatin1String(name)).toUtf8().constData(), mode);
    };
    ::chmod(m_tree.path().toUtf8().constData(), 0755);
    setMode("secret.txt", 0);
    setMode("secret", 0);
    setMode("half", 0444);

    QProcess process;
    CliRun::prepare(process, {QStringLiteral("foo"), path});
    process.setWorkingDirectory(m_tree.path());
    if (::geteuid() == 0) {
        // To root everything is readable; setpriv makes the child nobody, who
        // must reach the program, too.
        const QString copy = m_tree.filePath(QStringLiteral("sarvik-cli"));
        QFile::remove(copy);
        // A program that counts its lines says on its errors when it cannot keep the
        // counts, and nobody may not write beside root's objects.
        m_tree.makeFolder(QStringLiteral("counts"));
        setMode("counts", 0777);
        QProcessEnvironment environment = process.processEnvironment();
        environment.insert(QStringLiteral("GCOV_PREFIX"),
                           m_tree.filePath(QStringLiteral("counts")));
        process.setProcessEnvironment(environment);
        QVERIFY(QFile::copy(CliRun::program(), copy));
        setMode("sarvik-cli", 0755);
        process.setArguments(
            QStringList({QStringLiteral("--reuid=65534"), QStringLiteral("--clear-groups"), copy})
            + process.arguments());
        process.setProgram(QStringLiteral("setpriv"));
    }
    process.start();
    const int exitStatus = CliRun::waitForExit(process);
    setMode("secret", 0755);
    setMode("half", 0755);
    QCOMPARE(process.readAllStandardError(),
             "sarvik-cli: cannot be read: '" + path.toUtf8() + "'\n");
    QCOMPARE(exitStatus, 2);
}

QTEST_GUILESS_MAIN(CliRefusalTest)
#include "CliRefusalTest.moc"
