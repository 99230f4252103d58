#include "settings/dialogs/InputHistoryFile.h"

#include "tests/support/ScratchFolder.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

#include <iterator>

namespace {

const QString kPurpose = QStringLiteral("SearchPath");
const QString kName = QStringLiteral("inputSearchPath.ini");

InputHistoryFile::Content contentOf(const QByteArray &bytes)
{
    const ScratchFolder folder;
    folder.write(kName, bytes);
    return InputHistoryFile(folder.path(), kPurpose).read();
}

} // namespace

class InputHistoryFileTest : public QObject {
    Q_OBJECT

private slots:
    void theFileIsNamedAfterThePurpose();
    void aMissingFileGivesTheDefaults();
    void everyKeyIsRead();
    void aFontIsReadOnlyWithAFamily_data();
    void aFontIsReadOnlyWithAFamily();
    void theRestOfAFontHasDefaults();
    void aFontSizeThatCannotBeDrawnBecomesTheDefault_data();
    void aFontSizeThatCannotBeDrawnBecomesTheDefault();
    void aBrokenSizeBecomesTheDefault();
    void aMostThatIsNoneBecomesTheDefault_data();
    void aMostThatIsNoneBecomesTheDefault();
    void whatIsSavedIsReadAgain();
    void japaneseIsWrittenEscaped();
    void keysTypedByHandAreKeptAndNeverAdded();
    void aFileThatCannotBeReplacedIsTold();
    void whatCouldNotBeReadIsNotReplaced();
    void anyBytesAreRead();
};

void InputHistoryFileTest::theFileIsNamedAfterThePurpose()
{
    const InputHistoryFile file(QStringLiteral("/folder/"), kPurpose);
    QCOMPARE(file.path(), QStringLiteral("/folder/inputSearchPath.ini"));
}

void InputHistoryFileTest::aMissingFileGivesTheDefaults()
{
    const ScratchFolder folder;
    const auto content = InputHistoryFile(folder.path(), kPurpose).read();
    QCOMPARE(content.size, QSize(300, 300));
    QCOMPARE(content.cursorLast, true);
    QVERIFY(!content.font);
    QCOMPARE(content.history, QStringList());
    QCOMPARE(content.learn, true);
    QCOMPARE(content.max, 50);
}

void InputHistoryFileTest::everyKeyIsRead()
{
    const auto content = contentOf("[General]\nsize=@Size(500 450)\ncursorLast=false\n"
                                   "[font]\nfamily=IPAGothic\npointSize=14\nbold=true\n"
                                   "[history]\nlist=C:/a/, \"D:/b,c/\"\nlearn=false\nmax=7\n");
    QCOMPARE(content.size, QSize(500, 450));
    QCOMPARE(content.cursorLast, false);
    QCOMPARE(content.font->family(), QStringLiteral("IPAGothic"));
    QCOMPARE(content.font->pointSize(), 14);
    QCOMPARE(content.font->weight(), 75);
    QCOMPARE(content.history, QStringList({QStringLiteral("C:/a/"), QStringLiteral("D:/b,c/")}));
    QCOMPARE(content.learn, false);
    QCOMPARE(content.max, 7);
}

void InputHistoryFileTest::aFontIsReadOnlyWithAFamily_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no family") << QByteArray("[font]\npointSize=30\nbold=true\n");
    QTest::newRow("an empty family") << QByteArray("[font]\nfamily=\npointSize=30\n");
}

void InputHistoryFileTest::aFontIsReadOnlyWithAFamily()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!contentOf(bytes).font);
}

void InputHistoryFileTest::theRestOfAFontHasDefaults()
{
    const auto content = contentOf("[font]\nfamily=tahoma\n");
    QCOMPARE(content.font->pointSize(), 12);
    QCOMPARE(content.font->weight(), 50);
}

void InputHistoryFileTest::aFontSizeThatCannotBeDrawnBecomesTheDefault_data()
{
    QTest::addColumn<QByteArray>("pointSize");
    for (const char *size : {"0", "-3", "201", "999999999", "large"})
        QTest::newRow(size) << QByteArray(size);
}

void InputHistoryFileTest::aFontSizeThatCannotBeDrawnBecomesTheDefault()
{
    QFETCH(QByteArray, pointSize);
    const auto content = contentOf("[font]\nfamily=tahoma\npointSize=" + pointSize + '\n');
    QCOMPARE(content.font->pointSize(), 12);
}

void InputHistoryFileTest::aBrokenSizeBecomesTheDefault()
{
    QCOMPARE(contentOf("[General]\nsize=@Size(-5 400)\n").size, QSize(300, 300));
    QCOMPARE(contentOf("[General]\nsize=wide\n").size, QSize(300, 300));
}

