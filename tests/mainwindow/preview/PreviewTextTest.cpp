#include "mainwindow/preview/PreviewText.h"

#include "engine/CodeSet.h"
#include "tests/support/EncodedTextGenerator.h"

#include <QBuffer>
#include <QTest>
#include <QTextCodec>
#include <QTextDocument>
#include <QTextStream>

class PreviewTextTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void decodingIsWhatATextStreamReads_data();
    void decodingIsWhatATextStreamReads();
    void carriageReturnsStayInTheText();
    void aTextIsEncodedInItsForm_data();
    void aTextIsEncodedInItsForm();
    void aPairIsOneUnitInUtf32();
    void theDefaultIsTheLocalesCodec();
    void aDocumentGivesBackWhatIsForetold();
    void theBlocksOfADocumentAreTheLinesOfASearch_data();
    void theBlocksOfADocumentAreTheLinesOfASearch();
    void aFileOfCarriageReturnsHasItsLines();
    void theRowOfAHitIsFoundByItsColumn_data();
    void theRowOfAHitIsFoundByItsColumn();
    void whatAPersonWouldSaveSurvives_data();
    void whatAPersonWouldSaveSurvives();
    void whatWouldBeChangedDoesNotSurvive_data();
    void whatWouldBeChangedDoesNotSurvive();
    void charactersTheCodeSetLacksAreLost_data();
    void charactersTheCodeSetLacksAreLost();
    void lostCharactersAreTheFirstOfEachKind();
    void aLossIsFoundExactlyWhereTheTextReadsDifferently_data();
    void aLossIsFoundExactlyWhereTheTextReadsDifferently();
};

namespace {

using PreviewText::Form;

void addCodeSets()
{
    QTest::addColumn<int>("codeSet");
    for (int codeSet = 0; codeSet < CodeSet::kCount; ++codeSet)
        QTest::newRow(qPrintable(CodeSet::name(codeSet))) << codeSet;
}

QString streamed(const QByteArray &bytes, int codeSet)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QTextStream stream(&buffer);
    if (codeSet > 0)
        stream.setCodec(CodeSet::codec(codeSet));
    return stream.readAll();
}

QByteArray randomContent(EncodedTextGenerator *random, int codeSet)
{
    const QByteArray whole =
        PreviewText::encode(random->text(random->number(400)), Form{codeSet, CodeSet::Lf, false});
    switch (random->number(4)) {
    case 0:
        return whole;
    case 1:
        return random->broken(whole);
    case 2:
        return random->mark() + whole;
    default:
        return random->fragments(random->number(60));
    }
}

} // namespace

void PreviewTextTest::cleanup()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void PreviewTextTest::decodingIsWhatATextStreamReads_data()
{
    addCodeSets();
}

void PreviewTextTest::decodingIsWhatATextStreamReads()
{
    QFETCH(int, codeSet);
    EncodedTextGenerator random(4400 + quint32(codeSet));
    for (int i = 0; i < 400; ++i) {
        const QByteArray bytes = randomContent(&random, codeSet);
        QCOMPARE(PreviewText::decode(bytes, codeSet), streamed(bytes, codeSet));
    }
}

void PreviewTextTest::carriageReturnsStayInTheText()
{
    QCOMPARE(PreviewText::decode("a\r\nb\rc", CodeSet::Utf8), QStringLiteral("a\r\nb\rc"));
}

