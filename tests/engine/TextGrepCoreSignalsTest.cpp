#include "engine/TextGrepCore.h"

#include "engine/CurrentThread.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/support/ScratchFolder.h"

#include <QMap>
#include <QTest>

#include <algorithm>
#include <mutex>

namespace {

QString key()
{
    return QStringLiteral("key");
}

/// What the engine's threads emit, each thread's in its order; written down on
/// the thread that emits.
class Emissions : public QObject {
public:
    explicit Emissions(TextGrepCore *engine);

    /// After the run's end: what its threads wrote down is seen from then on.
    void meetThreads() { const std::lock_guard lock(m_mutex); }

    /// By the number of the emitting thread.
    QMap<int, QStringList> events;
    QVector<QPair<int, int>> threadCounts; ///< thread number as told, count
    bool threadsTellTheirOwnNumber = true;
    QVector<int> folderQueueLengths;
    QVector<int> fileQueueLengths;

private:
    void note(const QString &event) { events[CurrentThread::id()].append(event); }

    std::mutex m_mutex;
};

Emissions::Emissions(TextGrepCore *engine)
{
    const auto noteNamed = [this, engine](auto signal, const QString &name) {
        connect(
            engine, signal, this,
            [this, name](const QString &path) {
                const std::lock_guard lock(m_mutex);
                note(name + path);
            },
            Qt::DirectConnection);
    };
    noteNamed(&TextGrepCore::progressFileReport, QStringLiteral("report "));
    noteNamed(&TextGrepCore::foundAtFile, QStringLiteral("file "));
    noteNamed(&TextGrepCore::foundAtList, QStringLiteral("list "));
    connect(
        engine, &TextGrepCore::progressSrchCount, this,
        [this] {
            const std::lock_guard lock(m_mutex);
            note(QStringLiteral("searched"));
        },
        Qt::DirectConnection);
    connect(
        engine, &TextGrepCore::ThreadCount, this,
        [this](int thread, int count) {
            const std::lock_guard lock(m_mutex);
            threadCounts.append({thread, count});
            threadsTellTheirOwnNumber = threadsTellTheirOwnNumber && thread == CurrentThread::id();
        },
        Qt::DirectConnection);
    connect(
        engine, &TextGrepCore::progressDirSemaphoreCount, this,
        [this](int length) {
            const std::lock_guard lock(m_mutex);
            folderQueueLengths.append(length);
        },
        Qt::DirectConnection);
    connect(
        engine, &TextGrepCore::progressFileSemaphoreCount, this,
        [this](int length) {
            const std::lock_guard lock(m_mutex);
            fileQueueLengths.append(length);
        },
        Qt::DirectConnection);
}

/// Three files and a folder with two more.
void writeFiveFiles(const ScratchFolder &tree)
{
    for (const char *name : {"a.txt", "b.txt", "c.txt", "s/d.txt", "s/e.txt"})
        tree.write(QString::fromLatin1(name), "some key\n");
}

} // namespace

/// The order and the values of what the engine says while it works.
class TextGrepCoreSignalsTest : public QObject {
    Q_OBJECT

private slots:
    void aSearchedFileIsCountedThenNamedThenReported();
    void queueLengthsAreToldBeforeEachEntryIsTaken();
    void threadsCountTheEntriesTheyListAndTheFilesTheyLoad();
    void theLoadPhaseIsWrittenToTheDebugLog();
    void anUnknownRefusalIsWrittenToTheDebugLog();
    void aWalkerLooksForAnAbortEveryHundredEntries();
    void theListFileIsLeftWithinAHundredEntriesOfAnAbort();
};

void TextGrepCoreSignalsTest::aSearchedFileIsCountedThenNamedThenReported()
{
    const ScratchFolder tree;
    QStringList searched;
    for (int i = 0; i < 60; ++i) {
        const QString path = tree.write(QStringLiteral("%1.txt").arg(i),
                                        i % 3 == 0 ? "nothing here\n" : "some key\n");
        searched.append((i % 3 == 0 ? QStringLiteral("file ") : QStringLiteral("list ")) + path);
    }
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.fnameflg = true;
    EngineRun run;
    Emissions emissions(run.engine());
    QVERIFY(run.run(condition));
    emissions.meetThreads();
    QStringList seen;
    for (const QStringList &events : qAsConst(emissions.events)) {
        int i = events.indexOf(QStringLiteral("searched"));
        for (; i >= 0 && i < events.size(); i += 3) {
            QVERIFY(i + 2 < events.size());
            QCOMPARE(events.at(i), QStringLiteral("searched"));
            QCOMPARE(events.at(i + 1), QStringLiteral("report ") + events.at(i + 2).mid(5));
            seen.append(events.at(i + 2));
        }
    }
    std::sort(seen.begin(), seen.end());
    std::sort(searched.begin(), searched.end());
    QCOMPARE(seen, searched);
}

void TextGrepCoreSignalsTest::queueLengthsAreToldBeforeEachEntryIsTaken()
{
    const ScratchFolder tree;
    writeFiveFiles(tree);
    EngineRun run;
    Emissions emissions(run.engine());
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    emissions.meetThreads();
    // Each of the two folders when it was alone in the queue, and an empty
    // queue for each walker that ended.
    QCOMPARE(emissions.folderQueueLengths.count(1), 2);
    QVERIFY(emissions.folderQueueLengths.count(0) >= 1);
    QCOMPARE(emissions.folderQueueLengths.count(1) + emissions.folderQueueLengths.count(0),
             emissions.folderQueueLengths.size());
    // At the folders: none, and the upper folder's three. At the files: 5 to 1.
    QCOMPARE(emissions.fileQueueLengths.mid(0, 2), QVector<int>({0, 3}));
    for (const int length : {5, 4, 2, 1})
        QCOMPARE(emissions.fileQueueLengths.count(length), 1);
    QCOMPARE(emissions.fileQueueLengths.count(3), 2);
    QVERIFY(emissions.fileQueueLengths.count(0) >= 2);
}

