#include "tests/cli/CliRun.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace {

/// Many times what a pipe holds, so that a program whose output nobody reads
/// cannot end by itself.
constexpr int kManyFiles = 400;
const QByteArray kManyHits = QByteArray("a line that holds foo and some more text\n").repeated(100);

QStringList words(const char *line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '));
}

/// The program as a shell starts it after setUp, with some streams redirected.
void prepareInShell(QProcess &process, const QString &setUp, const QString &redirections,
                    const QStringList &arguments)
{
    CliRun::prepare(process, arguments);
    process.setProgram(QStringLiteral("/bin/sh"));
    process.setArguments(QStringList({QStringLiteral("-c"),
                                      setUp + QStringLiteral(" exec \"$0\" \"$@\" ") + redirections,
                                      CliRun::program()})
                         + arguments);
}

/// Several times as long as a writer waits before it looks about. Too short on a
/// slow machine, the test that calls it proves less, but does not fail.
void letWritersWait()
{
    ::usleep(300000);
}

/// Whether the process has been sent the signal and has not run since.
bool isPending(int signal, pid_t pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QRegularExpression shared(QStringLiteral("^ShdPnd:\\s*([0-9a-f]+)$"),
                                    QRegularExpression::MultilineOption);
    const QString mask = shared.match(QString::fromLatin1(status.readAll())).captured(1);
    return ((mask.toULongLong(nullptr, 16) >> (signal - 1)) & 1) != 0;
}