void PreviewTextTest::aTextIsEncodedInItsForm_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<int>("lineEnd");
    QTest::addColumn<bool>("bom");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, int codeSet, int lineEnd, bool bom,
                        const QByteArray &bytes) {
        QTest::newRow(name) << codeSet << lineEnd << bom << bytes;
    };
    using namespace CodeSet;
    row("Shift-JIS, CRLF", ShiftJis, CrLf, false, "\x82\xA0\r\nb");
    row("Shift-JIS has no mark", ShiftJis, Lf, true, "\x82\xA0\nb");
    row("EUC-JP, LF", EucJp, Lf, false, "\xA4\xA2\nb");
    row("ISO 2022-JP, CR", Iso2022Jp, Cr, false, "\x1B$B$\"\x1B(B\rb");
    row("UTF-8, CR", Utf8, Cr, false, "\xE3\x81\x82\rb");
    row("UTF-8 with a mark", Utf8, CrLf, true, "\xEF\xBB\xBF\xE3\x81\x82\r\nb");
    row("UTF-16BE", Utf16Be, Lf, false, QByteArray("\x30\x42\0\n\0b", 6));
    row("UTF-16BE with a mark", Utf16Be, CrLf, true, QByteArray("\xFE\xFF\x30\x42\0\r\0\n\0b", 10));
    row("UTF-16LE with a mark", Utf16Le, Lf, true, QByteArray("\xFF\xFE\x42\x30\n\0b\0", 8));
    row("UTF-32BE with a mark", Utf32Be, Lf, true,
        QByteArray("\0\0\xFE\xFF\0\0\x30\x42\0\0\0\n\0\0\0b", 16));
    row("UTF-32LE", Utf32Le, Lf, false, QByteArray("\x42\x30\0\0\n\0\0\0b\0\0\0", 12));
    row("a number that is no line end", Utf8, 7, false, "\xE3\x81\x82\nb");
}

void PreviewTextTest::aTextIsEncodedInItsForm()
{
    QFETCH(int, codeSet);
    QFETCH(int, lineEnd);
    QFETCH(bool, bom);
    QFETCH(QByteArray, bytes);
    QCOMPARE(PreviewText::encode(QStringLiteral("あ\nb"), Form{codeSet, lineEnd, bom}).toHex(),
             bytes.toHex());
}

void PreviewTextTest::aPairIsOneUnitInUtf32()
{
    const QString text = QStringLiteral("a😀b");
    QCOMPARE(PreviewText::encode(text, Form{CodeSet::Utf32Be, CodeSet::Lf, false}).toHex(),
             QByteArray("000000610001f60000000062"));
    QCOMPARE(PreviewText::encode(text, Form{CodeSet::Utf32Le, CodeSet::Lf, false}).toHex(),
             QByteArray("6100000000f6010062000000"));
}

void PreviewTextTest::theDefaultIsTheLocalesCodec()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("EUC-JP"));
    QCOMPARE(PreviewText::encode(QStringLiteral("あ"), Form()), QByteArray("\xA4\xA2"));
    QCOMPARE(PreviewText::decode("\xA4\xA2", CodeSet::Default), QStringLiteral("あ"));
}

void PreviewTextTest::aDocumentGivesBackWhatIsForetold()
{
    EncodedTextGenerator random(77);
    const QString ends = QStringLiteral("\r\n\u2028\u2029\u00A0\uFDD0\uFDD1\u0085\f\v");
    for (int i = 0; i < 400; ++i) {
        QString text = random.text(random.number(200));
        for (int end = 0; end < 10; ++end)
            text.insert(random.number(text.size() + 1), ends.at(random.number(ends.size())));
        Form form;
        PreviewText::takeReturns(text, &form);
        QTextDocument document;
        document.setPlainText(PreviewText::forDocument(text, form));
        QCOMPARE(PreviewText::fromDocument(document.toRawText(), form),
                 PreviewText::asEdited(text, form));
    }
}

void PreviewTextTest::theBlocksOfADocumentAreTheLinesOfASearch_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("carriage returns among line feeds") << QStringLiteral("a\rb\nc\r\rd\n");
    QTest::newRow("and among pairs") << QStringLiteral("a\r\nb\rc\r\r\nd");
    QTest::newRow("a carriage return first") << QStringLiteral("\ra\nb");
    QTest::newRow("a carriage return last") << QStringLiteral("a\nb\r");
    QTest::newRow("line separators") << QStringLiteral("a\u2028b\nc");
    QTest::newRow("both") << QStringLiteral("a\u2028b\rc\nd");
    QTest::newRow("paragraph separators") << QStringLiteral("a\u2029b\nc\u2029");
    QTest::newRow("the document's own marks") << QStringLiteral("a\uFDD0b\uFDD1\nc");
    QTest::newRow("form feeds") << QStringLiteral("a\fb\vc\u0085d\ne");
}