void InputHistoryFileTest::aMostThatIsNoneBecomesTheDefault_data()
{
    QTest::addColumn<QByteArray>("max");
    QTest::addColumn<int>("expected");
    for (const char *none :
         {"many", "", "0", "-1", "5O", "7,8", "1.5", "99999999999", "@Size(3 4)"})
        QTest::newRow(none) << QByteArray(none) << 50;
    QTest::newRow("1") << QByteArray("1") << 1;
    QTest::newRow("blanks around") << QByteArray(" 70 ") << 70;
}

void InputHistoryFileTest::aMostThatIsNoneBecomesTheDefault()
{
    QFETCH(QByteArray, max);
    QFETCH(int, expected);
    QCOMPARE(contentOf("[history]\nmax=" + max + '\n').max, expected);
}

void InputHistoryFileTest::whatIsSavedIsReadAgain()
{
    const ScratchFolder folder;
    const InputHistoryFile file(folder.path(), kPurpose);
    InputHistoryFile::Content content;
    content.size = QSize(640, 480);
    content.cursorLast = false;
    content.history = QStringList{QStringLiteral("C:/検索, パス/"), QStringLiteral(" \"x\" "),
                                  QStringLiteral("𠮷")};
    content.learn = false;
    QVERIFY(file.save(content));
    const auto again = file.read();
    QCOMPARE(again.size, content.size);
    QCOMPARE(again.cursorLast, false);
    QCOMPARE(again.history, content.history);
    QCOMPARE(again.learn, false);
}

void InputHistoryFileTest::japaneseIsWrittenEscaped()
{
    const ScratchFolder folder;
    InputHistoryFile::Content content;
    content.history = QStringList{QStringLiteral("検索")};
    QVERIFY(InputHistoryFile(folder.path(), kPurpose).save(content));
    const QByteArray bytes = folder.read(kName);
    QVERIFY2(bytes.contains("list=\\x691c\\x7d22"), bytes.constData());
    QVERIFY(!bytes.startsWith("\xef\xbb\xbf"));
}

void InputHistoryFileTest::keysTypedByHandAreKeptAndNeverAdded()
{
    const ScratchFolder folder;
    const InputHistoryFile file(folder.path(), kPurpose);
    QVERIFY(file.save(file.read()));
    QVERIFY(!folder.read(kName).contains("font"));
    QVERIFY(!folder.read(kName).contains("max"));

    folder.write(kName, "[font]\nfamily=tahoma\npointSize=11\n[history]\nmax=7\n");
    QVERIFY(file.save(file.read()));
    const auto content = file.read();
    QCOMPARE(content.font->pointSize(), 11);
    QCOMPARE(content.max, 7);
}

void InputHistoryFileTest::aFileThatCannotBeReplacedIsTold()
{
    const ScratchFolder folder;
    const InputHistoryFile file(folder.filePath(QStringLiteral("no such folder/")), kPurpose);
    QVERIFY(!file.save({}));
}

void InputHistoryFileTest::whatCouldNotBeReadIsNotReplaced()
{
    const ScratchFolder folder;
    const InputHistoryFile file(folder.path(), kPurpose);
    // A folder of that name stands for a file that cannot be read at this instant.
    const QString inTheWay = folder.makeFolder(kName);
    auto content = file.read();
    QVERIFY(QDir().rmdir(inTheWay));
    folder.write(kName, "[history]\nlist=a, b\n");
    content.history = QStringList{QStringLiteral("c")};
    QVERIFY(!file.save(content));
    QCOMPARE(folder.read(kName), QByteArray("[history]\nlist=a, b\n"));
}

void InputHistoryFileTest::anyBytesAreRead()
{
    QRandomGenerator random(20240501);
    const QByteArray pieces[] = {"[history]\n", "list=", "@Size(", "99999999999 1)", "\n",  "max=",
                                 "[font]\n",    "\\x",   "family", "=@Variant(",     "\"",  ",",
                                 "[General]\n", "size=", "\0",     "pointSize=",     "\xff"};
    for (int round = 0; round < 500; ++round) {
        QByteArray bytes;
        for (quint32 i = random.bounded(40u); i > 0; --i) {
            bytes += pieces[random.bounded(int(std::size(pieces)))];
            bytes += char(random.bounded(256));
        }
        const auto content = contentOf(bytes);
        QVERIFY(content.size.isValid());
        QVERIFY(!content.font || content.font->pointSize() > 0);
        QVERIFY(content.max >= 1);
    }
}

// Fonts need the application object.
QTEST_MAIN(InputHistoryFileTest)
#include "InputHistoryFileTest.moc"