/// A pipe as a file name; this side reads, and need not.
class NamedPipe {
public:
    explicit NamedPipe(const QString &path) : m_path(path)
    {
        if (::mkfifo(path.toUtf8().constData(), 0600) != 0)
            qFatal("cannot make %s", qPrintable(path));
        m_descriptor = ::open(path.toUtf8().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    ~NamedPipe() { close(); }
    Q_DISABLE_COPY(NamedPipe)

    QString path() const { return m_path; }
    void close()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = -1;
    }
    /// Waits until the writer has filled the pipe.
    bool waitUntilFull() const
    {
        for (int i = 0; i < 60000; ++i) {
            if (isFull())
                return true;
            ::usleep(1000);
        }
        return false;
    }
    /// The next line, or what there is of it when no more comes.
    QByteArray readLine()
    {
        while (!m_unread.contains('\n')) {
            char buffer[65536];
            struct pollfd wait = {m_descriptor, POLLIN, 0};
            if (::poll(&wait, 1, 60000) <= 0)
                break;
            const ssize_t count = ::read(m_descriptor, buffer, sizeof buffer);
            if (count <= 0)
                break;
            m_unread.append(buffer, static_cast<int>(count));
        }
        const QByteArray line = m_unread.left(m_unread.indexOf('\n') + 1);
        m_unread.remove(0, line.size());
        return line;
    }

    /// All that is left until the writer's end is closed.
    QByteArray readAll()
    {
        while (readSome()) { }
        return std::exchange(m_unread, QByteArray());
    }
    /// Takes the next bytes for readAll, few of them, so that the writer waits
    /// again and again; false when no more comes.
    bool readSome()
    {
        char buffer[4096];
        struct pollfd wait = {m_descriptor, POLLIN, 0};
        const bool readable = ::poll(&wait, 1, 60000) > 0;
        const ssize_t count = readable ? ::read(m_descriptor, buffer, sizeof buffer) : 0;
        m_unread.append(buffer, static_cast<int>(qMax<ssize_t>(count, 0)));
        return count > 0;
    }

private:
    /// The bytes that wait do not tell: a page that is filled in part counts as
    /// full.
    bool isFull() const
    {
        int waiting = 0;
        ::ioctl(m_descriptor, FIONREAD, &waiting);
        if (waiting == 0)
            return false;
        const int writer = ::open(m_path.toUtf8().constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        struct pollfd room = {writer, POLLOUT, 0};
        const bool full = ::poll(&room, 1, 0) == 0;
        ::close(writer);
        return full;
    }

    QString m_path;
    int m_descriptor = -1;
    QByteArray m_unread;
};

/// A terminal that a program can be run on; keeps what is written to it.
class PseudoTerminal {
public:
    PseudoTerminal() : m_descriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_descriptor < 0 || ::grantpt(m_descriptor) != 0 || ::unlockpt(m_descriptor) != 0)
            return;
        struct winsize size = {};
        size.ws_row = 25;
        size.ws_col = 60;
        ::ioctl(m_descriptor, TIOCSWINSZ, &size);
        // Held open, or the text is lost when the program's end is closed.
        m_other = ::open(path().toUtf8().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    ~PseudoTerminal()
    {
        for (const int descriptor : {m_other, m_descriptor}) {
            if (descriptor >= 0)
                ::close(descriptor);
        }
    }
    Q_DISABLE_COPY(PseudoTerminal)

    /// False where the system offers none, as in a bare change of root.
    bool isThere() const { return m_other >= 0; }

    QString path() const { return QString::fromLocal8Bit(::ptsname(m_descriptor)); }
    QByteArray written(int msPatience = 200) const
    {
        QByteArray bytes;
        struct pollfd wait = {m_descriptor, POLLIN, 0};
        while (::poll(&wait, 1, msPatience) > 0 && (wait.revents & POLLIN) != 0) {
            char buffer[4096];
            const ssize_t count = ::read(m_descriptor, buffer, sizeof buffer);
            if (count <= 0)
                break;
            bytes.append(buffer, static_cast<int>(count));
        }
        return bytes;
    }

private:
    int m_descriptor;
    int m_other = -1;
};

/// What is written to terminal until the progress is on it; between goes on
/// with the run meanwhile.
QByteArray waitForProgress(const PseudoTerminal &terminal, const std::function<void()> &between)
{
    QByteArray written;
    for (int i = 0; i < 60000 && !written.contains("searched "); ++i) {
        between();
        written += terminal.written(1);
    }
    return written;
}

} // namespace

/// Pipes, terminals, Ctrl+C, and trees with what is no text file.
class CliStreamsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void ctrlCAbortsAndEndsWith130_data();
    void ctrlCAbortsAndEndsWith130();
    void ctrlCInTheMiddleOfALongLineFinishesTheLine();
    void ctrlCTwiceEndsARunThatIsInsideALine();
    void ctrlCInALineCountEndsWith130();
    void twoRunsOnOnePipeKeepTheirLinesWhole();
    void aClosedPipeEndsTheRunQuietly_data();
    void aClosedPipeEndsTheRunQuietly();
    void aFullDeviceIsAnError();
    void aFullDeviceIsAnErrorForTheHelpToo();
    void aClosedOutputIsAnErrorOfTheResults_data();
    void aClosedOutputIsAnErrorOfTheResults();
    void aClosedErrorStreamLeavesTheOutputClean_data();
    void aClosedErrorStreamLeavesTheOutputClean();
    void outputToASlowReaderIsWholeAndUnmixed();
    void progressIsShownOnATerminalAndRemoved();
    void aSignalFromOutsideRemovesTheProgress_data();
    void aSignalFromOutsideRemovesTheProgress();
    void anIgnoredCtrlCStaysIgnored();
    void noProgressWithoutATerminal();
    void oddEntriesNeitherStopNorHangARun();
    void namesThatAreNoUtf8AreSearchedAndPrintedAsTheyAre();
    void japaneseNamesAreFoundInThePlainLocale();

private:
    ScratchFolder m_many;
    ScratchFolder m_scratch;
};

void CliStreamsTest::initTestCase()
{
    // A job in the background may have got it ignored, and would pass that on.
    std::signal(SIGINT, SIG_DFL);
    for (int i = 0; i < kManyFiles; ++i)
        m_many.write(QStringLiteral("%1/%2.txt").arg(i % 10).arg(i), kManyHits);
}

void CliStreamsTest::ctrlCAbortsAndEndsWith130_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("as they come") << QStringList();
    QTest::newRow("sorted") << words("--sort");
    QTest::newRow("json") << words("--format json");
}