void TextGrepCoreSignalsTest::threadsCountTheEntriesTheyListAndTheFilesTheyLoad()
{
    const ScratchFolder tree;
    writeFiveFiles(tree);
    EngineRun run;
    Emissions emissions(run.engine());
    QVERIFY(run.run(countLinesIn({tree.path()})));
    emissions.meetThreads();
    QVERIFY(emissions.threadsTellTheirOwnNumber);
    QMap<int, QVector<int>> byThread;
    for (const auto &count : qAsConst(emissions.threadCounts))
        byThread[count.first].append(count.second);
    // The one loader tells each file, the walkers each folder they listed: four
    // entries and two.
    QVector<QVector<int>> counts = byThread.values().toVector();
    QCOMPARE(counts.removeAll({1, 2, 3, 4, 5}), 1);
    std::sort(counts.begin(), counts.end());
    const bool oneWalker = counts == QVector<QVector<int>>{{4, 6}};
    const bool twoWalkers = counts == QVector<QVector<int>>{{2}, {4}};
    QVERIFY(oneWalker || twoWalkers);
}

namespace {

std::mutex messageMutex;
QStringList messages; // guarded by messageMutex

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    const std::lock_guard lock(messageMutex);
    messages.append(message);
}

/// What is written to the debug log while it lives.
class MessageKeeper {
    Q_DISABLE_COPY(MessageKeeper)

public:
    MessageKeeper() : m_former(qInstallMessageHandler(&keepMessage)) { messages.clear(); }
    ~MessageKeeper() { qInstallMessageHandler(m_former); }

    static QStringList kept()
    {
        const std::lock_guard lock(messageMutex);
        return messages;
    }

private:
    const QtMessageHandler m_former;
};

} // namespace

void TextGrepCoreSignalsTest::theLoadPhaseIsWrittenToTheDebugLog()
{
    const ScratchFolder tree;
    writeFiveFiles(tree);
    EngineRun run;
    const MessageKeeper keeper;
    QVERIFY(run.run(searchFor(key(), {tree.path()})));
    const QStringList lines = MessageKeeper::kept();
    QCOMPARE(lines.size(), 1);
    const QRegExp form(QStringLiteral("doWalkDirs dsemcnt= 0 fcnt= 5 thcnt= [1-9][0-9]*"));
    QVERIFY2(form.exactMatch(lines.first()), qPrintable(lines.first()));
    QVERIFY(run.run(countLinesIn({tree.path()})));
    QCOMPARE(MessageKeeper::kept().size(), 1);
}

void TextGrepCoreSignalsTest::anUnknownRefusalIsWrittenToTheDebugLog()
{
    const MessageKeeper keeper;
    const QString path = QStringLiteral("/a/b.txt");
    TextGrepCore::refusalMessage(-2, 1, path);
    QVERIFY(MessageKeeper::kept().isEmpty());
    TextGrepCore::refusalMessage(-1, 1, path);
    QCOMPARE(MessageKeeper::kept(),
             QStringList{QStringLiteral("doLoadFile -1 getFileCodeSet() error \"/a/b.txt\"")});
}

void TextGrepCoreSignalsTest::aWalkerLooksForAnAbortEveryHundredEntries()
{
    const ScratchFolder tree;
    for (int i = 0; i < 250; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), "some key\n");
    SearchCondition condition = searchFor(key(), {tree.path()});
    condition.mask = QStringLiteral("*.none"); // each entry is named once
    EngineRun run;
    int named = 0; // by the one walker
    connect(
        run.engine(), &TextGrepCore::progressFileReport, this,
        [&run, &named] {
            if (++named == 2)
                run.engine()->abort();
        },
        Qt::DirectConnection);
    QVERIFY(run.run(condition));
    QCOMPARE(named, 101);
    QCOMPARE(run.finishedFlags, QVector<bool>{true});
}

void TextGrepCoreSignalsTest::theListFileIsLeftWithinAHundredEntriesOfAnAbort()
{
    const ScratchFolder tree;
    QStringList entries;
    for (int i = 0; i < 250; ++i)
        entries.append(QStringLiteral("/none/%1.txt").arg(i));
    const QString list = tree.write(QStringLiteral("list.ini"),
                                    QByteArrayLiteral("files=")
                                        + entries.join(QStringLiteral(", ")).toUtf8() + '\n');
    EngineRun run;
    int handled = 0; // by the supervisor
    connect(
        run.engine(), &TextGrepCore::progressFileCount, this,
        [&run, &handled] {
            if (++handled == 2)
                run.engine()->abort();
        },
        Qt::DirectConnection);
    QVERIFY(run.run(searchFor(key(), {QStringLiteral("@") + list})));
    QCOMPARE(handled, 101);
    QCOMPARE(run.announced, QVector<int>{250});
    QCOMPARE(run.finishedFlags, QVector<bool>{true});
}

QTEST_GUILESS_MAIN(TextGrepCoreSignalsTest)
#include "TextGrepCoreSignalsTest.moc"
