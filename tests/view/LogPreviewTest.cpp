#include "view/LogPreview.h"

#include "tests/support/ScratchFolder.h"
#include "tests/support/SymbolicLink.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <random>

class LogPreviewTest : public QObject {
    Q_OBJECT

private slots:
    void aShortFileIsShownWhole();
    void onlyTheFirst1024CharactersAreShown();
    void charactersAreCountedNotBytes();
    void aByteOrderMarkIsHonoured();
    void aFolderShowsNothing();
    void aLinkToAFolderShowsNothing();
    void whatCannotBeOpenedIsNamed();
    void aPathLikeAPlaceholderIsNamedAsItIs();
    void aFifoIsNotOpened();
    void anyBytesAreShown_data();
    void anyBytesAreShown();
    void ofAFileOf200MegabytesOnlyTheBeginningIsRead();

private:
    ScratchFolder m_folder;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void LogPreviewTest::aShortFileIsShownWhole()
{
    const QString path = m_folder.write(text("a.log"), "::C:/あ.txt\r\n      1:    2:い\r\n");
    QCOMPARE(LogPreview::textOf(path), text("::C:/あ.txt\r\n      1:    2:い\r\n"));
}

void LogPreviewTest::onlyTheFirst1024CharactersAreShown()
{
    const QByteArray first(1024, 'a');
    QCOMPARE(LogPreview::textOf(m_folder.write(text("a.log"), first)).size(), 1024);
    QCOMPARE(LogPreview::textOf(m_folder.write(text("b.log"), first + 'b')),
             QString(1024, QLatin1Char('a')));
}

void LogPreviewTest::charactersAreCountedNotBytes()
{
    const QString path = m_folder.write(text("a.log"), text("漢").repeated(2000).toUtf8());
    QCOMPARE(LogPreview::textOf(path), text("漢").repeated(1024));
}

void LogPreviewTest::aByteOrderMarkIsHonoured()
{
    const QString path = m_folder.write(text("a.log"), QByteArray("\xff\xfe\x42\x30", 4));
    QCOMPARE(LogPreview::textOf(path), text("あ"));
}

void LogPreviewTest::aFolderShowsNothing()
{
    QCOMPARE(LogPreview::textOf(m_folder.path()), QString());
}

void LogPreviewTest::aLinkToAFolderShowsNothing()
{
    const QString link = m_folder.filePath(text("loop"));
    if (!makeLink(m_folder.path(), link))
        QSKIP("no symbolic links here");
    QCOMPARE(LogPreview::textOf(link), QString());
    QVERIFY(QFile::remove(link));
}

void LogPreviewTest::whatCannotBeOpenedIsNamed()
{
    const QString missing = m_folder.filePath(text("missing.log"));
    QCOMPARE(LogPreview::textOf(missing), missing + text(" プレビューできません。"));
    const QString link = m_folder.filePath(text("dangling.log"));
    if (!makeLink(missing, link))
        QSKIP("no symbolic links here");
    QCOMPARE(LogPreview::textOf(link), link + text(" プレビューできません。"));
}

void LogPreviewTest::aPathLikeAPlaceholderIsNamedAsItIs()
{
    const QString missing = m_folder.filePath(text("%1 %2.log"));
    QCOMPARE(LogPreview::textOf(missing), missing + text(" プレビューできません。"));
}

void LogPreviewTest::aFifoIsNotOpened()
{
    const QString fifo = m_folder.filePath(text("fifo.log"));
    if (QProcess::execute(text("mkfifo"), {fifo}) != 0)
        QSKIP("there are no FIFOs here");
    QCOMPARE(LogPreview::textOf(fifo), fifo + text(" プレビューできません。"));
}

void LogPreviewTest::anyBytesAreShown_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("zero bytes") << QByteArray(5000, '\0');
    QTest::newRow("no UTF-8") << QByteArray(5000, '\xff');
    QTest::newRow("a cut character") << QByteArray(1023, 'a') + QByteArray("\xe3\x81");
    std::mt19937 random(20);
    for (int i = 0; i < 20; ++i) {
        QByteArray bytes;
        for (int length = 0; length < 5000; ++length)
            bytes += static_cast<char>(random());
        QTest::addRow("random %d", i) << bytes;
    }
}

void LogPreviewTest::anyBytesAreShown()
{
    QFETCH(QByteArray, bytes);
    const QString shown = LogPreview::textOf(m_folder.write(text("a.log"), bytes));
    QVERIFY(shown.size() <= 1024);
    QCOMPARE(shown.isEmpty(), bytes.isEmpty());
}

void LogPreviewTest::ofAFileOf200MegabytesOnlyTheBeginningIsRead()
{
    const QString path = m_folder.write(text("a.log"), QByteArray(4096, 'a'));
    QVERIFY(QFile::resize(path, qint64(200) * 1024 * 1024));
    QCOMPARE(LogPreview::textOf(path), QString(1024, QLatin1Char('a')));
}

QTEST_GUILESS_MAIN(LogPreviewTest)
#include "LogPreviewTest.moc"
