#include "engine/ListFile.h"

#include "engine/NativePath.h"
#include "tests/support/OpenWatch.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QSettings>
#include <QTest>

class ListFileTest : public QObject {
    Q_OBJECT

private slots:
    void theEntriesKeepTheirOrderAndDoubles();
    void aSingleEntryIsAListOfOne();
    void entriesComeBackAsTheToolkitWroteThem_data();
    void entriesComeBackAsTheToolkitWroteThem();
    void aFileWrittenByHandIsRead_data();
    void aFileWrittenByHandIsRead();
    void anObjectThatAListFileAsksForIsNotBuilt_data();
    void anObjectThatAListFileAsksForIsNotBuilt();
    void aLongListIsReadWhole();
    void aFileWithoutTheKeyIsEmptyAndNotKnown_data();
    void aFileWithoutTheKeyIsEmptyAndNotKnown();
    void aMissingFileIsEmptyAndNotKnown();
    void aFoldersSlashAtTheEndOfTheNameIsNoPartOfIt();
    void aFolderIsEmptyAndNotKnown();
    void aFifoIsNotOpened();
    void aSocketIsEmptyAndNotKnown();
    void aLinkToAListFileIsRead();
    void aFileWithoutPermissionIsEmptyAndNotKnown();
    void theFileIsLeftAsItIs();
    void theSecondArgumentMayBeLeftOut();

private:
    QString writeWithToolkit(const QStringList &files) const;

    ScratchFolder m_folder;
};

QString ListFileTest::writeWithToolkit(const QStringList &files) const
{
    const QString path = m_folder.filePath(QStringLiteral("written.ini"));
    QFile::remove(path);
    QSettings file(path, QSettings::IniFormat);
    file.setValue(QStringLiteral("files"), files);
    return path;
}

void ListFileTest::theEntriesKeepTheirOrderAndDoubles()
{
    const QStringList files{QStringLiteral("c:/z.txt"), QStringLiteral("c:/a/"),
                            QStringLiteral("c:/z.txt"), QStringLiteral("c:/b.txt")};
    bool known = false;
    QCOMPARE(ListFile::read(writeWithToolkit(files), &known), files);
    QVERIFY(known);
}

void ListFileTest::aSingleEntryIsAListOfOne()
{
    const QStringList one{QStringLiteral("/home/a.txt")};
    bool known = false;
    QCOMPARE(ListFile::read(writeWithToolkit(one), &known), one);
    QVERIFY(known);
    QCOMPARE(ListFile::read(m_folder.write(QStringLiteral("one.ini"), "files=/home/a.txt\n")), one);
}

void ListFileTest::entriesComeBackAsTheToolkitWroteThem_data()
{
    QTest::addColumn<QString>("entry");
    QTest::newRow("comma") << "/a,b/c,d.txt";
    QTest::newRow("blank") << "/my folder/ a .txt";
    QTest::newRow("semicolon") << "/a;b.txt";
    QTest::newRow("equals sign") << "/a=b.txt";
    QTest::newRow("percent sign") << "/100%25.txt";
    QTest::newRow("quotation marks") << "/\"a\".txt";
    QTest::newRow("backslashes") << "c:\\new\\table\\x41.txt";
    QTest::newRow("at sign") << "@/a.txt";
    QTest::newRow("line feed") << "/two\nlines\t.txt";
    QTest::newRow("Japanese") << QStringLiteral("c:/日本語/表示 ソ.txt");
    QTest::newRow("outside the basic plane") << QStringLiteral("/𠮷.txt");
    QTest::newRow("Latin letters") << QStringLiteral("/été.txt");
    QTest::newRow("name that is no valid text") << QStringLiteral("/caf") + QChar(0xDCE9);
    QTest::newRow("folder") << "/a/b/";
}

void ListFileTest::entriesComeBackAsTheToolkitWroteThem()
{
    QFETCH(QString, entry);
    const QString plain = QStringLiteral("/plain.txt");
    for (const QStringList &files : {QStringList{entry}, QStringList{plain, entry, plain}}) {
        bool known = false;
        QCOMPARE(ListFile::read(writeWithToolkit(files), &known), files);
        QVERIFY(known);
    }
}

void ListFileTest::aFileWrittenByHandIsRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("files");
    const QStringList two{QStringLiteral("/a.txt"), QStringLiteral("/b/")};
    QTest::newRow("no blanks") << QByteArray("files=/a.txt,/b/\n") << two;
    QTest::newRow("blanks after the comma") << QByteArray("files=/a.txt, /b/\n") << two;
    QTest::newRow("blanks around the sign") << QByteArray("files = /a.txt, /b/\n") << two;
    QTest::newRow("quotation marks") << QByteArray("files=\"/a.txt\", \"/b/\"\n") << two;
    QTest::newRow("general section") << QByteArray("[General]\nfiles=/a.txt, /b/\n") << two;
    QTest::newRow("other keys around")
        << QByteArray("; list\nold=1\nfiles=/a.txt, /b/\n\n[more]\nfiles=/no.txt\n") << two;
    QTest::newRow("carriage returns") << QByteArray("[General]\r\nfiles=/a.txt, /b/\r\n") << two;
    QTest::newRow("without a last line feed") << QByteArray("files=/a.txt, /b/") << two;
    QTest::newRow("comma in quotation marks")
        << QByteArray("files=\"/a,b.txt\", /c.txt\n")
        << QStringList({QStringLiteral("/a,b.txt"), QStringLiteral("/c.txt")});
    QTest::newRow("escapes") << QByteArray("files=c:\\\\a.txt, /\\x3042\\x3044\n")
                             << QStringList({QStringLiteral("c:\\a.txt"), QStringLiteral("/あい")});
    QTest::newRow("UTF-8 with a byte order mark")
        << QByteArray("\xEF\xBB\xBF[General]\r\nfiles=/\xE3\x81\x82.txt, /b/\r\n")
        << QStringList({QStringLiteral("/あ.txt"), QStringLiteral("/b/")});
}

void ListFileTest::aFileWrittenByHandIsRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, files);
    bool known = false;
    QCOMPARE(ListFile::read(m_folder.write(QStringLiteral("hand.ini"), bytes), &known), files);
    QVERIFY(known);
    m_folder.remove(QStringLiteral("hand.ini"));
}

void ListFileTest::anObjectThatAListFileAsksForIsNotBuilt_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("a list of texts")
        << QByteArray("@Variant(\\0\\0\\0\\v\\0\\0\\0\\x1\\0\\0\\0\\x2\\0\\x61)");
    QTest::newRow("two thousand million texts")
        << QByteArray("@Variant(\\0\\0\\0\\v\\x7f\\xff\\xff\\xff)");
    QTest::newRow("a moment") << QByteArray("@DateTime(\\0\\0\\0\\x10\\0\\0)");
}

void ListFileTest::anObjectThatAListFileAsksForIsNotBuilt()
{
    QFETCH(QByteArray, value);
    bool known = false;
    const QStringList files = ListFile::read(
        m_folder.write(QStringLiteral("object.ini"), "files=" + value + "\n"), &known);
    QVERIFY(known);
    // It is the text that it is, the name of no file.
    QCOMPARE(files.size(), 1);
    QVERIFY(files.first().startsWith(QLatin1Char('@')));
}

void ListFileTest::aLongListIsReadWhole()
{
    QStringList files;
    for (int i = 0; i < 20000; ++i)
        files.append(QStringLiteral("/folder %1/ファイル, %1.txt").arg(i));
    QCOMPARE(ListFile::read(writeWithToolkit(files)), files);
}

void ListFileTest::aFileWithoutTheKeyIsEmptyAndNotKnown_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("other key") << QByteArray("file=/a.txt\n");
    QTest::newRow("key of another section") << QByteArray("[list]\nfiles=/a.txt\n");
    QTest::newRow("no ini file") << QByteArray("/a.txt\n/b.txt\n");
    QTest::newRow("zeros") << QByteArray(100000, '\0');
}