void CliStreamsTest::ctrlCAbortsAndEndsWith130()
{
    QFETCH(QStringList, options);
    NamedPipe pipe(m_scratch.filePath(QString::fromLatin1(QTest::currentDataTag())));
    QProcess process;
    CliRun::prepare(process, options + QStringList{QStringLiteral("foo"), m_many.path()});
    process.setStandardOutputFile(pipe.path());
    process.start();
    QVERIFY(pipe.waitUntilFull());
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    QCOMPARE(CliRun::waitForExit(process), 130);
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QVERIFY(pipe.readAll().endsWith('\n'));
}

void CliStreamsTest::ctrlCInTheMiddleOfALongLineFinishesTheLine()
{
    ScratchFolder tree;
    for (int i = 0; i < 4; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), "foo" + QByteArray(400000, 'x') + '\n');
    NamedPipe pipe(m_scratch.filePath(QStringLiteral("long line")));
    QProcess process;
    CliRun::prepare(process, {QStringLiteral("foo"), tree.path()});
    process.setStandardOutputFile(pipe.path());
    process.start();
    QVERIFY(pipe.waitUntilFull());
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    letWritersWait();
    const QByteArray output = pipe.readAll();
    QCOMPARE(CliRun::waitForExit(process), 130);
    QCOMPARE(output.right(10), QByteArray("xxxxxxxxx\n"));
}

/// A pattern may take hours for one line, and nothing ends that but the process.
void CliStreamsTest::ctrlCTwiceEndsARunThatIsInsideALine()
{
    ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), 'b' + QByteArray(20000, 'a'));
    // Seen when the other thread has found it.
    tree.write(QStringLiteral("b.txt"), "aab\n");
    constexpr int kAborted = 130;
    int code = kAborted;
    // A run whose other thread was not yet inside the line ends with the first one.
    for (int round = 0; code == kAborted; ++round) {
        NamedPipe pipe(m_scratch.filePath(QStringLiteral("inside a line %1").arg(round)));
        QProcess process;
        CliRun::prepare(process, {QStringLiteral("(a|a)+(?=b)"), tree.path()});
        process.setStandardOutputFile(pipe.path());
        process.start();
        QVERIFY(pipe.readLine().endsWith('\n'));
        letWritersWait();
        const auto pid = static_cast<pid_t>(process.processId());
        ::kill(pid, SIGINT);
        letWritersWait();
        // Two that come before the program runs again are one to it.
        const QDeadlineTimer deadline(kPatienceMilliseconds);
        while (isPending(SIGINT, pid) && !deadline.hasExpired())
            QTest::qSleep(1);
        ::kill(pid, SIGINT);
        code = CliRun::waitForExit(process);
        QVERIFY(code == kAborted || process.exitCode() == SIGINT);
    }
    QCOMPARE(code, -1);
}

void CliStreamsTest::twoRunsOnOnePipeKeepTheirLinesWhole()
{
    // Lines of many lengths, so that pieces that end anywhere would show.
    ScratchFolder tree;
    QByteArray text;
    for (int i = 0; i < 300; ++i)
        text += "foo" + QByteArray(i, 'x') + "end\n";
    for (int i = 0; i < 20; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), text);
    NamedPipe pipe(m_scratch.filePath(QStringLiteral("shared")));
    QProcess runs[2];
    for (QProcess &run : runs) {
        CliRun::prepare(run, {QStringLiteral("foo"), tree.path()});
        run.setStandardOutputFile(pipe.path());
        run.start();
        QVERIFY(run.waitForStarted(kPatienceMilliseconds));
    }
    QVERIFY(pipe.waitUntilFull());
    letWritersWait();
    const QByteArray output = pipe.readAll();
    const QRegularExpression whole(QStringLiteral("^(::.*\\d\\.txt|  [ \\d]{5}:    1:foox*end)$"));
    QList<QByteArray> lines = output.split('\n');
    QCOMPARE(lines.takeLast(), QByteArray());
    for (const QByteArray &line : qAsConst(lines))
        QVERIFY2(whole.match(QString::fromUtf8(line)).hasMatch(), line.constData());
    QCOMPARE(lines.size(), 2 * 20 * 301);
    for (QProcess &run : runs)
        QCOMPARE(CliRun::waitForExit(run), 0);
}

