#include "engine/FileReader.h"

#include "engine/NativePath.h"
#include "engine/TextDecoder.h"
#include "tests/support/OpenWatch.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <atomic>
#include <cstring>
#include <memory>
#include <thread>

using Status = FileReader::Status;
using TypeCheck = FileReader::TypeCheck;

namespace {

constexpr qint64 kNoLimit = kLargestText;

/// Every byte tells where it stands, so that a piece that is missing, doubled
/// or left over from another file shows.
char byteAt(qint64 position)
{
    return static_cast<char>((position * 31 + position / 251 + position / 65521) & 0xFF);
}

QByteArray bytesOf(qint64 size)
{
    QByteArray bytes(static_cast<int>(size), Qt::Uninitialized);
    char *const data = bytes.data();
    for (qint64 i = 0; i < size; ++i)
        data[i] = byteAt(i);
    return bytes;
}

QByteArray contentOf(const FileReader &reader)
{
    return QByteArray(reader.content(), static_cast<int>(reader.size()));
}

/// The system itself may give zeros for what is cut off while it reads.
bool holdsTheBytesOrZeros(const FileReader &reader, const QByteArray &bytes)
{
    if (std::memcmp(reader.content(), bytes.constData(), static_cast<size_t>(reader.size())) == 0)
        return true;
    for (qint64 i = 0; i < reader.size(); ++i) {
        if (reader.content()[i] != bytes.at(static_cast<int>(i)) && reader.content()[i] != 0)
            return false;
    }
    return true;
}

} // namespace

class FileReaderTest : public QObject {
    Q_OBJECT

private slots:
    void aLargeFileComesInPieces();
    void aPieceThatIsAskedForAgainIsLonger();
    void theWholeFileCanBeHadAfterSomePieces();
    void aReaderThatIsToldToStopEndsThere();
    void init();
    void aFileIsReadWhole_data();
    void aFileIsReadWhole();
    void aFileAsLargeAsTheLimitIsRead_data();
    void aFileAsLargeAsTheLimitIsRead();
    void noTextIsLargerThanTheProgramCanHold();
    void anEmptyFileIsReadWithAnyLimit();
    void oneReaderReadsOneFileAfterAnother();
    void aFailureForgetsTheFileBefore();
    void aMissingFileCannotBeOpened_data();
    void aMissingFileCannotBeOpened();
    void aVanishedFileCannotBeOpened();
    void aFileWithoutPermissionCannotBeOpened();
    void onlyRegularFilesAreOpened_data();
    void onlyRegularFilesAreOpened();
    void aListedNameThatIsNoFileAnyMoreIsRefused();
    void linksToFilesAreRead();
    void namesThatAreNoValidTextAreRead();
    void virtualFilesWithoutASizeAreReadWhole_data();
    void virtualFilesWithoutASizeAreReadWhole();
    void virtualFilesWithoutASizeEndAtTheLimit();
    void virtualFilesThatPromiseTooMuchAreRead();
    void aGrowingFileIsReadUpToTheLimit();
    void aShrinkingFileIsReadUpToItsEnd();
    void nothingStaysOpen();

private:
    QString path(const QByteArray &name) const
    {
        return NativePath::fromNative(m_tree->path(name));
    }

    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<TreeBuilder> m_tree;
};

void FileReaderTest::init()
{
    m_tree.reset();
    m_folder = std::make_unique<ScratchFolder>();
    m_tree = std::make_unique<TreeBuilder>(NativePath::toNative(m_folder->path()));
}

void FileReaderTest::aFileIsReadWhole_data()
{
    QTest::addColumn<qint64>("size");
    const qint64 piece = 64 << 10;
    const qint64 kept = 8 << 20;
    for (const qint64 size :
         {qint64(0), qint64(1), qint64(4095), qint64(4096), piece - 2, piece - 1, piece, piece + 1,
          2 * piece - 1, 2 * piece, 2 * piece + 1, 3 * piece + 17, kept - 1, kept, kept + 1})
        QTest::newRow(QByteArray::number(size).constData()) << size;
}