void PreviewTextTest::theBlocksOfADocumentAreTheLinesOfASearch()
{
    QFETCH(QString, text);
    Form form{CodeSet::Utf8, CodeSet::Cr, false};
    PreviewText::takeReturns(text, &form);
    QTextDocument document;
    document.setPlainText(PreviewText::forDocument(text, form));
    QString searched = text;
    searched.remove(QLatin1Char('\r'));
    QCOMPARE(document.blockCount(), searched.split(QLatin1Char('\n')).size());
    QString saved = text;
    saved.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QCOMPARE(PreviewText::fromDocument(document.toRawText(), form), saved);
}

void PreviewTextTest::aFileOfCarriageReturnsHasItsLines()
{
    Form form{CodeSet::Utf8, CodeSet::CrLf, false};
    PreviewText::takeReturns(QStringLiteral("a\rb\r"), &form);
    QVERIFY(!form.loneReturns);
    QCOMPARE(form.lineEnd, int(CodeSet::Cr));
    QCOMPARE(PreviewText::forDocument(QStringLiteral("a\rb\r"), form), QStringLiteral("a\nb\n"));
    QVERIFY(PreviewText::survives("a\rb\r", form));
}

void PreviewTextTest::theRowOfAHitIsFoundByItsColumn_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("row");
    const auto row = [](const char *name, const QString &text, int column, int expected) {
        QTest::newRow(name) << text << column << expected;
    };
    const QString line = QStringLiteral("ab\u2028あ\tc\u2029d");
    row("the first", line, 1, 0);
    row("the end of the first row", line, 2, 0);
    row("the start of the second", line, 3, 3);
    row("in the second, a wide character and a tab", line, 9, 3);
    row("the third", line, 10, 7);
    row("beyond the end", line, 99, 7);
    row("no column", line, 0, 0);
    row("no text", QString(), 1, 0);
    row("a row of nothing before the hit", QStringLiteral("\u2028a"), 1, 1);
}

void PreviewTextTest::theRowOfAHitIsFoundByItsColumn()
{
    QFETCH(QString, text);
    QFETCH(int, column);
    QFETCH(int, row);
    // "ab", then "あ" in columns 3 and 4, a tab up to column 8, "c" in 9, "d" in 10.
    QCOMPARE(PreviewText::rowOf(text, column, 8), row);
}

void PreviewTextTest::whatAPersonWouldSaveSurvives_data()
{
    addCodeSets();
}

void PreviewTextTest::whatAPersonWouldSaveSurvives()
{
    QFETCH(int, codeSet);
    const QString text = QStringLiteral("一行目\n\n\tｶﾅ and ASCII\n終わり");
    for (const int lineEnd : {CodeSet::Cr, CodeSet::Lf, CodeSet::CrLf}) {
        for (const bool bom : {false, true}) {
            const Form form{codeSet, lineEnd, bom};
            const QByteArray bytes = PreviewText::encode(text, form);
            // Half-width katakana have no place in the ISO 2022-JP of some.
            if (PreviewText::losesCharacters(text, form))
                QCOMPARE(codeSet, int(CodeSet::Iso2022Jp));
            else
                QVERIFY(PreviewText::survives(bytes, form));
        }
    }
}

void PreviewTextTest::whatWouldBeChangedDoesNotSurvive_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<int>("lineEnd");
    QTest::addColumn<bool>("bom");
    const auto row = [](const char *name, const QByteArray &bytes, int codeSet, int lineEnd,
                        bool bom) {
        QTest::newRow(name) << bytes << codeSet << lineEnd << bom;
    };
    using namespace CodeSet;
    row("a broken byte in UTF-8", "a\xFFz\n", Utf8, Lf, false);
    row("a broken byte in Shift-JIS", "a\xFF\n", ShiftJis, Lf, false);
    row("a broken byte in EUC-JP", "a\xFF\n", EucJp, Lf, false);
    row("a cut character", "abc\xE3\x81", Utf8, Lf, false);
    row("half a unit", QByteArray("a\0b", 3), Utf16Le, Lf, false);
    row("mixed line ends", "a\r\nb\n", Utf8, CrLf, false);
    row("a lone carriage return", "a\rb\n", Utf8, Lf, false);
    row("other line ends than detected", "a\nb\n", Utf8, CrLf, false);
    row("a mark that was not detected", "\xEF\xBB\xBFz\n", Utf8, Lf, false);
    row("a mark that is not there", "z\n", Utf8, Lf, true);
    row("a mark of another code set", "\xEF\xBB\xBF\xE3\x81\x82", ShiftJis, Lf, false);
    row("noncharacters that others are shown as", "a\xEF\xB7\x93z\n", Utf8, Lf, false);
    row("a needless shift", "\x1B$B\x1B(Ba\n", Iso2022Jp, Lf, false);
}

