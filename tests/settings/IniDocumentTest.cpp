#include "settings/IniDocument.h"

#include "tests/support/NativeLines.h"
#include "tests/support/ScratchFolder.h"

#include <QFile>
#include <QSettings>
#include <QTest>

#include <random>

using Form = IniDocument::Form;

class IniDocumentTest : public QObject {
    Q_OBJECT

private slots:
    void keysOfTheGeneralSectionHaveNoPrefix();
    void aSectionThatIsCalledGeneralIsAnother();
    void theFirstKeyAfterAByteOrderMarkIsRead();
    void ofTwoLinesWithOneKeyTheLastCounts();
    void aKeyIsFoundWhateverItsCase();
    void aBackslashInAKeyIsASlash();
    void aSemicolonOutsideQuotesStartsAComment();
    void anUnfinishedLineCostsNoOtherKey_data();
    void anUnfinishedLineCostsNoOtherKey();
    void aMissingKeyGivesTheDefault();
    void aSingleTextIsAListOfOne();
    void childKeysAreSortedAndDirect();
    void allKeysAreThoseOfQt();
    void everythingElseStaysWhenAValueChanges();
    void aChangedValueStaysWhereItsKeyStands();
    void aNewKeyGoesToTheEndOfItsSection();
    void aNewSectionGoesToTheEndOfTheFile();
    void theGeneralSectionIsMadeAtTheStart();
    void anEmptySectionNameIsNotTheGeneralSection();
    void aUtf8FileHasAByteOrderMarkAndWindowsLineEnds_data();
    void aUtf8FileHasAByteOrderMarkAndWindowsLineEnds();
    void anEscapedFileKeepsItsLineEnds();
    void anEscapedFileWithAByteOrderMarkStaysReadable();
    void anEscapedFileIsAscii();
    void aWrittenFileIsReadByQt_data();
    void aWrittenFileIsReadByQt();
    void aFileOfQtIsRead_data();
    void aFileOfQtIsRead();
    void anyBytesSurviveReadingAndWriting_data();
    void anyBytesSurviveReadingAndWriting();
    void aDocumentOfManyLinesIsChangedInReasonableSteps();
};

namespace {

const QByteArray kMark = QByteArrayLiteral("\xef\xbb\xbf");

QString text(const QByteArray &bytes, const char *key, Form form = Form::Utf8)
{
    return IniDocument(bytes, form).text(QString::fromUtf8(key), QStringLiteral("(none)"));
}

QByteArray changed(const QByteArray &bytes, const char *key, const QVariant &value,
                   Form form = Form::Escaped)
{
    IniDocument document(bytes, form);
    document.setValue(QString::fromUtf8(key), value);
    return document.toBytes();
}

QString valueOf(const QString &key)
{
    return key + QStringLiteral(";漢字");
}

void addForms()
{
    QTest::addColumn<Form>("form");
    QTest::newRow("escaped") << Form::Escaped;
    QTest::newRow("UTF-8") << Form::Utf8;
}

} // namespace

Q_DECLARE_METATYPE(IniDocument::Form)

void IniDocumentTest::keysOfTheGeneralSectionHaveNoPrefix()
{
    QCOMPARE(text("a=1", "a"), QStringLiteral("1"));
    QCOMPARE(text("[General]\na=1", "a"), QStringLiteral("1"));
    QCOMPARE(text("[GENERAL]\na=1", "a"), QStringLiteral("1"));
    QCOMPARE(text("[x]\nb=2\n[General]\na=1", "a"), QStringLiteral("1"));
    QCOMPARE(text("[x]\nb=2\n[General]\na=1", "x/b"), QStringLiteral("2"));
}

void IniDocumentTest::aSectionThatIsCalledGeneralIsAnother()
{
    QCOMPARE(text("[%General]\na=1", "General/a"), QStringLiteral("1"));
    QCOMPARE(text("[%General]\na=1", "a"), QStringLiteral("(none)"));
    QCOMPARE(changed("", "General/a", 1), nativeLines("[%General]\na=1\n"));
    QCOMPARE(changed("[%General]\na=1\n", "General/b", 2), QByteArray("[%General]\na=1\nb=2\n"));
}

