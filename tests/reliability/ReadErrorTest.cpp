#include "engine/FileReader.h"
#include "engine/TextGrepCore.h"
#include "mainwindow/preview/PreviewFile.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/support/ScratchFolder.h"

#include <QTest>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <memory>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// The file whose bytes from g_readable on the system cannot read.
std::atomic<ino_t> g_brokenFile{0};
std::atomic<off_t> g_readable{0};

} // namespace

/// In the place of the system's own: a disk that fails in the middle of a file.
extern "C" ssize_t read(int descriptor, void *buffer, size_t count)
{
    struct stat status = {};
    if (g_brokenFile != 0 && ::fstat(descriptor, &status) == 0 && status.st_ino == g_brokenFile) {
        const off_t left = g_readable - ::lseek(descriptor, 0, SEEK_CUR);
        if (left <= 0) {
            errno = EIO;
            return -1;
        }
        count = std::min(count, size_t(left));
    }
    return ::syscall(SYS_read, descriptor, buffer, count);
}

/// What a disk does not give back is neither half a text nor nothing.
class ReadErrorTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { g_brokenFile = 0; }

    void theReaderTellsIt();
    void aFileOfWhichNothingCanBeReadIsLeftOut();
    void noLinesOfItAreCountedAndNoTextIsShown();
    void aSearchTellsWhatItFoundAndTheError();
    void aLineCountTellsNoNumber();
    void thePreviewShowsNoHalfText();

private:
    void breakAt(off_t position);

    std::unique_ptr<ScratchFolder> m_folder;
    QString m_path;
};

void ReadErrorTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    m_path = m_folder->write(QStringLiteral("broken.txt"),
                             "needle\n" + QByteArray("hay\n").repeated(100000) + "needle\n");
    // With a single file nothing is searched.
    m_folder->write(QStringLiteral("whole.txt"), "needle\n");
}

void ReadErrorTest::breakAt(off_t position)
{
    struct stat status = {};
    QCOMPARE(::stat(m_path.toUtf8().constData(), &status), 0);
    g_readable = position;
    g_brokenFile = status.st_ino;
}

void ReadErrorTest::theReaderTellsIt()
{
    FileReader reader;
    QCOMPARE(reader.read(m_path, 1 << 30, FileReader::TypeCheck::WhenOpen),
             FileReader::Status::Read);
    QVERIFY(!reader.hasFailed());
    breakAt(200000);
    QCOMPARE(reader.read(m_path, 1 << 30, FileReader::TypeCheck::WhenOpen),
             FileReader::Status::Read);
    QVERIFY(reader.hasFailed());
    QCOMPARE(reader.size(), qint64(200000));
    g_brokenFile = 0;
    QCOMPARE(reader.read(m_path, 1 << 30, FileReader::TypeCheck::WhenOpen),
             FileReader::Status::Read);
    QVERIFY(!reader.hasFailed());
}

/// As one that cannot be opened: some virtual files are of that kind.
void ReadErrorTest::aFileOfWhichNothingCanBeReadIsLeftOut()
{
    breakAt(0);
    EngineRun run;
    QVERIFY(run.run(searchFor(QStringLiteral("needle"), {m_folder->path()})));
    QCOMPARE(run.hitsByPath().size(), 1);
    QCOMPARE(run.errors, QStringList());
}

void ReadErrorTest::noLinesOfItAreCountedAndNoTextIsShown()
{
    breakAt(0);
    EngineRun run;
    QVERIFY(run.run(countLinesIn({m_folder->path()})));
    QCOMPARE(run.lineCounts.size(), 1);
    QVERIFY(run.lineCounts.first().first.endsWith(QLatin1String("whole.txt")));
    QCOMPARE(run.errors, QStringList());
    QVERIFY(!PreviewFile::load(m_path, DetectionSettings(), [](const QString &, const QString &) {
             }).readable);
}

void ReadErrorTest::aSearchTellsWhatItFoundAndTheError()
{
    breakAt(200000);
    EngineRun run;
    QStringList told;
    connect(
        run.engine(), &TextGrepCore::foundAtList, &run,
        [&](const QString &path) {
            if (path == m_path)
                told.append(path);
        },
        Qt::QueuedConnection);
    connect(
        run.engine(), &TextGrepCore::ErrorMsg, &run,
        [&](const QString &message) { told.append(message); }, Qt::QueuedConnection);
    QVERIFY(run.run(searchFor(QStringLiteral("needle"), {m_folder->path()})));
    QCOMPARE(run.hitsByPath().value(m_path).size(), 1);
    QCOMPARE(run.errors, QStringList(QStringLiteral("Error File read:") + m_path));
    // The error comes behind the hits, as the window shows them.
    QCOMPARE(told, QStringList({m_path, QStringLiteral("Error File read:") + m_path}));
}

void ReadErrorTest::aLineCountTellsNoNumber()
{
    breakAt(200000);
    EngineRun run;
    QVERIFY(run.run(countLinesIn({m_folder->path()})));
    QCOMPARE(run.lineCounts.size(), 1);
    QVERIFY(run.lineCounts.first().first.endsWith(QLatin1String("whole.txt")));
    QCOMPARE(run.errors, QStringList(QStringLiteral("Error File read:") + m_path));
}

void ReadErrorTest::thePreviewShowsNoHalfText()
{
    const auto load = [this] {
        return PreviewFile::load(m_path, DetectionSettings(),
                                 [](const QString &, const QString &) {});
    };
    QVERIFY(load().readable);
    breakAt(200000);
    const PreviewFile file = load();
    QVERIFY(!file.readable);
    QCOMPARE(file.text, m_path + QStringLiteral("プレビューできません。"));
}

QTEST_GUILESS_MAIN(ReadErrorTest)
#include "ReadErrorTest.moc"