void FileReaderTest::aFileIsReadWhole()
{
    QFETCH(qint64, size);
    const QByteArray bytes = bytesOf(size);
    m_tree->file("file", bytes);
    for (const TypeCheck check : {TypeCheck::WhenOpen, TypeCheck::BeforeOpen}) {
        FileReader reader;
        QCOMPARE(reader.read(path("file"), kNoLimit, check), Status::Read);
        QCOMPARE(reader.size(), size);
        QCOMPARE(reader.sizeAtOpen(), size);
        QVERIFY(contentOf(reader) == bytes);
    }
}

void FileReaderTest::aFileAsLargeAsTheLimitIsRead_data()
{
    QTest::addColumn<qint64>("limit");
    const qint64 piece = 64 << 10;
    for (const qint64 limit : {qint64(1), qint64(1000), piece - 1, piece, piece + 1, 16 * piece})
        QTest::newRow(QByteArray::number(limit).constData()) << limit;
}

void FileReaderTest::aFileAsLargeAsTheLimitIsRead()
{
    QFETCH(qint64, limit);
    FileReader reader;
    m_tree->file("below", bytesOf(limit - 1));
    QCOMPARE(reader.read(path("below"), limit, TypeCheck::WhenOpen), Status::Read);
    QCOMPARE(reader.size(), limit - 1);
    m_tree->file("equal", bytesOf(limit));
    QCOMPARE(reader.read(path("equal"), limit, TypeCheck::WhenOpen), Status::Read);
    QCOMPARE(reader.size(), limit);
    QVERIFY(contentOf(reader) == bytesOf(limit));
    m_tree->file("above", bytesOf(limit + 1));
    QCOMPARE(reader.read(path("above"), limit, TypeCheck::WhenOpen), Status::TooLarge);
    QCOMPARE(reader.size(), qint64(0));
    QCOMPARE(reader.sizeAtOpen(), limit + 1);
    QCOMPARE(reader.read(path("above"), limit, TypeCheck::BeforeOpen), Status::TooLarge);
}

void FileReaderTest::noTextIsLargerThanTheProgramCanHold()
{
    const qint64 size = kLargestText + 1;
    if (!m_tree->sparseFile("huge", size))
        QSKIP("no file of that size without its room on the disk");
    FileReader reader;
    const qint64 limit = qint64(1) << 40;
    QCOMPARE(reader.read(path("huge"), limit, TypeCheck::WhenOpen), Status::TooLarge);
    QCOMPARE(reader.sizeAtOpen(), size);
    QCOMPARE(reader.size(), qint64(0));
    if (m_tree->sparseFile("beyond 32 bits", (qint64(1) << 32) + 5))
        QCOMPARE(reader.read(path("beyond 32 bits"), limit, TypeCheck::WhenOpen), Status::TooLarge);
}

void FileReaderTest::anEmptyFileIsReadWithAnyLimit()
{
    m_tree->file("empty", "");
    for (const qint64 limit : {qint64(0), qint64(1), kNoLimit}) {
        FileReader reader;
        QCOMPARE(reader.read(path("empty"), limit, TypeCheck::WhenOpen), Status::Read);
        QCOMPARE(reader.size(), qint64(0));
        QCOMPARE(reader.sizeAtOpen(), qint64(0));
    }
}

void FileReaderTest::oneReaderReadsOneFileAfterAnother()
{
    QRandomGenerator random(11);
    FileReader reader;
    for (int i = 0; i < 40; ++i) {
        const qint64 most = i % 10 == 0 ? 9 << 20 : i % 3 == 0 ? 200000 : 3000;
        const QByteArray bytes = bytesOf(random.bounded(static_cast<int>(most)));
        m_tree->file("file", bytes);
        QCOMPARE(reader.read(path("file"), kNoLimit, TypeCheck::WhenOpen), Status::Read);
        QCOMPARE(reader.size(), qint64(bytes.size()));
        QVERIFY(contentOf(reader) == bytes);
    }
}