void CliStreamsTest::ctrlCInALineCountEndsWith130()
{
    ScratchFolder tree;
    const QString longName(200, QLatin1Char('n'));
    for (int i = 0; i < 1000; ++i)
        tree.write(longName + QString::number(i), "x\n");
    const NamedPipe pipe(m_scratch.filePath(QStringLiteral("lineCount")));
    QProcess process;
    CliRun::prepare(process, {QStringLiteral("--line-count"), tree.path()});
    process.setStandardOutputFile(pipe.path());
    process.start();
    QVERIFY(pipe.waitUntilFull());
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    QCOMPARE(CliRun::waitForExit(process), 130);
}

void CliStreamsTest::aClosedPipeEndsTheRunQuietly_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("result") << words("foo");
    QTest::newRow("grep") << words("--format grep foo");
    QTest::newRow("encodings") << words("--encodings --sort");
}

void CliStreamsTest::aClosedPipeEndsTheRunQuietly()
{
    QFETCH(QStringList, options);
    NamedPipe pipe(m_scratch.filePath(QStringLiteral("closed ")
                                      + QString::fromLatin1(QTest::currentDataTag())));
    QProcess process;
    CliRun::prepare(process, options + QStringList(m_many.path()));
    process.setStandardOutputFile(pipe.path());
    process.start();
    QVERIFY(pipe.readLine().endsWith('\n'));
    pipe.close();
    QCOMPARE(CliRun::waitForExit(process), 0);
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void CliStreamsTest::aFullDeviceIsAnError()
{
    QProcess process;
    CliRun::prepare(process, {QStringLiteral("foo"), m_many.path()});
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start();
    QCOMPARE(CliRun::waitForExit(process), 2);
    QCOMPARE(process.readAllStandardError(),
             QByteArray("sarvik-cli: cannot write the results: No space left on device\n"));
}

void CliStreamsTest::aFullDeviceIsAnErrorForTheHelpToo()
{
    QProcess process;
    CliRun::prepare(process, words("-h"));
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start();
    QCOMPARE(CliRun::waitForExit(process), 2);
}

void CliStreamsTest::aClosedOutputIsAnErrorOfTheResults_data()
{
    QTest::addColumn<QString>("redirections");
    QTest::newRow("output") << QStringLiteral(">&-");
    QTest::newRow("input and output") << QStringLiteral("<&- >&-");
}

void CliStreamsTest::aClosedOutputIsAnErrorOfTheResults()
{
    QFETCH(QString, redirections);
    QProcess hits;
    prepareInShell(hits, QString(), redirections, {QStringLiteral("foo"), m_many.path()});
    hits.start();
    QCOMPARE(CliRun::waitForExit(hits), 2);
    QCOMPARE(hits.readAllStandardError(),
             QByteArray("sarvik-cli: cannot write the results: Bad file descriptor\n"));

    QProcess noHits;
    prepareInShell(noHits, QString(), redirections, {QStringLiteral("nowhere"), m_many.path()});
    noHits.start();
    QCOMPARE(CliRun::waitForExit(noHits), 1);
    QCOMPARE(noHits.readAllStandardError(), QByteArray());
}

void CliStreamsTest::aClosedErrorStreamLeavesTheOutputClean_data()
{
    QTest::addColumn<QString>("redirections");
    QTest::newRow("error") << QStringLiteral("2>&-");
    QTest::newRow("input and error") << QStringLiteral("<&- 2>&-");
}

void CliStreamsTest::aClosedErrorStreamLeavesTheOutputClean()
{
    QFETCH(QString, redirections);
    ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "foo\n");
    tree.write(QStringLiteral("skipped.txt"), "foo\n");
    tree.write(QStringLiteral("zeros.txt"), QByteArray(100, '\0'));
    QProcess process;
    prepareInShell(process, QString(), redirections,
                   words("--format grep --stats --exclude-file skip foo")
                       + QStringList(tree.path()));
    process.start();
    QCOMPARE(CliRun::waitForExit(process), 0);
    QCOMPARE(process.readAllStandardOutput(), tree.path().toUtf8() + "a.txt:1:1:foo\n");
}

