#include "mainwindow/history/ResultLogFile.h"

#include "settings/SaveSteps.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WindowsLock.h"

#include <QDir>
#include <QTest>

/// A log while another program, such as a virus scanner, has it open.
class WindowsHeldLogTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { SaveSteps::setObserver(nullptr); }
    void aLogHeldForAMomentIsReplaced();
    void aLogHeldForGoodStaysWhole();
    void aLogThatNobodyElseMayOpenIsNotRead();
};

namespace {

const QString kName = QStringLiteral("sarvik.log");

ResultLog logOf(const QString &text)
{
    ResultLog log;
    log.text = text;
    return log;
}

} // namespace

void WindowsHeldLogTest::aLogHeldForAMomentIsReplaced()
{
    const ScratchFolder folder;
    const QString path = folder.filePath(kName);
    QVERIFY(ResultLogFile::write(path, logOf(QStringLiteral("old text"))));
    WindowsLock lock(path, FILE_SHARE_READ);
    QVERIFY(lock.isHeld());
    int failures = 0;
    // Neither a slow holder nor a slow test changes what happens.
    SaveSteps::setObserver([&](SaveSteps::Step step) {
        if (step == SaveSteps::Step::TryAgain && failures++ == 0)
            lock.release();
        return true;
    });
    QVERIFY(ResultLogFile::write(path, logOf(QStringLiteral("new text"))));
    QVERIFY(failures > 0);
    QVERIFY(folder.read(kName).endsWith("new text"));
}

void WindowsHeldLogTest::aLogHeldForGoodStaysWhole()
{
    const ScratchFolder folder;
    const QString path = folder.filePath(kName);
    QVERIFY(ResultLogFile::write(path, logOf(QStringLiteral("old text"))));
    {
        const WindowsLock lock(path, FILE_SHARE_READ);
        QVERIFY(lock.isHeld());
        QVERIFY(!ResultLogFile::write(path, logOf(QStringLiteral("new text"))));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList(kName));
    }
    QVERIFY(folder.read(kName).endsWith("old text"));
    QVERIFY(ResultLogFile::write(path, logOf(QStringLiteral("new text"))));
}

void WindowsHeldLogTest::aLogThatNobodyElseMayOpenIsNotRead()
{
    const ScratchFolder folder;
    const QString path = folder.filePath(kName);
    QVERIFY(ResultLogFile::write(path, logOf(QStringLiteral("text"))));
    const WindowsLock lock(path, 0);
    QVERIFY(lock.isHeld());
    QVERIFY(!ResultLogFile::read(path));
    QCOMPARE(ResultLogFile::label(path), QStringLiteral("　---　"));
}

QTEST_GUILESS_MAIN(WindowsHeldLogTest)
#include "WindowsHeldLogTest.moc"