void FileReaderTest::aFailureForgetsTheFileBefore()
{
    m_tree->file("file", bytesOf(1000));
    FileReader reader;
    QCOMPARE(reader.read(path("file"), kNoLimit, TypeCheck::WhenOpen), Status::Read);
    QCOMPARE(reader.read(path("missing"), kNoLimit, TypeCheck::WhenOpen), Status::CannotOpen);
    QCOMPARE(reader.size(), qint64(0));
    QCOMPARE(reader.sizeAtOpen(), qint64(0));
    QCOMPARE(reader.read(path("file"), kNoLimit, TypeCheck::WhenOpen), Status::Read);
    QCOMPARE(reader.read(path("file"), 10, TypeCheck::WhenOpen), Status::TooLarge);
    QCOMPARE(reader.size(), qint64(0));
}

void FileReaderTest::aMissingFileCannotBeOpened_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("missing") << QByteArray("missing");
    QTest::newRow("missing folder") << QByteArray("missing/file");
    QTest::newRow("below a file") << QByteArray("file/file");
    QTest::newRow("dangling link") << QByteArray("dangling");
    QTest::newRow("link to itself") << QByteArray("loop");
    QTest::newRow("name too long") << QByteArray(300, 'x');
    QTest::newRow("path too long") << QByteArray("folder/").repeated(1000) + "file";
}

void FileReaderTest::aMissingFileCannotBeOpened()
{
    QFETCH(QByteArray, name);
    m_tree->file("file");
    m_tree->folder("folder");
    m_tree->link("dangling", "nothing");
    m_tree->link("loop", "loop");
    for (const TypeCheck check : {TypeCheck::WhenOpen, TypeCheck::BeforeOpen}) {
        FileReader reader;
        QCOMPARE(reader.read(path(name), kNoLimit, check), Status::CannotOpen);
        QCOMPARE(reader.size(), qint64(0));
    }
    FileReader reader;
    QCOMPARE(reader.read(QString(), kNoLimit, TypeCheck::WhenOpen), Status::CannotOpen);
}

void FileReaderTest::aVanishedFileCannotBeOpened()
{
    m_tree->file("file");
    FileReader reader;
    QCOMPARE(reader.read(path("file"), kNoLimit, TypeCheck::WhenOpen), Status::Read);
    m_folder->remove(QStringLiteral("file"));
    QCOMPARE(reader.read(path("file"), kNoLimit, TypeCheck::WhenOpen), Status::CannotOpen);
}

void FileReaderTest::aFileWithoutPermissionCannotBeOpened()
{
    m_tree->file("secret");
    m_tree->file("closed/file");
    if (!m_tree->setMode("", 0755) || !m_tree->setMode("secret", 0)
        || !m_tree->setMode("closed", 0))
        QSKIP("permissions mean nothing here");
    {
        const OrdinaryUser user;
        if (!user.inForce())
            QSKIP("the privileges could not be laid down");
        FileReader reader;
        for (const TypeCheck check : {TypeCheck::WhenOpen, TypeCheck::BeforeOpen}) {
            QCOMPARE(reader.read(path("secret"), kNoLimit, check), Status::CannotOpen);
            QCOMPARE(reader.read(path("closed/file"), kNoLimit, check), Status::CannotOpen);
        }
    }
    m_tree->setMode("closed", 0755);
}

void FileReaderTest::onlyRegularFilesAreOpened_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("folder") << QByteArray("folder");
    QTest::newRow("folder with its slash") << QByteArray("folder/");
    QTest::newRow("FIFO") << QByteArray("fifo");
    QTest::newRow("socket") << QByteArray("socket");
    QTest::newRow("device") << QByteArray("device");
    QTest::newRow("link to a folder") << QByteArray("link to folder");
    QTest::newRow("link to a FIFO") << QByteArray("link to fifo");
}

