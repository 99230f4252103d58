#include "cli/GrepFormat.h"
#include "cli/JsonFormat.h"
#include "cli/PlainFormat.h"
#include "engine/CodeSet.h"
#include "engine/NativePath.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

FileResult twoHits()
{
    return {QStringLiteral("src/港.txt"),
            CodeSet::ShiftJis,
            {QStringLiteral("     12:    5:foo 灯台 foo"),
             QStringLiteral("  123456:    1:\tfoo: 1:2:3")}};
}

FileResult withoutHits()
{
    return {QStringLiteral("src/港.txt"), CodeSet::ShiftJis, {}};
}

bool namesMayBeAnyBytes()
{
    return NativePath::toNative(NativePath::fromNative("\x81")) == "\x81";
}

/// A name whose third byte is no UTF-8.
FileResult brokenName()
{
    return {QStringLiteral("a/") + QChar(0xDC81) + QStringLiteral("b"),
            CodeSet::Utf8,
            {QStringLiteral("      1:    1:x")}};
}

SearchCondition condition(const QString &keyword, int flags)
{
    SearchCondition condition;
    condition.keyword1 = keyword;
    condition.flg = flags;
    return condition;
}

QByteArray jsonOfText(const QString &text)
{
    return JsonFormat().format(
        {QStringLiteral("a"), CodeSet::Utf8, {QStringLiteral("      1:    1:") + text}});
}

} // namespace

class ResultFormatTest : public QObject {
    Q_OBJECT

private slots:
    void plainIsTheHeadAndTheHitStrings();
    void plainNamesAFileWithoutHits();
    void plainWritesThePathsOwnBytes();
    void plainColoursPathNumbersAndMatches();
    void grepIsPathLineColumnAndText();
    void grepIsThePathAloneForAFileWithoutHits();
    void grepWritesThePathsOwnBytes();
    void grepColoursPathNumbersAndMatches();
    void theColouredMatchesAreThoseOfTheSearch_data();
    void theColouredMatchesAreThoseOfTheSearch();
    void jsonIsOneObjectAHit();
    void jsonHasNullsForAFileWithoutHits();
    void jsonEscapesWhatWouldBreakTheLine_data();
    void jsonEscapesWhatWouldBreakTheLine();
    void jsonKeepsPairsAndReplacesLoneSurrogates();
    void jsonOfABrokenNameIsValidAndHoldsItsBytes();
    void jsonOfAReplacementCharacterInAValidNameHasNoBase64();
};

void ResultFormatTest::plainIsTheHeadAndTheHitStrings()
{
    QCOMPARE(PlainFormat(HitPainter()).format(twoHits()),
             QByteArray("::src/港.txt\n"
                        "     12:    5:foo 灯台 foo\n"
                        "  123456:    1:\tfoo: 1:2:3\n"));
}

void ResultFormatTest::plainNamesAFileWithoutHits()
{
    QCOMPARE(PlainFormat(HitPainter()).format(withoutHits()), QByteArray("::src/港.txt\n"));
}

void ResultFormatTest::plainWritesThePathsOwnBytes()
{
    if (!namesMayBeAnyBytes())
        QSKIP("names are text here");
    QCOMPARE(PlainFormat(HitPainter()).format(brokenName()),
             QByteArray("::a/\x81"
                        "b\n      1:    1:x\n"));
}

void ResultFormatTest::plainColoursPathNumbersAndMatches()
{
    const HitPainter painter(condition(QStringLiteral("foo"), 0));
    QCOMPARE(PlainFormat(painter).format(twoHits()),
             QByteArray("::\x1b[35msrc/港.txt\x1b[m\n"
                        "\x1b[32m     12:    5:\x1b[m\x1b[1;31mfoo\x1b[m 灯台 \x1b[1;31mfoo\x1b[m\n"
                        "\x1b[32m  123456:    1:\x1b[m\t\x1b[1;31mfoo\x1b[m: 1:2:3\n"));
}

void ResultFormatTest::grepIsPathLineColumnAndText()
{
    QCOMPARE(GrepFormat(HitPainter()).format(twoHits()),
             QByteArray("src/港.txt:12:5:foo 灯台 foo\n"
                        "src/港.txt:123456:1:\tfoo: 1:2:3\n"));
}

void ResultFormatTest::grepIsThePathAloneForAFileWithoutHits()
{
    QCOMPARE(GrepFormat(HitPainter()).format(withoutHits()), QByteArray("src/港.txt\n"));
}

void ResultFormatTest::grepWritesThePathsOwnBytes()
{
    if (!namesMayBeAnyBytes())
        QSKIP("names are text here");
    QCOMPARE(GrepFormat(HitPainter()).format(brokenName()),
             QByteArray("a/\x81"
                        "b:1:1:x\n"));
}

void ResultFormatTest::grepColoursPathNumbersAndMatches()
{
    const HitPainter painter(condition(QStringLiteral("灯台"), 0));
    const FileResult file = {
        QStringLiteral("a"), CodeSet::Utf8, {QStringLiteral("     12:    5:foo 灯台 foo")}};
    QCOMPARE(GrepFormat(painter).format(file),
             QByteArray("\x1b[35ma\x1b[m:\x1b[32m12\x1b[m:\x1b[32m5\x1b[m:"
                        "foo \x1b[1;31m灯台\x1b[m foo\n"));
}

