#include "mainwindow/preview/NativeFile.h"

#include "tests/support/FileTime.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFile>
#include <QTest>

class NativeFileTest : public QObject {
    Q_OBJECT

private slots:
    void aStampIsTheSameUntilTheFileChanges();
    void aStampTellsWhatChanged_data();
    void aStampTellsWhatChanged();
    void whatIsNotThereHasNoStampAndNoAttributes();
    void onlyAFileIsRegular_data();
    void onlyAFileIsRegular();
    void attributesAreSetAgain();
    void aNewFileHasTheContentAndIsItsOwnersOnly();
    void aFileThatIsThereIsNotWrittenOver();
    void aMissingFolderTakesNoNewFile();
    void aRenamedFileReplacesAnother();
    void aSecondNameIsTheSameFile();
    void aSecondNameReplacesNothing();
    void aCopyIsAFileOfItsOwn();
    void aCopyReplacesNothing();
    void whatIsNoFileIsNotCopied();
    void aNameIsTakenAlsoByALinkThatLeadsNowhere();
    void theTargetOfALinkIsTheFile();
};

namespace {

const QString kA = QStringLiteral("a");
const QString kB = QStringLiteral("b");

} // namespace

void NativeFileTest::aStampIsTheSameUntilTheFileChanges()
{
    const ScratchFolder folder;
    const QString path = folder.write(kA, "text");
    const NativeFile::Stamp stamp = NativeFile::stampOf(path);
    QVERIFY(stamp.exists && stamp.regular);
    QCOMPARE(stamp.size, qint64(4));
    QVERIFY(stamp == NativeFile::stampOf(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    file.readAll();
    QVERIFY(stamp == NativeFile::stampOf(path));
}

void NativeFileTest::aStampTellsWhatChanged_data()
{
    QTest::addColumn<QString>("change");
    for (const char *change : {"size", "time", "another file", "removed"})
        QTest::newRow(change) << QString::fromLatin1(change);
}

void NativeFileTest::aStampTellsWhatChanged()
{
    QFETCH(QString, change);
    const ScratchFolder folder;
    const QDate day(2026, 2, 3);
    const QString path = folder.write(kA, "text");
    FileTime::setDayOfChange(path, day);
    const NativeFile::Stamp stamp = NativeFile::stampOf(path);
    if (change == QLatin1String("size")) {
        QVERIFY(QFile::resize(path, 5));
        FileTime::setDayOfChange(path, day);
    } else if (change == QLatin1String("time")) {
        FileTime::setDayOfChange(path, day.addDays(1));
    } else if (change == QLatin1String("another file")) {
        const QString other = folder.write(kB, "text");
        FileTime::setDayOfChange(other, day);
        QVERIFY(NativeFile::rename(other, path));
        if (stamp.id == 0)
            QSKIP("files have no identity here");
    } else {
        folder.remove(kA);
    }
    QVERIFY(stamp != NativeFile::stampOf(path));
}

void NativeFileTest::whatIsNotThereHasNoStampAndNoAttributes()
{
    const ScratchFolder folder;
    const QString path = folder.filePath(kA);
    QVERIFY(NativeFile::stampOf(path) == NativeFile::Stamp());
    QVERIFY(!NativeFile::stampOf(path).exists);
    QCOMPARE(NativeFile::attributesOf(path), NativeFile::kNoAttributes);
    QVERIFY(!NativeFile::setAttributes(path, 0644));
    QVERIFY(!NativeFile::remove(path));
}

void NativeFileTest::onlyAFileIsRegular_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("regular");
    QTest::newRow("file") << QByteArray("file") << true;
    QTest::newRow("link to a file") << QByteArray("link") << true;
    QTest::newRow("folder") << QByteArray("folder") << false;
    QTest::newRow("FIFO") << QByteArray("fifo") << false;
}

void NativeFileTest::onlyAFileIsRegular()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, regular);
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    tree.file("file");
    tree.folder("folder");
    if (!tree.link("link", "file") || !tree.fifo("fifo"))
        QSKIP("no links or FIFOs here");
    const NativeFile::Stamp stamp = NativeFile::stampOf(folder.path() + QString::fromUtf8(name));
    QVERIFY(stamp.exists);
    QCOMPARE(stamp.regular, regular);
}

void NativeFileTest::attributesAreSetAgain()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    tree.file("a");
    tree.file("b");
    if (!tree.setMode("a", 0551))
        QSKIP("permissions mean nothing here");
    const quint32 attributes = NativeFile::attributesOf(folder.filePath(kA));
    QCOMPARE(attributes, quint32(0551));
    QVERIFY(NativeFile::setAttributes(folder.filePath(kB), attributes));
    QCOMPARE(NativeFile::attributesOf(folder.filePath(kB)), attributes);
    QVERIFY(NativeFile::setAttributes(folder.filePath(kB), NativeFile::kNoAttributes));
    QCOMPARE(NativeFile::attributesOf(folder.filePath(kB)), attributes);
}

void NativeFileTest::aNewFileHasTheContentAndIsItsOwnersOnly()
{
    const ScratchFolder folder;
    const QByteArray content = QByteArray(3'000'000, 'x') + QByteArray("\0y", 2);
    QCOMPARE(NativeFile::writeNew(folder.filePath(kA), content, QString()),
             NativeFile::Written::Yes);
    QVERIFY(folder.read(kA) == content);
    const auto others = QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
    if (QSysInfo::kernelType() != QLatin1String("winnt"))
        QCOMPARE(QFile::permissions(folder.filePath(kA)) & others, QFileDevice::Permissions());
}