void FileReaderTest::onlyRegularFilesAreOpened()
{
    QFETCH(QByteArray, name);
    m_tree->folder("folder");
    const bool made = name == "fifo" ? m_tree->fifo(name)
        : name == "socket"           ? m_tree->socket(name)
        : name == "device"           ? m_tree->device(name)
        : name == "link to folder"   ? m_tree->link(name, "folder")
        : name == "link to fifo"     ? m_tree->fifo("fifo") && m_tree->link(name, "fifo")
                                     : true;
    if (!made)
        QSKIP("no such entry here");
    FileReader reader;
    const OpenWatch watch(m_tree->path(name));
    QCOMPARE(reader.read(path(name), kNoLimit, TypeCheck::BeforeOpen), Status::CannotOpen);
    if (watch.isWatching())
        QVERIFY(!watch.wasOpened());
    // A name that was a file when it was listed may have become this: then
    // the open does no harm and nothing is read.
    QCOMPARE(reader.read(path(name), kNoLimit, TypeCheck::WhenOpen), Status::CannotOpen);
    QCOMPARE(reader.size(), qint64(0));
}

void FileReaderTest::aListedNameThatIsNoFileAnyMoreIsRefused()
{
    m_tree->file("name", "text");
    FileReader reader;
    QCOMPARE(reader.read(path("name"), kNoLimit, TypeCheck::WhenOpen), Status::Read);
    m_folder->remove(QStringLiteral("name"));
    if (!m_tree->fifo("name"))
        QSKIP("no FIFOs here");
    QCOMPARE(reader.read(path("name"), kNoLimit, TypeCheck::WhenOpen), Status::CannotOpen);
    QCOMPARE(reader.size(), qint64(0));
}

void FileReaderTest::linksToFilesAreRead()
{
    m_tree->file("folder/file", "text");
    if (!m_tree->link("link", "folder/file"))
        QSKIP("no links here");
    m_tree->link("link to link", "link");
    m_tree->link("other", "folder");
    for (const char *const name : {"link", "link to link", "other/file"}) {
        FileReader reader;
        QCOMPARE(reader.read(path(name), kNoLimit, TypeCheck::BeforeOpen), Status::Read);
        QCOMPARE(contentOf(reader), QByteArray("text"));
    }
}

void FileReaderTest::namesThatAreNoValidTextAreRead()
{
    if (!m_tree->takesAnyName())
        QSKIP("names are text here");
    FileReader reader;
    for (const QByteArray name : {"two\nlines", "caf\xE9", "\xEF\xBB\xBFmark", "\x83\x5C/\xFF",
                                  "\xE6\x97\xA5\xE6\x9C\xAC", " "}) {
        m_tree->file(name, name);
        QCOMPARE(reader.read(path(name), kNoLimit, TypeCheck::WhenOpen), Status::Read);
        QCOMPARE(contentOf(reader), name);
    }
}

void FileReaderTest::virtualFilesWithoutASizeAreReadWhole_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("short") << QStringLiteral("/proc/self/cmdline");
    // It hands out one page a call, however much is asked for.
    QTest::newRow("many pages") << QStringLiteral("/proc/kallsyms");
    QTest::newRow("configuration") << QStringLiteral("/proc/filesystems");
}

void FileReaderTest::virtualFilesWithoutASizeAreReadWhole()
{
    QFETCH(QString, name);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        QSKIP("no such file here");
    const QByteArray expected = file.readAll();
    FileReader reader;
    QCOMPARE(reader.read(name, kNoLimit, TypeCheck::BeforeOpen), Status::Read);
    QCOMPARE(reader.sizeAtOpen(), qint64(0));
    QCOMPARE(reader.size(), qint64(expected.size()));
    QVERIFY(contentOf(reader) == expected);
}