void ResultFormatTest::theColouredMatchesAreThoseOfTheSearch_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("painted"); // matches in <>
    const auto row = [](const char *name, const char *keyword, int flags, const char *painted) {
        QTest::newRow(name) << QString::fromUtf8(keyword) << flags << QString::fromUtf8(painted);
    };
    row("plain", "a.c", 0, "abc <a.c> A.C x<a.c>");
    row("plain, no match", "zzz", 0, "abc a.c A.C xa.c");
    row("plain, case ignored", "a.c", SearchCondition::IgnoreCaseFlag, "abc <a.c> <A.C> x<a.c>");
    row("plain, whole word", "a.c", SearchCondition::WordFlag, "abc <a.c> A.C xa.c");
    row("pattern", "a.c", SearchCondition::RegExpFlag, "<abc> <a.c> A.C x<a.c>");
    row("pattern, whole word", "a.c", SearchCondition::RegExpFlag | SearchCondition::WordFlag,
        "<abc> <a.c> A.C xa.c");
    row("pattern that matches nothing, too", "b*", SearchCondition::RegExpFlag,
        "a<b>c a.c A.C xa.c");
    row("pattern for the end", "c$", SearchCondition::RegExpFlag, "abc a.c A.C xa.<c>");
}

void ResultFormatTest::theColouredMatchesAreThoseOfTheSearch()
{
    QFETCH(QString, keyword);
    QFETCH(int, flags);
    QByteArray painted =
        HitPainter(condition(keyword, flags)).text(QStringLiteral("abc a.c A.C xa.c"));
    painted.replace("\x1b[1;31m", "<").replace("\x1b[m", ">");
    QTEST(QString::fromUtf8(painted), "painted");
}

void ResultFormatTest::jsonIsOneObjectAHit()
{
    QCOMPARE(JsonFormat().format(twoHits()),
             QByteArray("{\"path\":\"src/港.txt\",\"line\":12,\"column\":5,"
                        "\"text\":\"foo 灯台 foo\",\"encoding\":\"Shift-JIS\"}\n"
                        "{\"path\":\"src/港.txt\",\"line\":123456,\"column\":1,"
                        "\"text\":\"\\tfoo: 1:2:3\",\"encoding\":\"Shift-JIS\"}\n"));
}

void ResultFormatTest::jsonHasNullsForAFileWithoutHits()
{
    QCOMPARE(JsonFormat().format(withoutHits()),
             QByteArray("{\"path\":\"src/港.txt\",\"line\":null,\"column\":null,"
                        "\"text\":null,\"encoding\":\"Shift-JIS\"}\n"));
}

void ResultFormatTest::jsonEscapesWhatWouldBreakTheLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("quoted");
    const auto row = [](const char *name, const QString &text, const char *quoted) {
        QTest::newRow(name) << text << QByteArray(quoted);
    };
    row("quote and backslash", QStringLiteral("\"a\\b\""), R"("\"a\\b\"")");
    row("line feed, carriage return, tab", QStringLiteral("\n\r\t"), R"("\n\r\t")");
    row("other control characters", QString(QChar(0)) + QChar(1) + QChar(0x1b) + QChar(0x1f),
        R"("\u0000\u0001\u001b\u001f")");
    row("delete and high control characters", QString(QChar(0x7f)) + QChar(0x85) + QChar(0x9f),
        R"("\u007f\u0085\u009f")");
    row("separators", QString(QChar(0x2028)) + QChar(0x2029), R"("\u2028\u2029")");
    row("slash", QStringLiteral("/"), R"("/")");
    row("Japanese", QStringLiteral("灯台"), "\"灯台\"");
}

void ResultFormatTest::jsonEscapesWhatWouldBreakTheLine()
{
    QFETCH(QString, text);
    QTEST(JsonFormat::quote(text), "quoted");
    const QByteArray line = jsonOfText(text);
    QCOMPARE(line.count('\n'), 1);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    QCOMPARE(error.errorString(), QStringLiteral("no error occurred"));
    QCOMPARE(document.object().value(QLatin1String("text")).toString(), text);
}

void ResultFormatTest::jsonKeepsPairsAndReplacesLoneSurrogates()
{
    const QString pair = QString::fromUtf8("\xf0\xa0\xae\xb7");
    QCOMPARE(JsonFormat::quote(pair + QChar(0xD842) + pair + QChar(0xDFB7)),
             QByteArray("\"\xf0\xa0\xae\xb7\xef\xbf\xbd\xf0\xa0\xae\xb7\xef\xbf\xbd\""));
    QCOMPARE(JsonFormat::quote(QString(QChar(0xD842))), QByteArray("\"\xef\xbf\xbd\""));
}

void ResultFormatTest::jsonOfABrokenNameIsValidAndHoldsItsBytes()
{
    if (!namesMayBeAnyBytes())
        QSKIP("names are text here");
    const QByteArray line = JsonFormat().format(brokenName());
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    QCOMPARE(object.value(QLatin1String("path")).toString(), QStringLiteral("a/\uFFFDb"));
    QCOMPARE(
        QByteArray::fromBase64(object.value(QLatin1String("pathBase64")).toString().toLatin1()),
        QByteArray("a/\x81"
                   "b"));
}

void ResultFormatTest::jsonOfAReplacementCharacterInAValidNameHasNoBase64()
{
    const FileResult file = {
        QStringLiteral("a\uFFFD"), CodeSet::Utf8, {QStringLiteral("      1:    1:x")}};
    QVERIFY(!JsonFormat().format(file).contains("pathBase64"));
}

QTEST_GUILESS_MAIN(ResultFormatTest)
#include "ResultFormatTest.moc"