void NativeFileTest::aFileThatIsThereIsNotWrittenOver()
{
    const ScratchFolder folder;
    QCOMPARE(NativeFile::writeNew(folder.write(kA, "old"), "new", QString()),
             NativeFile::Written::Taken);
    QCOMPARE(folder.read(kA), QByteArray("old"));
}

void NativeFileTest::aMissingFolderTakesNoNewFile()
{
    const ScratchFolder folder;
    QCOMPARE(NativeFile::writeNew(folder.filePath(QStringLiteral("no/a")), "new", QString()),
             NativeFile::Written::NotCreated);
}

void NativeFileTest::aRenamedFileReplacesAnother()
{
    const ScratchFolder folder;
    const QString a = folder.write(kA, "a");
    const QString b = folder.write(kB, "b");
    QVERIFY(NativeFile::rename(a, b));
    QCOMPARE(folder.read(kB), QByteArray("a"));
    QVERIFY(!folder.exists(kA));
    QVERIFY(!NativeFile::rename(a, b));
    QCOMPARE(folder.read(kB), QByteArray("a"));
}

void NativeFileTest::aSecondNameIsTheSameFile()
{
    const ScratchFolder folder;
    const QString a = folder.write(kA, "a");
    if (!NativeFile::link(a, folder.filePath(kB)))
        QSKIP("a file has one name here");
    QVERIFY(NativeFile::stampOf(a) == NativeFile::stampOf(folder.filePath(kB)));
    QVERIFY(NativeFile::remove(a));
    QCOMPARE(folder.read(kB), QByteArray("a"));
}

void NativeFileTest::aSecondNameReplacesNothing()
{
    const ScratchFolder folder;
    const QString a = folder.write(kA, "a");
    QVERIFY(!NativeFile::link(a, folder.write(kB, "b")));
    QCOMPARE(folder.read(kB), QByteArray("b"));
}

void NativeFileTest::aCopyIsAFileOfItsOwn()
{
    const ScratchFolder folder;
    const QByteArray content = QByteArray(3'000'000, 'x') + QByteArray("\0y", 2);
    const QString a = folder.write(kA, content);
    const QString b = folder.filePath(kB);
    FileTime::setDayOfChange(a, QDate(2026, 2, 3));
    QVERIFY(QFile::setPermissions(a, QFileDevice::ReadOwner));
    const quint32 attributes = NativeFile::attributesOf(a);
    QVERIFY(NativeFile::copy(a, b));
    QVERIFY(folder.read(kB) == content);
    QCOMPARE(NativeFile::attributesOf(b), attributes);
    QCOMPARE(NativeFile::stampOf(b).changed, NativeFile::stampOf(a).changed);
    NativeFile::clearAttributes(a);
    QVERIFY(NativeFile::remove(a));
    QVERIFY(folder.read(kB) == content);
    QVERIFY(QFile::setPermissions(b, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
}

void NativeFileTest::aCopyReplacesNothing()
{
    const ScratchFolder folder;
    const QString a = folder.write(kA, "a");
    QVERIFY(!NativeFile::copy(a, folder.write(kB, "b")));
    QCOMPARE(folder.read(kB), QByteArray("b"));
}

void NativeFileTest::whatIsNoFileIsNotCopied()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    tree.folder("folder");
    QVERIFY(!NativeFile::copy(folder.filePath(QStringLiteral("folder")), folder.filePath(kB)));
    QVERIFY(!NativeFile::copy(folder.filePath(QStringLiteral("missing")), folder.filePath(kB)));
    if (tree.fifo("fifo"))
        QVERIFY(!NativeFile::copy(folder.filePath(QStringLiteral("fifo")), folder.filePath(kB)));
    QVERIFY(!NativeFile::isTaken(folder.filePath(kB)));
}

void NativeFileTest::aNameIsTakenAlsoByALinkThatLeadsNowhere()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    QVERIFY(!NativeFile::isTaken(folder.filePath(kA)));
    QVERIFY(NativeFile::isTaken(folder.write(kA, "a")));
    if (!tree.link("b", "nowhere"))
        QSKIP("no links here");
    QVERIFY(NativeFile::isTaken(folder.filePath(kB)));
}

void NativeFileTest::theTargetOfALinkIsTheFile()
{
    const ScratchFolder folder;
    TreeBuilder tree(folder.path().toUtf8());
    tree.file("deep/file");
    if (!tree.link("one", "deep/two") || !tree.link("deep/two", "file"))
        QSKIP("no links here");
    const QString file = QDir(folder.path()).canonicalPath() + QStringLiteral("/deep/file");
    QCOMPARE(NativeFile::targetOf(folder.filePath(QStringLiteral("one"))), file);
    const QString plain = folder.filePath(QStringLiteral("deep/file"));
    QCOMPARE(NativeFile::targetOf(plain), plain);
    const QString missing = folder.filePath(QStringLiteral("missing"));
    QCOMPARE(NativeFile::targetOf(missing), missing);
}

QTEST_GUILESS_MAIN(NativeFileTest)
#include "NativeFileTest.moc"
