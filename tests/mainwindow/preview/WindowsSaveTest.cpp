#include "mainwindow/preview/PreviewSaver.h"

#include "engine/WindowsName.h"
#include "tests/mainwindow/preview/SavedFiles.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WindowsLock.h"

#include <QTest>

using Outcome = PreviewSaver::Outcome;
using Result = PreviewSaver::Outcome::Result;
using SavedFiles::filesIn;
using SavedFiles::load;

class WindowsSaveTest : public QObject {
    Q_OBJECT

private slots:
    void theAttributesAreKept_data();
    void theAttributesAreKept();
    void aBackupThatMayOnlyBeReadIsReplaced();
    void aFileThatAnotherHoldsIsLeftAsItIs_data();
    void aFileThatAnotherHoldsIsLeftAsItIs();
    void aBackupThatAnotherHoldsStopsTheSave();
    void aFileThatCannotBeReadIsNotWrittenOver();
    void aDevicesNameIsSaved();
    void aFileBeyondTwoHundredAndSixtyUnitsIsSaved();
};

namespace {

const QString kName = QStringLiteral("f.txt");
const QString kBackup = QStringLiteral("f.txt.bak");
const QString kNew = QStringLiteral("new\n");

/// What the box says for an outcome in which nothing was changed.
QString refusal(const ScratchFolder &folder, Result result)
{
    if (result == Result::WriteFailed)
        return QStringLiteral("セーブ中にエラーが発生しました");
    return QStringLiteral(" %1\n　　　　　　↓　　　　　\n %2\nリネーム失敗しました。")
        .arg(folder.filePath(kName), folder.filePath(kBackup));
}

bool setAttributes(const QString &path, quint32 attributes)
{
    return SetFileAttributesW(WindowsName::of(path).c_str(), attributes) != 0;
}

quint32 attributesOf(const QString &path)
{
    return GetFileAttributesW(WindowsName::of(path).c_str());
}

} // namespace

