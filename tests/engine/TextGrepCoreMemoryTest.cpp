#include "engine/TextGrepCore.h"

#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QFile>
#include <QTest>

#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr qint64 kMiB = 1048576;

/// Bytes of address space that the process has taken.
qint64 addressSpace()
{
    QFile statistics(QStringLiteral("/proc/self/statm"));
    if (!statistics.open(QIODevice::ReadOnly))
        return 0;
    return statistics.readAll().split(' ').first().toLongLong() * ::sysconf(_SC_PAGESIZE);
}

/// While it lives, the process may take only so many bytes more.
class ScarceMemory {
    Q_DISABLE_COPY(ScarceMemory)

public:
    explicit ScarceMemory(qint64 bytes)
    {
        ::getrlimit(RLIMIT_AS, &m_former);
        rlimit scarce = m_former;
        scarce.rlim_cur = static_cast<rlim_t>(addressSpace() + bytes);
        m_inForce = addressSpace() > 0 && ::setrlimit(RLIMIT_AS, &scarce) == 0;
    }
    ~ScarceMemory() { ::setrlimit(RLIMIT_AS, &m_former); }

    bool inForce() const { return m_inForce; }

private:
    rlimit m_former = {};
    bool m_inForce = false;
};

bool underSanitizer()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}

} // namespace

/// A search for which the memory is too small.
class TextGrepCoreMemoryTest : public QObject {
    Q_OBJECT

private slots:
    void aFileForWhichMemoryIsMissingIsAnError_data();
    void aFileForWhichMemoryIsMissingIsAnError();
};

void TextGrepCoreMemoryTest::aFileForWhichMemoryIsMissingIsAnError_data()
{
    QTest::addColumn<bool>("linecount");
    QTest::newRow("search") << false;
    QTest::newRow("line count") << true;
}

void TextGrepCoreMemoryTest::aFileForWhichMemoryIsMissingIsAnError()
{
    QFETCH(bool, linecount);
    if (underSanitizer())
        QSKIP("a sanitizer ends the program where memory is missing");
    const ScratchFolder scratch;
    for (const char *name : {"a.txt", "c.txt"})
        scratch.write(QString::fromLatin1(name), "some key\n");
    SearchCondition condition = searchFor(QStringLiteral("key"), {scratch.path()});
    condition.linecount = linecount;
    EngineOptions options;
    options.limits.bigsize = 1000;
    EngineRun run(options);
    QVERIFY(run.run(condition)); // the threads and their heaps stand from here on
    TreeBuilder tree(scratch.path().toLocal8Bit());
    tree.sparseFile("b.txt", 900 * kMiB);
    // Text where detection looks, and then one line of the rest.
    QFile file(scratch.filePath(QStringLiteral("b.txt")));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.write(QByteArray("text\n").repeated(2000)) > 0);
    file.close();
    {
        const ScarceMemory scarce(300 * kMiB);
        if (!scarce.inForce())
            QSKIP("the memory cannot be limited here");
        QVERIFY(run.run(condition));
    }
    QCOMPARE(run.errors,
             QStringList{QStringLiteral("Error out of memory:")
                         + scratch.filePath(QStringLiteral("b.txt"))});
    QCOMPARE(run.lists.size() + run.lineCounts.size(), 2);
}

QTEST_GUILESS_MAIN(TextGrepCoreMemoryTest)
#include "TextGrepCoreMemoryTest.moc"