void FileReaderTest::virtualFilesWithoutASizeEndAtTheLimit()
{
    const QString name = QStringLiteral("/proc/self/smaps");
    if (!QFile::exists(name))
        QSKIP("no such file here");
    FileReader reader;
    QCOMPARE(reader.read(name, kNoLimit, TypeCheck::WhenOpen), Status::Read);
    // The memory below the stack's comes pages earlier in the file.
    QVERIFY(contentOf(reader).contains("[stack]"));
    for (const qint64 limit : {1, 100, 5000, 9000}) {
        QCOMPARE(reader.read(name, limit, TypeCheck::WhenOpen), Status::Read);
        QCOMPARE(reader.size(), limit);
    }
}

void FileReaderTest::virtualFilesThatPromiseTooMuchAreRead()
{
    const QString name = QStringLiteral("/sys/kernel/mm/transparent_hugepage/enabled");
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        QSKIP("no such file here");
    const QByteArray expected = file.readAll();
    FileReader reader;
    QCOMPARE(reader.read(name, kNoLimit, TypeCheck::BeforeOpen), Status::Read);
    QVERIFY(reader.sizeAtOpen() > expected.size());
    QCOMPARE(contentOf(reader), expected);
}

void FileReaderTest::aGrowingFileIsReadUpToTheLimit()
{
    const qint64 limit = 700000;
    const QByteArray bytes = bytesOf(2 * limit);
    m_tree->file("file", "");
    m_tree->file("other", QByteArray(static_cast<int>(limit), 'U'));
    std::atomic<bool> over{false};
    std::thread writer([&] {
        while (!over) {
            QFile file(path("file"));
            // Elsewhere than here somebody else may have it open just then.
            if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
                continue;
            for (int start = 0; start < bytes.size() && !over; start += 5000)
                file.write(bytes.constData() + start, 5000);
        }
    });
    FileReader reader;
    int read = 0;
    bool sound = true;
    while (read < 200 && sound) {
        // So that what the buffer held before would show.
        reader.read(path("other"), kNoLimit, TypeCheck::WhenOpen);
        const Status status = reader.read(path("file"), limit, TypeCheck::WhenOpen);
        if (status == Status::TooLarge)
            continue;
        ++read;
        sound =
            status == Status::Read && reader.size() <= limit && holdsTheBytesOrZeros(reader, bytes);
    }
    over = true;
    writer.join();
    QVERIFY(sound);
}

void FileReaderTest::aShrinkingFileIsReadUpToItsEnd()
{
    const QByteArray bytes = bytesOf(3000000);
    m_tree->file("file", bytes);
    m_tree->file("other", QByteArray(bytes.size(), 'U'));
    std::atomic<bool> over{false};
    std::thread writer([&] {
        while (!over) {
            QFile file(path("file"));
            if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
                return;
            for (qint64 size = bytes.size(); size >= 0 && !over; size -= 100000)
                file.resize(size);
            file.seek(0);
            file.resize(0);
            file.write(bytes);
        }
    });
    FileReader reader;
    bool sound = true;
    for (int round = 0; round < 100; ++round) {
        // So that what the buffer held before would show.
        reader.read(path("other"), kNoLimit, TypeCheck::WhenOpen);
        const Status status = reader.read(path("file"), kNoLimit, TypeCheck::WhenOpen);
        sound = sound && status == Status::Read && reader.size() <= bytes.size()
            && holdsTheBytesOrZeros(reader, bytes);
    }
    over = true;
    writer.join();
    QVERIFY(sound);
}

