#include "engine/FolderLister.h"
#include "engine/RegularFile.h"
#include "engine/WindowsName.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WindowsLock.h"

#include <QTest>

#include <algorithm>

class WindowsFilesTest : public QObject {
    Q_OBJECT

private slots:
    void everyAttributeIsListedAndRead_data();
    void everyAttributeIsListedAndRead();
    void namesThatOtherProgramsCannotOpenAreListedAndRead_data();
    void namesThatOtherProgramsCannotOpenAreListedAndRead();
    void aFileBeyondTwoHundredAndSixtyUnitsIsListedReadAndSearched();
    void aFileThatAnotherWritesIsRead();
    void aFileThatNobodyElseMayOpenIsNotOpen();
    void aNameInOtherLettersIsTheSameFile();

private:
    QStringList listed() const { return listed(m_folder.path()); }
    static QStringList listed(const QString &folder);
    /// By the name as it stands, which may be none for the toolkit.
    void make(const QString &name) const;

    const ScratchFolder m_folder;
};

QStringList WindowsFilesTest::listed(const QString &folder)
{
    QStringList names;
    const QVector<FolderEntry> entries = NativeFolderLister().list(
        folder, [](const FolderIdentity &) { return true; }, [] { return true; });
    for (const FolderEntry &entry : entries) {
        if (entry.kind == FolderEntry::File)
            names.append(entry.name);
    }
    return names;
}

void WindowsFilesTest::make(const QString &name) const
{
    const HANDLE handle =
        CreateFileW(WindowsName::of(m_folder.filePath(name)).c_str(), GENERIC_WRITE, 0, nullptr,
                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    QVERIFY(handle != INVALID_HANDLE_VALUE);
    DWORD count = 0;
    QVERIFY(WriteFile(handle, "abc", 3, &count, nullptr) != 0 && count == 3);
    CloseHandle(handle);
}

void WindowsFilesTest::everyAttributeIsListedAndRead_data()
{
    QTest::addColumn<quint32>("attributes");
    QTest::newRow("read-only") << quint32(FILE_ATTRIBUTE_READONLY);
    QTest::newRow("hidden") << quint32(FILE_ATTRIBUTE_HIDDEN);
    QTest::newRow("system") << quint32(FILE_ATTRIBUTE_SYSTEM);
    QTest::newRow("all") << quint32(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN
                                    | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE);
}

void WindowsFilesTest::everyAttributeIsListedAndRead()
{
    QFETCH(quint32, attributes);
    const QString path = m_folder.write(QStringLiteral("attributes.txt"), "abc");
    const std::wstring name = WindowsName::of(path);
    QVERIFY(SetFileAttributesW(name.c_str(), attributes) != 0);
    QVERIFY(listed().contains(QStringLiteral("attributes.txt")));
    QCOMPARE(RegularFile(path).size(), qint64(3));
    QVERIFY(SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL) != 0);
}

void WindowsFilesTest::namesThatOtherProgramsCannotOpenAreListedAndRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a dot at the end") << QStringLiteral("dot.");
    QTest::newRow("a blank at the end") << QStringLiteral("blank ");
    QTest::newRow("a device") << QStringLiteral("aux.txt");
    QTest::newRow("eighty characters") << QString(80, QChar(0x3042));
}

void WindowsFilesTest::namesThatOtherProgramsCannotOpenAreListedAndRead()
{
    QFETCH(QString, name);
    make(name);
    QVERIFY(listed().contains(name));
    QCOMPARE(RegularFile(m_folder.filePath(name)).size(), qint64(3));
    QVERIFY(DeleteFileW(WindowsName::of(m_folder.filePath(name)).c_str()) != 0);
}

void WindowsFilesTest::aFileBeyondTwoHundredAndSixtyUnitsIsListedReadAndSearched()
{
    const ScratchFolder tree;
    QString folder = tree.path();
    for (int i = 0; i < 8; ++i)
        folder += QString(40, QChar(0x3042 + i)) + QLatin1Char('/');
    const QString relative = folder.mid(tree.path().size());
    tree.write(relative + QStringLiteral("a.txt"), "some key\n");
    tree.write(relative + QStringLiteral("b.txt"), "nothing\n");
    const QString path = folder + QStringLiteral("a.txt");
    QVERIFY(path.size() > 260);
    QStringList names = listed(folder);
    names.sort();
    QCOMPARE(names, QStringList({QStringLiteral("a.txt"), QStringLiteral("b.txt")}));
    QCOMPARE(RegularFile(path).size(), qint64(9));
    EngineRun run;
    QVERIFY(run.run(searchFor(QStringLiteral("key"), {tree.path()})));
    QCOMPARE(run.pathsWithHits(), QStringList(path));
    QCOMPARE(run.searched, 2);
    QVERIFY(run.errors.isEmpty());
}

void WindowsFilesTest::aFileThatAnotherWritesIsRead()
{
    const QString path = m_folder.write(QStringLiteral("written.log"), "abc");
    const WindowsLock lock(path, FILE_SHARE_READ);
    QVERIFY(lock.isHeld());
    QCOMPARE(RegularFile(path).size(), qint64(3));
}

void WindowsFilesTest::aFileThatNobodyElseMayOpenIsNotOpen()
{
    const QString path = m_folder.write(QStringLiteral("locked.txt"), "abc");
    const WindowsLock lock(path, 0);
    QVERIFY(lock.isHeld());
    QVERIFY(!RegularFile(path).isOpen());
    QVERIFY(listed().contains(QStringLiteral("locked.txt")));
}

void WindowsFilesTest::aNameInOtherLettersIsTheSameFile()
{
    m_folder.write(QStringLiteral("Case.TXT"), "abc");
    QCOMPARE(RegularFile(m_folder.filePath(QStringLiteral("cASE.txt"))).size(), qint64(3));
    const QStringList names = listed();
    QCOMPARE(int(std::count_if(names.begin(), names.end(),
                               [](const QString &name) {
                                   return name.compare(QLatin1String("case.txt"),
                                                       Qt::CaseInsensitive)
                                       == 0;
                               })),
             1);
}

QTEST_GUILESS_MAIN(WindowsFilesTest)
#include "WindowsFilesTest.moc"
