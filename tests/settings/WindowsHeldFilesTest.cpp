#include "settings/AppSettings.h"
#include "settings/DailyBackup.h"
#include "settings/IniFile.h"
#include "settings/KeywordHistory.h"
#include "settings/SaveSteps.h"
#include "tests/support/FileTime.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WindowsLock.h"

#include <QDate>
#include <QDir>
#include <QTest>

/// Settings and keyword history while another program, such as a virus scanner, has
/// them open.
class WindowsHeldFilesTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { SaveSteps::setObserver(nullptr); }
    void aFileHeldForAMomentIsReplaced_data();
    void aFileHeldForAMomentIsReplaced();
    void aFileHeldForGoodStaysWhole_data();
    void aFileHeldForGoodStaysWhole();
    void aFileHeldForAMomentIsRead();
    void aBackupHeldForAMomentIsMoved();
    void settingsHeldForGoodAreSavedLater();
    void settingsThatCouldNotBeReadAreNotSavedOver();
    void aKeywordHistoryHeldForGoodIsSavedLater();
};

namespace {

const QString kFile = QStringLiteral("a.ini");
const QString kSettings = QStringLiteral("sarvik.ini");
const QString kHistory = QStringLiteral("keywordhistory.ini");

QStringList filesIn(const ScratchFolder &folder)
{
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

bool setKey(const QString &path)
{
    return IniFile(path, IniDocument::Form::Utf8).update([](IniDocument &document) {
        document.setValue(QStringLiteral("key"), QStringLiteral("new"));
    });
}

/// What is held is let go of only when it has been in the way: neither a slow holder nor
/// a slow test changes what happens.
void releaseAtFirstFailure(WindowsLock &lock, int &failures)
{
    SaveSteps::setObserver([&](SaveSteps::Step step) {
        if (step == SaveSteps::Step::TryAgain && failures++ == 0)
            lock.release();
        return true;
    });
}

void addSharingRows()
{
    QTest::addColumn<quint32>("shared");
    QTest::newRow("nobody else") << quint32(0);
    QTest::newRow("others may read") << quint32(FILE_SHARE_READ);
    QTest::newRow("others may write") << quint32(FILE_SHARE_READ | FILE_SHARE_WRITE);
}

} // namespace

void WindowsHeldFilesTest::aFileHeldForAMomentIsReplaced_data()
{
    addSharingRows();
}

void WindowsHeldFilesTest::aFileHeldForAMomentIsReplaced()
{
    QFETCH(quint32, shared);
    const ScratchFolder folder;
    const QString path = folder.write(kFile, "[General]\r\nkey=old\r\nother=1\r\n");
    WindowsLock lock(path, shared);
    QVERIFY(lock.isHeld());
    int failures = 0;
    releaseAtFirstFailure(lock, failures);
    QVERIFY(setKey(path));
    QVERIFY(failures > 0);
    const QByteArray content = folder.read(kFile);
    QVERIFY(content.contains("key=new"));
    QVERIFY(content.contains("other=1"));
    QCOMPARE(filesIn(folder), QStringList(kFile));
}

void WindowsHeldFilesTest::aFileHeldForGoodStaysWhole_data()
{
    addSharingRows();
}

void WindowsHeldFilesTest::aFileHeldForGoodStaysWhole()
{
    QFETCH(quint32, shared);
    const ScratchFolder folder;
    const QByteArray old = "[General]\r\nkey=old\r\n";
    const QString path = folder.write(kFile, old);
    {
        const WindowsLock lock(path, shared);
        QVERIFY(lock.isHeld());
        QVERIFY(!setKey(path));
        QCOMPARE(filesIn(folder), QStringList(kFile));
    }
    QCOMPARE(folder.read(kFile), old);
    QVERIFY(setKey(path));
}

void WindowsHeldFilesTest::aFileHeldForAMomentIsRead()
{
    const ScratchFolder folder;
    const QString path = folder.write(kFile, "[General]\r\nkey=old\r\n");
    WindowsLock lock(path, 0);
    QVERIFY(lock.isHeld());
    int failures = 0;
    releaseAtFirstFailure(lock, failures);
    const auto document = IniFile(path, IniDocument::Form::Utf8).tryRead();
    QVERIFY(document.has_value());
    QVERIFY(failures > 0);
    QCOMPARE(document->text(QStringLiteral("key"), QString()), QStringLiteral("old"));
}

void WindowsHeldFilesTest::aBackupHeldForAMomentIsMoved()
{
    const ScratchFolder folder;
    const QString path = folder.write(kFile, "[General]\r\nkey=old\r\n");
    const QDate today = QDate::currentDate();
    FileTime::setDayOfChange(path, today.addDays(-1));
    const QString newest = folder.write(QStringLiteral("a.ini.bak1"), "older");
    FileTime::setDayOfChange(newest, today.addDays(-2));
    WindowsLock lock(newest, FILE_SHARE_READ);
    QVERIFY(lock.isHeld());
    int failures = 0;
    releaseAtFirstFailure(lock, failures);
    DailyBackup::makeDailyBackup(path, today);
    QVERIFY(failures > 0);
    QVERIFY(folder.read(QStringLiteral("a.ini.bak1")).contains("key=old"));
    QCOMPARE(folder.read(QStringLiteral("a.ini.bak2")), QByteArray("older"));
}

void WindowsHeldFilesTest::settingsHeldForGoodAreSavedLater()
{
    const ScratchFolder folder;
    const QString path = folder.write(kSettings, "[editor]\r\neditor=old.exe\r\n");
    AppSettings settings;
    settings.load(folder.path());
    const QByteArray old = folder.read(kSettings);
    settings.editor = QStringLiteral("new.exe");
    {
        const WindowsLock lock(path, FILE_SHARE_READ);
        QVERIFY(lock.isHeld());
        QVERIFY(!settings.save(folder.path()));
    }
    QCOMPARE(folder.read(kSettings), old);
    QVERIFY(settings.save(folder.path()));
    QVERIFY(folder.read(kSettings).contains("editor=new.exe"));
}

void WindowsHeldFilesTest::settingsThatCouldNotBeReadAreNotSavedOver()
{
    const ScratchFolder folder;
    const QByteArray old = "[editor]\r\neditor=old.exe\r\n";
    const QString path = folder.write(kSettings, old);
    AppSettings settings;
    {
        const WindowsLock lock(path, 0);
        QVERIFY(lock.isHeld());
        settings.load(folder.path());
    }
    QVERIFY(!settings.save(folder.path()));
    QCOMPARE(folder.read(kSettings), old);
}

void WindowsHeldFilesTest::aKeywordHistoryHeldForGoodIsSavedLater()
{
    const ScratchFolder folder;
    const QByteArray old = "[keyword]\r\n001=101first\r\n";
    const QString path = folder.write(kHistory, old);
    KeywordHistory history(100, folder.path());
    history.load();
    history.add(QStringLiteral("second"), true, false, true);
    {
        const WindowsLock lock(path, FILE_SHARE_READ);
        QVERIFY(lock.isHeld());
        QVERIFY(!history.save());
    }
    QCOMPARE(folder.read(kHistory), old);
    QVERIFY(history.save());
    KeywordHistory saved(100, folder.path());
    saved.load();
    QCOMPARE(saved.keywords(), QStringList({QStringLiteral("second"), QStringLiteral("first")}));
}

QTEST_GUILESS_MAIN(WindowsHeldFilesTest)
#include "WindowsHeldFilesTest.moc"