void FileReaderTest::nothingStaysOpen()
{
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    if (!descriptors.exists() || !OpenWatch(m_tree->path("")).isWatching())
        QSKIP("the platform does not tell what is open");
    m_tree->file("file");
    m_tree->fifo("fifo");
    m_tree->folder("folder");
    const auto open = [&descriptors] {
        return descriptors.entryList(QDir::Files | QDir::System | QDir::Dirs).size();
    };
    const int before = open();
    for (int i = 0; i < 50; ++i) {
        FileReader reader;
        reader.read(path("file"), kNoLimit, TypeCheck::WhenOpen);
        reader.read(path("file"), 1, TypeCheck::WhenOpen);
        reader.read(path("fifo"), kNoLimit, TypeCheck::WhenOpen);
        reader.read(path("folder"), kNoLimit, TypeCheck::WhenOpen);
        reader.read(path("missing"), kNoLimit, TypeCheck::WhenOpen);
    }
    QCOMPARE(open(), before);
}

void FileReaderTest::aLargeFileComesInPieces()
{
    const ScratchFolder scratch;
    const QByteArray bytes = bytesOf(5 * FileReader::kPieceSize + 77);
    scratch.write(QStringLiteral("a"), bytes);
    FileReader reader;
    QCOMPARE(reader.open(scratch.filePath(QStringLiteral("a")), kNoLimit, TypeCheck::WhenOpen),
             Status::Read);
    QByteArray together;
    while (!reader.atEnd()) {
        QCOMPARE(reader.size(), FileReader::kPieceSize);
        constexpr qint64 kLeft = 100; // as what follows the last line feed
        together += contentOf(reader).left(int(reader.size() - kLeft));
        reader.advance(reader.size() - kLeft);
    }
    QVERIFY(together + contentOf(reader) == bytes);
}

void FileReaderTest::aPieceThatIsAskedForAgainIsLonger()
{
    const ScratchFolder scratch;
    const QByteArray bytes = bytesOf(3 * FileReader::kPieceSize);
    scratch.write(QStringLiteral("a"), bytes);
    FileReader reader;
    reader.open(scratch.filePath(QStringLiteral("a")), kNoLimit, TypeCheck::WhenOpen);
    reader.advance(0);
    QCOMPARE(reader.size(), 2 * FileReader::kPieceSize);
    QVERIFY(!reader.atEnd());
    QVERIFY(bytes.startsWith(contentOf(reader)));
    reader.advance(0);
    QVERIFY(reader.atEnd());
    QVERIFY(contentOf(reader) == bytes);
}

void FileReaderTest::theWholeFileCanBeHadAfterSomePieces()
{
    const ScratchFolder scratch;
    const QByteArray bytes = bytesOf(4 * FileReader::kPieceSize);
    scratch.write(QStringLiteral("a"), bytes);
    FileReader reader;
    reader.open(scratch.filePath(QStringLiteral("a")), kNoLimit, TypeCheck::WhenOpen);
    reader.advance(1000);
    reader.advance(1000);
    reader.readWhole();
    QVERIFY(reader.atEnd());
    QVERIFY(contentOf(reader) == bytes);
}

void FileReaderTest::aReaderThatIsToldToStopEndsThere()
{
    const ScratchFolder scratch;
    scratch.write(QStringLiteral("a"), bytesOf(4 * FileReader::kPieceSize));
    scratch.write(QStringLiteral("b"), "small");
    FileReader reader;
    bool stop = false;
    reader.stopWhen([&stop] { return stop; });
    reader.open(scratch.filePath(QStringLiteral("a")), kNoLimit, TypeCheck::WhenOpen);
    QVERIFY(!reader.wasStopped());
    stop = true;
    reader.advance(1000);
    QVERIFY(reader.wasStopped());
    QVERIFY(reader.atEnd());
    stop = false;
    reader.read(scratch.filePath(QStringLiteral("b")), kNoLimit, TypeCheck::WhenOpen);
    QVERIFY(!reader.wasStopped());
    QCOMPARE(contentOf(reader), QByteArray("small"));
}

QTEST_GUILESS_MAIN(FileReaderTest)
#include "FileReaderTest.moc"
