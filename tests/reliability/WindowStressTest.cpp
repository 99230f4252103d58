#include "tests/mainwindow/WindowFixture.h"

#include "settings/AppSettings.h"
#include "tests/support/ProcessMemory.h"
#include "tests/support/TestLength.h"

#include <QApplication>
#include <QTest>
#include <QTextDocument>

#include <random>

/// What an impatient user does to the window while it searches.
class WindowStressTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { WindowFixture::waitForFading(); }
    void aWindowSurvivesWhatIsDoneToItDuringASearch();
    void searchesLeaveNoMemoryBehind();

private:
    void meddle();
    void changeSettings();
    void pause();
    void closeTheWindow();
    void verifyWholeSearch(const QString &keyword);
    int number(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    WindowFixture m_fixture;
    std::mt19937 m_random{20260401};
    // What was done to a window whose search was running.
    int m_closed = 0;
    int m_deleted = 0;
    int m_changed = 0;
};

namespace {

constexpr int kFolders = 20;
constexpr int kFiles = 10;
constexpr int kHitsInAFile = 3;

void invoke(MainWindow &window, const char *slot)
{
    QVERIFY2(QMetaObject::invokeMethod(&window, slot, Qt::DirectConnection), slot);
}

} // namespace

void WindowStressTest::initTestCase()
{
    const QByteArray content = QByteArray("hay\na needle in it\nstraw\n").repeated(kHitsInAFile);
    for (int folder = 0; folder < kFolders; ++folder) {
        for (int file = 0; file < kFiles; ++file)
            m_fixture.tree.write(QStringLiteral("%1/%2.txt").arg(folder).arg(file), content);
    }
}

void WindowStressTest::pause()
{
    constexpr int kLongestMilliseconds = 250;
    if (number(3) != 0)
        QTest::qWait(number(kLongestMilliseconds));
}

/// Whatever can be done without a dialog that waits for an answer.
void WindowStressTest::meddle()
{
    static const char *const actions[] = {"arrowBack", "arrowForward", "makeBackMenu",
                                          "previewFile", "lineCountGrep"};
    MainWindow &window = m_fixture.window();
    switch (number(4)) {
    case 0:
        m_fixture.searchButton()->click();
        break;
    case 1:
        m_fixture.fill(m_fixture.tree.path(), QStringLiteral("*.txt"), QStringLiteral("straw"));
        m_fixture.searchButton()->click();
        break;
    case 2:
        changeSettings();
        m_fixture.resultView()->moveCursor(QTextCursor::Down);
        break;
    default:
        invoke(window, actions[number(5)]);
    }
}

/// What a search reads, to values with which it finds the same.
void WindowStressTest::changeSettings()
{
    m_changed += m_fixture.isRunning() ? 1 : 0;
    AppSettings &settings = AppSettings::instance();
    settings.pathhistory.append(m_fixture.tree.path());
    settings.bigsize = 1 + number(9);
    settings.codechksize = 1024 * (1 + number(9));
    settings.newfileDetectsize = 512 * (1 + number(9));
    settings.tabcolm = 1 + number(9);
    settings.excusionfile = QStringList{QStringLiteral("%1.none").arg(number(1000))};
    settings.excusiondir = QStringList{QStringLiteral("none%1").arg(number(1000))};
}

void WindowStressTest::verifyWholeSearch(const QString &keyword)
{
    QVERIFY(m_fixture.waitUntilIdle());
    QVERIFY(m_fixture.search(m_fixture.tree.path(), QStringLiteral("*.txt"), keyword));
    QMap<QString, QStringList> hits;
    QString file;
    int heads = 0;
    int ends = 0;
    for (const QString &line : m_fixture.resultText().split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("::"))) {
            file = line;
            ++heads;
        } else if (line.startsWith(QLatin1Char(' ')) && line.contains(keyword)) {
            hits[file].append(line);
        }
        ends += line.startsWith(QStringLiteral("該当行数")) ? 1 : 0;
    }
    QCOMPARE(heads, kFolders * kFiles);
    QCOMPARE(hits.size(), kFolders * kFiles);
    // The same lines in every file, and each of them once.
    QStringList once = hits.first();
    QCOMPARE(once.removeDuplicates(), 0);
    QCOMPARE(once.size(), kHitsInAFile);
    for (const QStringList &lines : qAsConst(hits))
        QCOMPARE(lines, hits.first());
    QCOMPARE(ends, 1);
}

/// As the user does, after which the program's loop still turns, or all at once.
void WindowStressTest::closeTheWindow()
{
    const int running = m_fixture.isRunning() ? 1 : 0;
    if (number(2) == 0) {
        m_closed += running;
        QVERIFY(m_fixture.window().close());
        pause();
    } else {
        m_deleted += running;
    }
    m_fixture.close();
}

void WindowStressTest::aWindowSurvivesWhatIsDoneToItDuringASearch()
{
    for (int round = 0; round < TestLength::rounds(50, 500); ++round) {
        m_fixture.open();
        m_fixture.fill(m_fixture.tree.path(), QStringLiteral("*.txt"), QStringLiteral("needle"));
        m_fixture.searchButton()->click();
        // At times while it has hardly begun, on however busy a machine.
        if (round % 5 == 0) {
            changeSettings();
            closeTheWindow();
            continue;
        }
        for (int acts = number(6); acts > 0; --acts) {
            pause();
            meddle();
            if (QTest::currentTestFailed())
                return;
        }
        pause();
        if (number(4) == 0)
            verifyWholeSearch(QStringLiteral("needle"));
        if (QTest::currentTestFailed())
            return;
        closeTheWindow(); // a run or not
    }
    QVERIFY2(m_closed > 0, "no run was going on");
    QVERIFY2(m_deleted > 0, "no run was going on");
    QVERIFY2(m_changed > 0, "no run was going on");
    m_fixture.open();
    verifyWholeSearch(QStringLiteral("straw"));
    m_fixture.close();
}

void WindowStressTest::searchesLeaveNoMemoryBehind()
{
#ifdef SARVIK_SANITIZED
    QSKIP("a sanitizer needs memory of its own");
#endif
    const int warmUp = TestLength::rounds(20, 100);
    const int searches = TestLength::rounds(40, 400);
    m_fixture.open();
    qint64 before = 0;
    for (int i = 1; i <= searches && !QTest::currentTestFailed(); ++i) {
        const QString folder = m_fixture.tree.filePath(QStringLiteral("%1/").arg(i % kFolders));
        QVERIFY(m_fixture.search(folder, QStringLiteral("*.txt"),
                                 QStringLiteral("needle|%1").arg(i).left(6 + i % 3)));
        if (i == warmUp)
            before = ProcessMemory::ownBytes();
    }
    const qint64 after = ProcessMemory::ownBytes();
    qInfo("%lld bytes, %lld after the first %d", after, before, warmUp);
    QVERIFY2(after <= before + before / 10, qPrintable(QString::number(after)));
    m_fixture.close();
}

QTEST_MAIN(WindowStressTest)
#include "WindowStressTest.moc"