void CliStreamsTest::outputToASlowReaderIsWholeAndUnmixed()
{
    NamedPipe pipe(m_scratch.filePath(QStringLiteral("slow")));
    QProcess process;
    CliRun::prepare(process, {QStringLiteral("foo"), m_many.path()});
    process.setStandardOutputFile(pipe.path());
    process.start();
    QVERIFY(pipe.waitUntilFull());
    QSet<QByteArray> heads;
    for (int file = 0; file < kManyFiles; ++file) {
        const QByteArray head = pipe.readLine();
        QVERIFY2(head.startsWith("::"), head.constData());
        heads += head;
        for (int line = 1; line <= 100; ++line)
            QCOMPARE(pipe.readLine(),
                     "  " + QByteArray::number(line).rightJustified(5)
                         + ":   19:a line that holds foo and some more text\n");
    }
    QCOMPARE(heads.size(), kManyFiles);
    QCOMPARE(CliRun::waitForExit(process), 0);
}

void CliStreamsTest::progressIsShownOnATerminalAndRemoved()
{
    const PseudoTerminal terminal;
    if (!terminal.isThere())
        QSKIP("no pseudo-terminals here");
    // More lines than the program keeps, and read slowly: the run lasts until the
    // progress is seen.
    ScratchFolder tree;
    for (int i = 0; i < 300; ++i)
        tree.write(QString::number(i), QByteArray("foo\n").repeated(1000));
    NamedPipe pipe(m_scratch.filePath(QStringLiteral("progress")));
    QProcess process;
    CliRun::prepare(process, {QStringLiteral("foo"), tree.path()});
    process.setStandardOutputFile(pipe.path());
    process.setStandardErrorFile(terminal.path());
    process.start();
    QVERIFY(pipe.waitUntilFull());
    letWritersWait();
    QByteArray written = waitForProgress(terminal, [&] { pipe.readSome(); });
    QVERIFY(!pipe.readAll().isEmpty());
    QCOMPARE(CliRun::waitForExit(process), 0);
    written += terminal.written();
    QVERIFY2(written.startsWith("\r\x1b[Ksearched "), written.constData());
    QVERIFY2(written.endsWith("\r\x1b[K"), written.constData());
    QVERIFY(!written.contains('\n'));
    for (const QByteArray &shown : written.split('\r'))
        QVERIFY2(QByteArray(shown).replace("\x1b[K", "").size() < 60, shown.constData());
}

void CliStreamsTest::aSignalFromOutsideRemovesTheProgress_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void CliStreamsTest::aSignalFromOutsideRemovesTheProgress()
{
    QFETCH(int, signalNumber);
    const PseudoTerminal terminal;
    if (!terminal.isThere())
        QSKIP("no pseudo-terminals here");
    // A pattern that tries every half of a long line takes minutes; that the line
    // has none, as its length is odd, only the pattern itself can tell.
    ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), QByteArray(500001, 'x') + "y\n");
    QProcess process;
    CliRun::prepare(process, {QStringLiteral("^(x+)\\1y$"), tree.path()});
    process.setStandardErrorFile(terminal.path());
    process.start();
    QByteArray written = waitForProgress(terminal, [] {});
    QVERIFY2(written.contains("searched "), written.constData());
    ::kill(static_cast<pid_t>(process.processId()), signalNumber);
    QCOMPARE(CliRun::waitForExit(process), -1);
    QCOMPARE(process.exitCode(), signalNumber);
    written += terminal.written();
    QVERIFY2(written.endsWith("\r\x1b[K"), written.constData());
}

void CliStreamsTest::anIgnoredCtrlCStaysIgnored()
{
    NamedPipe pipe(m_scratch.filePath(QStringLiteral("ignored")));
    QProcess process;
    prepareInShell(process, QStringLiteral("trap '' INT;"), QString(),
                   {QStringLiteral("foo"), m_many.path()});
    process.setStandardOutputFile(pipe.path());
    process.start();
    QVERIFY(pipe.waitUntilFull());
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    letWritersWait();
    QCOMPARE(pipe.readAll().count('\n'), kManyFiles * 101);
    QCOMPARE(CliRun::waitForExit(process), 0);
}

void CliStreamsTest::noProgressWithoutATerminal()
{
    const CliRun run({QStringLiteral("foo"), m_many.path()});
    QCOMPARE(run.errors(), QByteArray());
    QCOMPARE(run.exitStatus(), 0);
}