void IniDocumentTest::theFirstKeyAfterAByteOrderMarkIsRead()
{
    QCOMPARE(text(kMark + "a=1", "a"), QStringLiteral("1"));
    QCOMPARE(text(kMark + "a=1", "a", Form::Escaped), QStringLiteral("1"));
    QCOMPARE(text(kMark + "[General]\r\na=1", "a"), QStringLiteral("1"));
    // Qt itself would overlook the key without the section's line.
    QCOMPARE(changed(kMark + "a=1\r\n", "b", 2, Form::Utf8), kMark + "[General]\r\na=1\r\nb=2\r\n");
}

void IniDocumentTest::ofTwoLinesWithOneKeyTheLastCounts()
{
    const QByteArray bytes = "a=1\na=2\n[x]\nb=1\n[General]\na=3\n[x]\nb=2\n";
    QCOMPARE(text(bytes, "a"), QStringLiteral("3"));
    QCOMPARE(text(bytes, "x/b"), QStringLiteral("2"));
    QCOMPARE(text(changed(bytes, "a", 4), "a"), QStringLiteral("4"));
}

void IniDocumentTest::aKeyIsFoundWhateverItsCase()
{
    QCOMPARE(text("BigSize=3", "bigsize"), QStringLiteral("3"));
    QCOMPARE(text("[Font]\nGrep_Family=x", "font/grep_family"), QStringLiteral("x"));
    QCOMPARE(text("BigSize=3\nbigsize=4\n", "bigsize"), QStringLiteral("4"));
    QCOMPARE(text("bigsize=4\nBigSize=3\n", "bigsize"), QStringLiteral("4"));
    QCOMPARE(changed("[General]\nBigSize=3\n", "bigsize", 5), QByteArray("[General]\nBigSize=5\n"));
}

void IniDocumentTest::aBackslashInAKeyIsASlash()
{
    QCOMPARE(text("[General]\nfont\\x=1", "font/x"), QStringLiteral("1"));
    QCOMPARE(changed("[General]\nfont\\x=1\n", "font/x", 2), QByteArray("[General]\nfont\\x=2\n"));
    QCOMPARE(changed("", "a/b/c", 1), nativeLines("[a]\nb\\c=1\n"));
}

void IniDocumentTest::aSemicolonOutsideQuotesStartsAComment()
{
    QCOMPARE(text("a=1 ; one\nb=2", "a"), QStringLiteral("1"));
    QCOMPARE(text("a=1 ; one\nb=2", "b"), QStringLiteral("2"));
    QCOMPARE(text("; a=1\nb=2", "a"), QStringLiteral("(none)"));
    QCOMPARE(text("a=\"*.h;*.cpp\"", "a"), QStringLiteral("*.h;*.cpp"));
    QCOMPARE(text("a=x\\;b", "a"), QStringLiteral("xb"));
}

void IniDocumentTest::anUnfinishedLineCostsNoOtherKey_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("open quote") << QByteArray("a=\"x");
    QTest::newRow("path that ends in a backslash") << QByteArray("a=C:\\tools\\");
    QTest::newRow("no equals sign") << QByteArray("junk");
    QTest::newRow("quote without key") << QByteArray("\"");
    QTest::newRow("NUL") << QByteArray("\0=\0", 3);
}

void IniDocumentTest::anUnfinishedLineCostsNoOtherKey()
{
    QFETCH(QByteArray, line);
    for (const QByteArray &end : {QByteArray("\n"), QByteArray("\r\n"), QByteArray("\r")}) {
        const QByteArray bytes = "[General]" + end + line + end + "b=2" + end;
        QCOMPARE(text(bytes, "b"), QStringLiteral("2"));
        QVERIFY(changed(bytes, "c", 3).contains(line));
    }
}