void PreviewTextTest::whatWouldBeChangedDoesNotSurvive()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, codeSet);
    QFETCH(int, lineEnd);
    QFETCH(bool, bom);
    QVERIFY(!PreviewText::survives(bytes, Form{codeSet, lineEnd, bom}));
}

void PreviewTextTest::charactersTheCodeSetLacksAreLost_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QString>("lost");
    const auto row = [](const char *name, const QString &text, int codeSet, const QString &lost) {
        QTest::newRow(name) << text << codeSet << lost;
    };
    const QString text = QStringLiteral("あ😀b한c");
    using namespace CodeSet;
    row("Shift-JIS", text, ShiftJis, QStringLiteral("😀한"));
    row("EUC-JP", text, EucJp, QStringLiteral("😀한"));
    row("ISO 2022-JP", text, Iso2022Jp, QStringLiteral("😀한"));
    row("UTF-8", text, Utf8, QString());
    row("UTF-16LE", text, Utf16Le, QString());
    row("UTF-32BE", text, Utf32Be, QString());
    row("half a pair in UTF-8", QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b"), Utf8,
        QString(QChar(0xD800)));
    row("nothing", QString(), ShiftJis, QString());
}

void PreviewTextTest::charactersTheCodeSetLacksAreLost()
{
    QFETCH(QString, text);
    QFETCH(int, codeSet);
    QFETCH(QString, lost);
    QCOMPARE(PreviewText::lostCharacters(text, codeSet), lost);
    QCOMPARE(PreviewText::losesCharacters(text, Form{codeSet, CodeSet::Lf, false}),
             !lost.isEmpty());
}

void PreviewTextTest::lostCharactersAreTheFirstOfEachKind()
{
    QString text;
    for (int i = 0; i < 30; ++i)
        text += QString(3, QChar(0xAC00 + i)) + QStringLiteral("あ");
    QCOMPARE(PreviewText::lostCharacters(text, CodeSet::ShiftJis).size(), 20);
    QCOMPARE(PreviewText::lostCharacters(text, CodeSet::ShiftJis, 2), QStringLiteral("가각"));
    QCOMPARE(PreviewText::lostCharacters(text, CodeSet::ShiftJis, 100).size(), 30);
}

void PreviewTextTest::aLossIsFoundExactlyWhereTheTextReadsDifferently_data()
{
    addCodeSets();
}

void PreviewTextTest::aLossIsFoundExactlyWhereTheTextReadsDifferently()
{
    QFETCH(int, codeSet);
    EncodedTextGenerator random(880 + quint32(codeSet));
    int losses = 0;
    for (int i = 0; i < 300; ++i) {
        const bool units = random.oneIn(2);
        Form form{codeSet, random.number(3), random.oneIn(2)};
        const QString source =
            units ? random.units(random.number(30)) : random.text(random.number(30));
        PreviewText::takeReturns(source, &form);
        const QString text = PreviewText::asEdited(source, form);
        const QByteArray bytes = PreviewText::encode(text, form);
        const QString read = streamed(bytes, codeSet);
        const bool lost = PreviewText::losesCharacters(text, form);
        QCOMPARE(lost, PreviewText::asEdited(read, form) != text);
        losses += int(lost);
    }
    QVERIFY(losses < 300);
}

QTEST_MAIN(PreviewTextTest)
#include "PreviewTextTest.moc"