void CliStreamsTest::oddEntriesNeitherStopNorHangARun()
{
    ScratchFolder tree;
    const auto at = [&](const char *name) {
        return tree.filePath(QLatin1String(name)).toUtf8();
    };
    tree.write(QStringLiteral("real/a.txt"), "foo\n");
    tree.write(QStringLiteral("line\nfeed.txt"), "foo\n");
    tree.write(QStringLiteral("empty.txt"), "");
    QCOMPARE(::mkfifo(at("fifo.txt").constData(), 0600), 0);
    QCOMPARE(::symlink("real", at("loop1").constData()), 0);
    QCOMPARE(::symlink("..", at("real/up").constData()), 0);
    QCOMPARE(::symlink("nowhere", at("dangling.txt").constData()), 0);
    QCOMPARE(::symlink("itself.txt", at("itself.txt").constData()), 0);
    QCOMPARE(::symlink("/dev/zero", at("zero.txt").constData()), 0);
    const int socketDescriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    struct sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, at("socket.txt").constData(), sizeof address.sun_path);
    QCOMPARE(
        ::bind(socketDescriptor, reinterpret_cast<struct sockaddr *>(&address), sizeof address), 0);

    const CliRun run(words("--format grep --sort foo ."), tree.path());
    ::close(socketDescriptor);
    QCOMPARE(run.output(), QByteArray("./line\nfeed.txt:1:1:foo\n./real/a.txt:1:1:foo\n"));
    QCOMPARE(run.exitStatus(), 0);
}

void CliStreamsTest::namesThatAreNoUtf8AreSearchedAndPrintedAsTheyAre()
{
    ScratchFolder tree;
    const QByteArray folder = tree.path().toUtf8() + "f\x81";
    QCOMPARE(::mkdir(folder.constData(), 0700), 0);
    const QByteArray name = folder + "/\xff\xfe.txt";
    const int descriptor = ::open(name.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    QCOMPARE(::write(descriptor, "foo\n", 4), 4);
    ::close(descriptor);

    QCOMPARE(CliRun(words("--format grep foo ."), tree.path()).output(),
             QByteArray("./f\x81/\xff\xfe.txt:1:1:foo\n"));
    QCOMPARE(CliRun(words("--format json foo ."), tree.path()).output(),
             "{\"path\":\"./f\xef\xbf\xbd/\xef\xbf\xbd\xef\xbf\xbd.txt\",\"pathBase64\":\""
                 + QByteArray("./f\x81/\xff\xfe.txt").toBase64()
                 + "\",\"line\":1,\"column\":1,\"text\":\"foo\",\"encoding\":\"Shift-JIS\"}\n");
    QCOMPARE(CliRun(words("--line-count ."), tree.path()).output().split('\n').first(),
             QByteArray("      2 ./f\x81/\xff\xfe.txt"));
    QCOMPARE(CliRun(words("--encodings ."), tree.path()).output(),
             QByteArray("./f\x81/\xff\xfe.txt\t1\tShift-JIS\tCRLF\t0\n"));
    ::unlink(name.constData());
    ::rmdir(folder.constData());
}

void CliStreamsTest::japaneseNamesAreFoundInThePlainLocale()
{
    ScratchFolder tree;
    tree.write(QStringLiteral("港/灯台.txt"), "灯台\n");
    for (const char *locale : {"C", "POSIX", "no_such_locale"}) {
        QProcess process;
        CliRun::prepare(process,
                        {QStringLiteral("--format"), QStringLiteral("grep"), QStringLiteral("灯台"),
                         QStringLiteral("港")});
        QProcessEnvironment environment = process.processEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), QLatin1String(locale));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(tree.path());
        process.start();
        QCOMPARE(CliRun::waitForExit(process), 0);
        QCOMPARE(process.readAllStandardOutput(), QByteArray("港/灯台.txt:1:1:灯台\n"));
        QCOMPARE(process.readAllStandardError(), QByteArray());
    }
}

QTEST_GUILESS_MAIN(CliStreamsTest)
#include "CliStreamsTest.moc"