void IniDocumentTest::aMissingKeyGivesTheDefault()
{
    const IniDocument document("a=1\n[x]\nb=2\n", Form::Utf8);
    QCOMPARE(document.value(QStringLiteral("b"), 7), QVariant(7));
    QCOMPARE(document.text(QStringLiteral("b"), QStringLiteral("d")), QStringLiteral("d"));
    QCOMPARE(document.list(QStringLiteral("b"), {QStringLiteral("d")}),
             QStringList{QStringLiteral("d")});
    QVERIFY(!document.contains(QStringLiteral("b")));
    QVERIFY(document.contains(QStringLiteral("x/b")));
}

void IniDocumentTest::aSingleTextIsAListOfOne()
{
    const IniDocument document("a=one\nb=\"x, y\"\nc=x, y\nd=@Invalid()\n", Form::Utf8);
    QCOMPARE(document.list(QStringLiteral("a")), QStringList{QStringLiteral("one")});
    QCOMPARE(document.list(QStringLiteral("b")), QStringList{QStringLiteral("x, y")});
    QCOMPARE(document.list(QStringLiteral("c")),
             QStringList({QStringLiteral("x"), QStringLiteral("y")}));
    QCOMPARE(document.list(QStringLiteral("d")), QStringList());
}

void IniDocumentTest::childKeysAreSortedAndDirect()
{
    const IniDocument document("[langlist]\nc=1\na=2\nb=3\nb=4\nd\\e=5\n[other]\nz=1\n",
                               Form::Utf8);
    QCOMPARE(document.childKeys(QStringLiteral("langlist")),
             QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    QCOMPARE(document.childKeys(QStringLiteral("none")), QStringList());
}

void IniDocumentTest::allKeysAreThoseOfQt()
{
    const QByteArray bytes = "k=0\n[b]\nk=1\nk2=1\n[a]\nk=2\n[empty]\n[c/d]\nk=3\n"
                             "[e]\nf\\g=4\n[General]\nk=5\n[%General]\nk=6\n[b]\nk3=7\n";
    ScratchFolder folder;
    const QString path = folder.write(QStringLiteral("a.ini"), bytes);
    const QStringList keys = IniDocument(bytes, Form::Utf8).allKeys();
    QCOMPARE(keys, QSettings(path, QSettings::IniFormat).allKeys());
    QVERIFY(keys.contains(QStringLiteral("k")));
    QVERIFY(keys.contains(QStringLiteral("c/d/k")));
    QVERIFY(keys.contains(QStringLiteral("e/f/g")));
    QVERIFY(IniDocument(QByteArray(), Form::Utf8).allKeys().isEmpty());
}

void IniDocumentTest::everythingElseStaysWhenAValueChanges()
{
    const QByteArray before = "; my settings\n"
                              "[General]\n"
                              "logmax=50 \n"
                              "\n"
                              "; wide tabs\n"
                              "tabcolm=4\n"
                              "mine=@Variant(\\0\\0\\0\\x7f)\n"
                              "odd line\n"
                              "[mine]\n"
                              "list=a,b ,\"c\"\n";
    QByteArray after = before;
    after.replace("tabcolm=4", "tabcolm=8");
    QCOMPARE(changed(before, "tabcolm", 8), after);
}

void IniDocumentTest::aChangedValueStaysWhereItsKeyStands()
{
    QCOMPARE(changed("[b]\nx=1\ny=2\n[a]\nz=3\n", "b/x", 9),
             QByteArray("[b]\nx=9\ny=2\n[a]\nz=3\n"));
}

void IniDocumentTest::aNewKeyGoesToTheEndOfItsSection()
{
    QCOMPARE(changed("[a]\nx=1\n\n[b]\ny=2\n", "a/z", 3),
             QByteArray("[a]\nx=1\nz=3\n\n[b]\ny=2\n"));
    QCOMPARE(changed("[a]\n\n[b]\ny=2\n", "a/z", 3), QByteArray("[a]\nz=3\n\n[b]\ny=2\n"));
    QCOMPARE(changed("[a]\nx=1\n[b]\ny=2\n[a]\nw=1\n", "a/z", 3),
             QByteArray("[a]\nx=1\n[b]\ny=2\n[a]\nw=1\nz=3\n"));
}

void IniDocumentTest::aNewSectionGoesToTheEndOfTheFile()
{
    QCOMPARE(changed("[a]\nx=1\n", "b/z", 3), QByteArray("[a]\nx=1\n\n[b]\nz=3\n"));
    QCOMPARE(changed("[a]\nx=1", "日本/z", 3), QByteArray("[a]\nx=1\n\n[%U65E5%U672C]\nz=3\n"));
}

void IniDocumentTest::theGeneralSectionIsMadeAtTheStart()
{
    QCOMPARE(changed("; c\n[a]\nx=1\n", "z", 3), QByteArray("[General]\nz=3\n\n; c\n[a]\nx=1\n"));
    QCOMPARE(changed("", "z", 3), nativeLines("[General]\nz=3\n"));
}

void IniDocumentTest::anEmptySectionNameIsNotTheGeneralSection()
{
    QCOMPARE(text("[]\na=1\n", "a"), QStringLiteral("(none)"));
    QCOMPARE(changed("[]\na=1\n", "b", 2), QByteArray("[General]\nb=2\n\n[]\na=1\n"));
}

void IniDocumentTest::aUtf8FileHasAByteOrderMarkAndWindowsLineEnds_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("no file") << QByteArray();
    QTest::newRow("Unix") << QByteArray("[General]\na=1\n");
    QTest::newRow("Windows") << QByteArray("[General]\r\na=1\r\n");
    QTest::newRow("doubled") << QByteArray("[General]\r\r\na=1\r\r\n");
    QTest::newRow("old Macintosh") << QByteArray("[General]\ra=1\r");
    QTest::newRow("with its mark") << kMark + "[General]\r\na=1\r\n";
    QTest::newRow("no line end at the end") << QByteArray("[General]\na=1");
    QTest::newRow("line ends inside quotes") << QByteArray("[General]\na=\"1\n2\r\n3\"\n");
}