void WindowsSaveTest::theAttributesAreKept_data()
{
    QTest::addColumn<quint32>("attributes");
    QTest::newRow("read-only") << quint32(FILE_ATTRIBUTE_READONLY);
    QTest::newRow("hidden") << quint32(FILE_ATTRIBUTE_HIDDEN);
    QTest::newRow("both") << quint32(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
}

void WindowsSaveTest::theAttributesAreKept()
{
    QFETCH(quint32, attributes);
    const ScratchFolder folder;
    const QString path = folder.write(kName, "old text\n");
    QVERIFY(setAttributes(path, attributes));
    const quint32 asked = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
    if ((attributesOf(path) & asked) != attributes)
        QSKIP("Wine hides no file that this user may only read");
    PreviewFile file = load(path);
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&file, kNew);
    QCOMPARE(outcome.message, QStringLiteral("セーブしました"));
    QCOMPARE(folder.read(kName), QByteArray("new\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
    QCOMPARE(attributesOf(path) & asked, attributes);
    for (const QString &name : {kName, kBackup})
        QVERIFY(setAttributes(folder.filePath(name), FILE_ATTRIBUTE_NORMAL));
}

void WindowsSaveTest::aBackupThatMayOnlyBeReadIsReplaced()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    QVERIFY(setAttributes(folder.write(kBackup, "older\n"), FILE_ATTRIBUTE_READONLY));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(folder.read(kBackup), QByteArray("old text\n"));
}

void WindowsSaveTest::aFileThatAnotherHoldsIsLeftAsItIs_data()
{
    QTest::addColumn<quint32>("shared");
    QTest::newRow("others may read") << quint32(FILE_SHARE_READ);
    QTest::newRow("others may write") << quint32(FILE_SHARE_READ | FILE_SHARE_WRITE);
}

void WindowsSaveTest::aFileThatAnotherHoldsIsLeftAsItIs()
{
    QFETCH(quint32, shared);
    const ScratchFolder folder;
    const QString path = folder.write(kName, "old text\n");
    PreviewFile file = load(path);
    {
        const WindowsLock lock(path, shared);
        QVERIFY(lock.isHeld());
        const Outcome outcome = PreviewSaver::save(&file, kNew);
        QVERIFY(outcome.result == Result::RenameFailed || outcome.result == Result::WriteFailed);
        QCOMPARE(outcome.message, refusal(folder, outcome.result));
        QCOMPARE(filesIn(folder), QStringList(kName));
    }
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
}

void WindowsSaveTest::aBackupThatAnotherHoldsStopsTheSave()
{
    const ScratchFolder folder;
    PreviewFile file = load(folder.write(kName, "old text\n"));
    const QString backup = folder.write(kBackup, "older\n");
    {
        const WindowsLock lock(backup, FILE_SHARE_READ);
        QVERIFY(lock.isHeld());
        const Outcome outcome = PreviewSaver::save(&file, kNew);
        QCOMPARE(outcome.result, Result::RenameFailed);
        QCOMPARE(outcome.message, refusal(folder, outcome.result));
    }
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
    QCOMPARE(folder.read(kBackup), QByteArray("older\n"));
    QCOMPARE(filesIn(folder), QStringList({kName, kBackup}));
}

void WindowsSaveTest::aFileThatCannotBeReadIsNotWrittenOver()
{
    const ScratchFolder folder;
    const QString path = folder.write(kName, "old text\n");
    PreviewFile file;
    {
        const WindowsLock lock(path, 0);
        QVERIFY(lock.isHeld());
        file = load(path);
    }
    QVERIFY(!file.readable);
    const Outcome outcome = PreviewSaver::save(&file, kNew);
    QCOMPARE(outcome.result, Result::WriteFailed);
    QCOMPARE(outcome.message, refusal(folder, outcome.result));
    QCOMPARE(folder.read(kName), QByteArray("old text\n"));
}

void WindowsSaveTest::aDevicesNameIsSaved()
{
    const ScratchFolder folder;
    const QString path = folder.filePath(QStringLiteral("aux.txt"));
    {
        const HANDLE handle = CreateFileW(WindowsName::of(path).c_str(), GENERIC_WRITE, 0, nullptr,
                                          CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD count = 0;
        QVERIFY(WriteFile(handle, "old text\n", 9, &count, nullptr) != 0);
        CloseHandle(handle);
    }
    PreviewFile file = load(path);
    QCOMPARE(file.text, QStringLiteral("old text\n"));
    QCOMPARE(PreviewSaver::save(&file, kNew).result, Result::Saved);
    QCOMPARE(load(path).text, kNew);
    for (const char *suffix : {"", ".bak"})
        QVERIFY(DeleteFileW(WindowsName::of(path + QLatin1String(suffix)).c_str()) != 0);
}

void WindowsSaveTest::aFileBeyondTwoHundredAndSixtyUnitsIsSaved()
{
    const ScratchFolder folder;
    QString below;
    for (int i = 0; i < 8; ++i)
        below += QString(40, QChar(0x3042)) + QLatin1Char('/');
    const QString path = folder.write(below + kName, "old text\n");
    QVERIFY(path.size() > 260);
    PreviewFile file = load(path);
    QCOMPARE(file.text, QStringLiteral("old text\n"));
    QCOMPARE(PreviewSaver::save(&file, kNew).message, QStringLiteral("セーブしました"));
    QCOMPARE(folder.read(below + kName), QByteArray("new\n"));
    QCOMPARE(folder.read(below + kBackup), QByteArray("old text\n"));
    QCOMPARE(QDir(folder.filePath(below)).entryList(QDir::Files, QDir::Name),
             QStringList({kName, kBackup}));
}

QTEST_GUILESS_MAIN(WindowsSaveTest)
#include "WindowsSaveTest.moc"
