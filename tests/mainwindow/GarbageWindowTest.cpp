#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include "settings/AppSettings.h"
#include "settings/ShownFont.h"
#include "settings/dialogs/InputHistoryFile.h"
#include "tests/support/TestLength.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <random>

/// The window among files that anybody, or nobody, has written: it opens, searches,
/// keeps its logs and pages in them all the same.
class GarbageWindowTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theWindowWorksAmongAnyFiles_data();
    void theWindowWorksAmongAnyFiles();
    void aFontLargerThanAWallIsShownSmallerAndKept();
    void anyListFileIsSearchedThrough_data();
    void anyListFileIsSearchedThrough();
    void anyHistoryOfPathsIsRead_data();
    void anyHistoryOfPathsIsRead();

private:
    void openAmong(const QByteArray &content);
    void usePathDialog();
    void pageThroughLogs();

    QString m_tree;
};

namespace {

const QStringList kNames = {
    QStringLiteral("sarvik.ini"),          QStringLiteral("sarvedit.ini"),
    QStringLiteral("keywordhistory.ini"),  QStringLiteral("sarvikpara.ini"),
    QStringLiteral("inputSearchPath.ini"), QStringLiteral("fileDialog.ini"),
    QStringLiteral("sarvik.log"),          QStringLiteral("sarviklog/1.log"),
    QStringLiteral("sarviklog/2.log"),     QStringLiteral("list/garbage.lst")};

const QByteArrayList kPieces = {"[General]\n",
                                "[keyword]\n",
                                "[langlist]\ngarbage=txt\n",
                                "[history]\nlist=",
                                "[font]\nfamily=",
                                "pointSize=",
                                "max=-1\n",
                                "size=@Size(",
                                "geometry=@ByteArray(",
                                "001=101",
                                "files=",
                                "pathlist:",
                                "keyword1:",
                                "plusline:99999999999\n",
                                "groupbox:1\n",
                                "-----------------------\n",
                                "::/",
                                "  12:  3:",
                                "@",
                                ", ",
                                ")",
                                "\n",
                                "\r\n",
                                "\r",
                                "=",
                                "\"",
                                "\\x",
                                "-2147483648",
                                "true",
                                "[WordKeywords]\n",
                                "[comment]\nmultiLineStart=(",
                                "splitext=[\n",
                                "\xef\xbb\xbf",
                                "\xe6\x97\xa5",
                                "\xff",
                                QByteArray(1, '\0')};

const QByteArray kWallFonts = "[font]\ninp_pointSize=3000\ngrep_pointSize=3000\n"
                              "text_pointSize=3000\nassit_pointSize=3000\n"
                              "family=x\npointSize=3000\n";

QByteArray noise(std::mt19937 *random, int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>((*random)());
    return bytes;
}

QByteArray pieces(std::mt19937 *random, int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes += kPieces.at(static_cast<int>((*random)() % size_t(kPieces.size())));
    return bytes;
}

void addContents(int mostBytes)
{
    QTest::addColumn<QByteArray>("content");
    std::mt19937 random(20010203);
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("noise") << noise(&random, mostBytes);
    QTest::newRow("zeros") << QByteArray(mostBytes, '\0');
    QTest::newRow("line ends") << QByteArray(mostBytes / 8, '\n');
    QTest::newRow("one line") << QByteArray(mostBytes, 'x');
    QTest::newRow("backslashes") << QByteArray(mostBytes / 8, '\\');
    QTest::newRow("a picture's head") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    for (int i = 1; i <= TestLength::rounds(6, 60); ++i)
        QTest::addRow("pieces %d", i) << pieces(&random, 300);
}

QByteArray escaped(const QString &text)
{
    QByteArray value;
    for (const QChar unit : text)
        value += "\\x" + QByteArray::number(unit.unicode(), 16);
    return '"' + value + '"';
}

} // namespace

void GarbageWindowTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_tree = m_fixture->tree.path();
    m_fixture->tree.write(QStringLiteral("a.txt"), "an apple\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "no fruit\n");
}

void GarbageWindowTest::cleanup()
{
    m_fixture.reset();
    for (const QString &name : kNames)
        QFile::remove(WindowFixture::applicationFile(name));
}

void GarbageWindowTest::openAmong(const QByteArray &content)
{
    for (const char *folder : {"sarviklog", "list"})
        QDir().mkpath(WindowFixture::applicationFile(QLatin1String(folder)));
    for (const QString &name : kNames) {
        QFile file(WindowFixture::applicationFile(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    m_fixture->open();
}

void GarbageWindowTest::usePathDialog()
{
    bool shown = false;
    QTimer::singleShot(0, this, [&shown] {
        QWidget *dialog = QApplication::activeModalWidget();
        auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("lineEdit"));
        shown = dialog->isVisible() && dialog->width() >= 440 && dialog->height() >= 400;
        QTest::keyClick(field, Qt::Key_Down);
        QTest::keyClick(field, Qt::Key_Escape);
    });
    m_fixture->child<QAbstractButton>("btnPlus")->click();
    QVERIFY(shown);
}

void GarbageWindowTest::pageThroughLogs()
{
    auto *back = m_fixture->child<QToolButton>("arrowBackBtn");
    for (int pages = 0; back->isEnabled() && pages < 5; ++pages)
        back->click();
    QVERIFY(!back->isEnabled());
    auto *forward = m_fixture->child<QToolButton>("arrowForwardBtn");
    for (int pages = 0; forward->isEnabled() && pages < 5; ++pages)
        forward->click();
    QVERIFY(!forward->isEnabled());
}

void GarbageWindowTest::theWindowWorksAmongAnyFiles_data()
{
    addContents(1 << 18);
    QTest::newRow("fonts larger than a wall") << kWallFonts;
}

void GarbageWindowTest::theWindowWorksAmongAnyFiles()
{
    QFETCH(QByteArray, content);
    openAmong(content);
    AppSettings &settings = AppSettings::instance();
    const QSize screen = QGuiApplication::primaryScreen()
                             ->virtualSize()
                             .expandedTo({800, 800})
                             .expandedTo(m_fixture->window().minimumSizeHint());
    QVERIFY(m_fixture->window().width() <= screen.width());
    QVERIFY(m_fixture->window().height() <= screen.height());
    QVERIFY(settings.tabcolm >= 1);
    // What the files may say of the limits is theirs to say.
    settings.bigsize = 1;
    settings.excusiondir.clear();
    settings.excusionfile.clear();
    settings.logmax = 10;
    settings.langlist = QStringList{QStringLiteral("garbage")};
    settings.langlistValues = QStringList{QStringLiteral("txt")};

    QVERIFY(m_fixture->search(m_tree, QStringLiteral("*.txt"), QStringLiteral("an apple")));
    QVERIFY(m_fixture->resultText().contains(QStringLiteral("\n      1:    1:an apple\n")));
    QVERIFY(m_fixture->resultText().contains(QStringLiteral("該当ファイル数 1 / 2")));
    // The preview has the colours of whatever language that is.
    QTest::keyClick(m_fixture->resultView(), Qt::Key_Down);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->preview()->toPlainText(), QStringLiteral("an apple\n"),
                              kPatienceMilliseconds);
    m_fixture->preview()->grab();
    QVERIFY(WindowFixture::readApplicationFile(QStringLiteral("sarvik.log"))
                .contains("keyword1:an apple"));
    pageThroughLogs();
    usePathDialog();
    // And the next window opens among what this one has saved.
    m_fixture->open();
    QVERIFY(m_fixture->search(m_tree, QStringLiteral("*.txt"), QStringLiteral("apple")));
    QVERIFY(m_fixture->resultText().contains(QStringLiteral("該当行数 1")));
}

void GarbageWindowTest::aFontLargerThanAWallIsShownSmallerAndKept()
{
    openAmong(kWallFonts);
    for (const QWidget *widget :
         {static_cast<QWidget *>(m_fixture->keyword1()), static_cast<QWidget *>(m_fixture->mask()),
          static_cast<QWidget *>(m_fixture->pathEdit()),
          static_cast<QWidget *>(m_fixture->resultView()),
          static_cast<QWidget *>(m_fixture->preview())})
        QCOMPARE(widget->font().pointSize(), ShownFont::kLargestPointSize);
    m_fixture->close();
    const QByteArray saved = WindowFixture::readApplicationFile(QStringLiteral("sarvik.ini"));
    for (const char *key : {"inp_pointSize", "grep_pointSize", "text_pointSize"})
        QVERIFY2(saved.contains(key + QByteArray("=3000\r\n")), key);
}

void GarbageWindowTest::anyListFileIsSearchedThrough_data()
{
    addContents(1 << 18);
    QTest::newRow("numbers") << QByteArray("files=1, 2, -3\n");
    QTest::newRow("an object") << QByteArray("files=@Size(1 2)\n");
    QTest::newRow("empty entries") << QByteArray("files=\"\", \" \", \"\"\n");
    QTest::newRow("itself") << QByteArray("files=list.ini, @list.ini\n");
}

void GarbageWindowTest::anyListFileIsSearchedThrough()
{
    QFETCH(QByteArray, content);
    m_fixture->open();
    const QString list = m_fixture->tree.write(QStringLiteral("list.ini"), content);
    // No file of this machine is named so, whatever folder the list may name.
    QVERIFY(m_fixture->search(QLatin1Char('@') + list, QStringLiteral("*.no-such-suffix"),
                              QStringLiteral("apple")));
    QVERIFY(m_fixture->resultText().contains(QStringLiteral("該当行数 0")));
    // Behind what cannot be read stands what can.
    const QString good =
        m_fixture->tree.write(QStringLiteral("good.ini"),
                              "[General]\nfiles=" + escaped(m_tree + QStringLiteral("a.txt")) + ", "
                                  + escaped(m_tree + QStringLiteral("b.txt")) + '\n');
    QVERIFY(m_fixture->search(QLatin1Char('@') + good, QStringLiteral("*.txt"),
                              QStringLiteral("apple")));
    QVERIFY(m_fixture->resultText().contains(QStringLiteral("該当行数 1")));
}

void GarbageWindowTest::anyHistoryOfPathsIsRead_data()
{
    addContents(2 << 20);
    const auto value = [](const char *name, const QByteArray &line) {
        QTest::newRow(name) << line;
    };
    value("a size that is none", "size=true\n");
    value("a size beyond all screens", "size=@Size(2147483647 2147483647)\n");
    value("a list that is a size", "[history]\nlist=@Size(1 2)\n");
    value("a limit that is a text", "[history]\nmax=many\n");
    value("a font of no size", "[font]\nfamily=x\npointSize=0\n");
    value("a font larger than a wall", "[font]\nfamily=x\npointSize=2147483647\n");
}

void GarbageWindowTest::anyHistoryOfPathsIsRead()
{
    QFETCH(QByteArray, content);
    const ScratchFolder folder;
    const InputHistoryFile file(folder.path(), QStringLiteral("P"));
    folder.write(QStringLiteral("inputP.ini"), content);
    InputHistoryFile::Content read = file.read();
    QVERIFY(read.size.isValid() && !read.size.isEmpty());
    QVERIFY(read.max >= 1);
    QVERIFY(!read.font || (read.font->pointSize() >= 1 && read.font->pointSize() <= 1000));
    read.history = QStringList{QStringLiteral("/新しい/")};
    QVERIFY(!read.mayBeSaved || file.save(read));
    QVERIFY(!read.mayBeSaved || file.read().history == read.history);
}

QTEST_MAIN(GarbageWindowTest)
#include "GarbageWindowTest.moc"