void IniDocumentTest::aUtf8FileHasAByteOrderMarkAndWindowsLineEnds()
{
    QFETCH(QByteArray, before);
    QByteArray after = changed(before, "b", QStringLiteral("x\r\ny"), Form::Utf8);
    QVERIFY(after.startsWith(kMark + "[General]\r\n"));
    QVERIFY(after.endsWith("\r\n"));
    QVERIFY(!after.contains("\r\r"));
    QCOMPARE(after.count(kMark), 1);
    after.replace("\r\n", "");
    QVERIFY(!after.contains('\n') && !after.contains('\r'));
}

void IniDocumentTest::anEscapedFileKeepsItsLineEnds()
{
    QCOMPARE(changed("[General]\na=1\n", "b", 2), QByteArray("[General]\na=1\nb=2\n"));
    QCOMPARE(changed("[General]\r\na=1\r\n", "b", 2), QByteArray("[General]\r\na=1\r\nb=2\r\n"));
}

void IniDocumentTest::anEscapedFileWithAByteOrderMarkStaysReadable()
{
    const QByteArray before = kMark + "[General]\nmine=検索\n";
    const QByteArray after = changed(before, "b", QStringLiteral("検"));
    QCOMPARE(after, before + "b=\\x691c\n");
    QCOMPARE(text(after, "mine", Form::Escaped), QStringLiteral("検索"));
    QCOMPARE(text(after, "b", Form::Escaped), QStringLiteral("検"));
}

void IniDocumentTest::anEscapedFileIsAscii()
{
    QCOMPARE(changed("", "keyword/001", QStringLiteral("101検索")),
             nativeLines("[keyword]\n001=101\\x691c\\x7d22\n"));
    QCOMPARE(text("a=\xe9", "a", Form::Escaped), QStringLiteral("é"));
}

void IniDocumentTest::aWrittenFileIsReadByQt_data()
{
    addForms();
}