void ListFileTest::aFileWithoutTheKeyIsEmptyAndNotKnown()
{
    QFETCH(QByteArray, bytes);
    bool known = true;
    QCOMPARE(ListFile::read(m_folder.write(QStringLiteral("no.ini"), bytes), &known),
             QStringList());
    QVERIFY(!known);
    m_folder.remove(QStringLiteral("no.ini"));
}

void ListFileTest::aMissingFileIsEmptyAndNotKnown()
{
    bool known = true;
    QCOMPARE(ListFile::read(m_folder.filePath(QStringLiteral("missing.ini")), &known),
             QStringList());
    QVERIFY(!known);
    QVERIFY(!m_folder.exists(QStringLiteral("missing.ini")));
    known = true;
    QCOMPARE(ListFile::read(QString(), &known), QStringList());
    QVERIFY(!known);
}

void ListFileTest::aFoldersSlashAtTheEndOfTheNameIsNoPartOfIt()
{
    const QStringList files{QStringLiteral("c:/a/")};
    bool known = false;
    QCOMPARE(ListFile::read(writeWithToolkit(files) + QLatin1Char('/'), &known), files);
    QVERIFY(known);
}

void ListFileTest::aFolderIsEmptyAndNotKnown()
{
    bool known = true;
    QCOMPARE(ListFile::read(m_folder.path(), &known), QStringList());
    QVERIFY(!known);
}

void ListFileTest::aFifoIsNotOpened()
{
    TreeBuilder tree(NativePath::toNative(m_folder.path()));
    if (!tree.fifo("fifo.ini"))
        QSKIP("no FIFOs here");
    const OpenWatch watch(tree.path("fifo.ini"));
    bool known = true;
    QCOMPARE(ListFile::read(m_folder.filePath(QStringLiteral("fifo.ini")), &known), QStringList());
    QVERIFY(!known);
    if (watch.isWatching())
        QVERIFY(!watch.wasOpened());
}

void ListFileTest::aSocketIsEmptyAndNotKnown()
{
    TreeBuilder tree(NativePath::toNative(m_folder.path()));
    if (!tree.socket("socket.ini"))
        QSKIP("no sockets here");
    bool known = true;
    QCOMPARE(ListFile::read(m_folder.filePath(QStringLiteral("socket.ini")), &known),
             QStringList());
    QVERIFY(!known);
}

void ListFileTest::aLinkToAListFileIsRead()
{
    TreeBuilder tree(NativePath::toNative(m_folder.path()));
    tree.file("target.ini", "files=/a.txt, /b.txt\n");
    if (!tree.link("link.ini", "target.ini"))
        QSKIP("no links here");
    QCOMPARE(ListFile::read(m_folder.filePath(QStringLiteral("link.ini"))),
             QStringList({QStringLiteral("/a.txt"), QStringLiteral("/b.txt")}));
}

void ListFileTest::aFileWithoutPermissionIsEmptyAndNotKnown()
{
    TreeBuilder tree(NativePath::toNative(m_folder.path()));
    tree.file("secret.ini", "files=/a.txt\n");
    if (!tree.setMode("", 0755) || !tree.setMode("secret.ini", 0))
        QSKIP("permissions mean nothing here");
    const OrdinaryUser user;
    if (!user.inForce())
        QSKIP("the privileges could not be laid down");
    bool known = true;
    QCOMPARE(ListFile::read(m_folder.filePath(QStringLiteral("secret.ini")), &known),
             QStringList());
    QVERIFY(!known);
}

void ListFileTest::theFileIsLeftAsItIs()
{
    const QByteArray bytes("; my list\r\nfiles = /a.txt,   /b.txt\r\nother=1\r\n");
    const QString path = m_folder.write(QStringLiteral("keep.ini"), bytes);
    QCOMPARE(ListFile::read(path).size(), 2);
    QCOMPARE(m_folder.read(QStringLiteral("keep.ini")), bytes);
}

void ListFileTest::theSecondArgumentMayBeLeftOut()
{
    QCOMPARE(ListFile::read(m_folder.filePath(QStringLiteral("missing.ini"))), QStringList());
}

QTEST_GUILESS_MAIN(ListFileTest)
#include "ListFileTest.moc"
