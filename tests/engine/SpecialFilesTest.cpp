#include "engine/CodeSet.h"
#include "engine/FileCodeSet.h"
#include "engine/RegularFile.h"
#include "tests/support/ScratchFolder.h"

#include <QFile>
#include <QTest>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

/// What a Unix folder may hold besides files. A test that hangs here has found
/// an open that blocks.
class SpecialFilesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void aFifoIsNotOpened();
    void aDeviceIsNotOpened();
    void aSocketIsNotOpened();
    void aLinkToAFileIsOpened();
    void aLinkToAFifoIsNotOpened();
    void aBrokenLinkIsNotOpened();
    void anUnreadableFileIsNotOpened();
    void aFifoHasTheCodeSetOfAFileThatCannotBeOpened();

private:
    ScratchFolder m_folder;
    QString m_fifo;
};

void SpecialFilesTest::initTestCase()
{
    m_fifo = m_folder.filePath(QStringLiteral("fifo"));
    QCOMPARE(::mkfifo(QFile::encodeName(m_fifo).constData(), 0600), 0);
}

void SpecialFilesTest::aFifoIsNotOpened()
{
    QVERIFY(!RegularFile(m_fifo).isOpen());
}

void SpecialFilesTest::aDeviceIsNotOpened()
{
    QVERIFY(!RegularFile(QStringLiteral("/dev/null")).isOpen());
    QVERIFY(!RegularFile(QStringLiteral("/dev/zero")).isOpen());
}

void SpecialFilesTest::aSocketIsNotOpened()
{
    const QString path = m_folder.filePath(QStringLiteral("socket"));
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    QVERIFY(size_t(name.size()) < sizeof address.sun_path);
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    QVERIFY(descriptor != -1);
    QCOMPARE(::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    QVERIFY(!RegularFile(path).isOpen());
    ::close(descriptor);
}

void SpecialFilesTest::aLinkToAFileIsOpened()
{
    const QString link = m_folder.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(m_folder.write(QStringLiteral("file"), "abcde"), link));
    QCOMPARE(RegularFile(link).size(), qint64(5));
}

void SpecialFilesTest::aLinkToAFifoIsNotOpened()
{
    const QString link = m_folder.filePath(QStringLiteral("fifo link"));
    QVERIFY(QFile::link(m_fifo, link));
    QVERIFY(!RegularFile(link).isOpen());
}

void SpecialFilesTest::aBrokenLinkIsNotOpened()
{
    const QString link = m_folder.filePath(QStringLiteral("broken link"));
    QVERIFY(QFile::link(m_folder.filePath(QStringLiteral("nothing")), link));
    QVERIFY(!RegularFile(link).isOpen());
}

void SpecialFilesTest::anUnreadableFileIsNotOpened()
{
    if (::geteuid() == 0)
        QSKIP("root may read every file");
    const QString path = m_folder.write(QStringLiteral("secret"), "abcde");
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0), 0);
    QVERIFY(!RegularFile(path).isOpen());
}

void SpecialFilesTest::aFifoHasTheCodeSetOfAFileThatCannotBeOpened()
{
    DetectionSettings settings;
    settings.fallbackCodeSet = CodeSet::EucJp;
    int lineEnd = -1;
    bool bom = false;
    QCOMPARE(getFileCodeSet(m_fifo, &lineEnd, settings), int(CodeSet::Default));
    QCOMPARE(detectFileCodeSet(m_fifo, &lineEnd, &bom, settings, {}), int(CodeSet::EucJp));
}

QTEST_GUILESS_MAIN(SpecialFilesTest)
#include "SpecialFilesTest.moc"