void IniDocumentTest::aWrittenFileIsReadByQt()
{
    QFETCH(Form, form);
    const ScratchFolder folder;
    IniDocument document(form);
    const QStringList keys{QStringLiteral("first"),     QStringLiteral("日本"),
                           QStringLiteral("s/a b"),     QStringLiteral("General/x"),
                           QStringLiteral("日本/語/x"), QStringLiteral("last")};
    for (const QString &key : keys)
        document.setValue(key, valueOf(key));
    QSettings file(folder.write(QStringLiteral("a.ini"), document.toBytes()), QSettings::IniFormat);
    if (form == Form::Utf8)
        file.setIniCodec("UTF-8");
    QStringList expected = keys;
    expected.sort();
    QCOMPARE(file.allKeys(), expected);
    for (const QString &key : keys)
        QCOMPARE(file.value(key).toString(), valueOf(key));
    // Qt takes the byte-order mark for a broken line, and reads on.
    if (form == Form::Escaped)
        QCOMPARE(file.status(), QSettings::NoError);
}

void IniDocumentTest::aFileOfQtIsRead_data()
{
    addForms();
}

void IniDocumentTest::aFileOfQtIsRead()
{
    QFETCH(Form, form);
    const ScratchFolder folder;
    const QString path = folder.filePath(QStringLiteral("a.ini"));
    const QStringList keys{QStringLiteral("first"), QStringLiteral("日本"), QStringLiteral("s/a b"),
                           QStringLiteral("General/x"), QStringLiteral("日本/語/x")};
    {
        QSettings file(path, QSettings::IniFormat);
        if (form == Form::Utf8)
            file.setIniCodec("UTF-8");
        for (const QString &key : keys)
            file.setValue(key, valueOf(key));
    }
    const IniDocument document(folder.read(QStringLiteral("a.ini")), form);
    for (const QString &key : keys)
        QCOMPARE(document.text(key), valueOf(key));
}

void IniDocumentTest::anyBytesSurviveReadingAndWriting_data()
{
    addForms();
}

void IniDocumentTest::anyBytesSurviveReadingAndWriting()
{
    QFETCH(Form, form);
    std::mt19937 random(4711);
    constexpr char frequent[] = "\n\r\t =;\"\\[]%@(),aU0\xe6\xef";
    for (int i = 0; i < 4000; ++i) {
        QByteArray bytes;
        for (size_t n = random() % 60; n > 0; --n) {
            const bool any = random() % 8 == 0;
            bytes +=
                any ? static_cast<char>(random() % 256) : frequent[random() % sizeof(frequent)];
        }
        const IniDocument first(bytes, form);
        const QByteArray once = first.toBytes();
        IniDocument second(once, form);
        QCOMPARE(second.toBytes(), once);
        second.setValue(QStringLiteral("new"), QStringLiteral("漢"));
        second.setValue(QStringLiteral("section/new"), 1);
        const IniDocument third(second.toBytes(), form);
        QCOMPARE(third.text(QStringLiteral("new")), QStringLiteral("漢"));
        QCOMPARE(third.value(QStringLiteral("section/new")).toInt(), 1);
        QCOMPARE(third.text(QStringLiteral("a")), first.text(QStringLiteral("a")));
    }
}

void IniDocumentTest::aDocumentOfManyLinesIsChangedInReasonableSteps()
{
    QByteArray bytes = QByteArray("; comment\n").repeated(5000);
    for (int i = 0; i < 5000; ++i)
        bytes += "key" + QByteArray::number(i) + "=1\n";
    IniDocument document(bytes, Form::Utf8);
    for (int i = 0; i < 80; ++i)
        document.setValue(QStringLiteral("new%1").arg(i), i);
    const IniDocument again(document.toBytes(), Form::Utf8);
    QCOMPARE(again.value(QStringLiteral("key4999")).toInt(), 1);
    QCOMPARE(again.value(QStringLiteral("new79")).toInt(), 79);
}

QTEST_GUILESS_MAIN(IniDocumentTest)
#include "IniDocumentTest.moc"
