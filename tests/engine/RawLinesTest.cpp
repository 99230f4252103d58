#include "engine/RawLines.h"

#include "engine/CodeSet.h"
#include "engine/SearchPlan.h"
#include "tests/engine_support/CutContent.h"

#include <QTest>

/// Where there is an answer without decoding the file; FastPathTest compares the
/// answers.
class RawLinesTest : public QObject {
    Q_OBJECT

private slots:
    void plainTextIsNotDecoded_data();
    void plainTextIsNotDecoded();
    void someFilesMustBeDecoded_data();
    void someFilesMustBeDecoded();
    void lineNumbersGoOnFromPieceToPiece();
    void keyword2IsFoundInTheNextPiece();
    void aLineLongerThanAPieceIsFoundWhole();
    void aPendingLineKeepsItsText();
};

namespace {

SearchCondition condition(const QString &keyword, int flags = 0)
{
    SearchCondition made;
    made.keyword1 = keyword;
    made.flg = flags;
    return made;
}

std::optional<QStringList> search(const SearchCondition &condition, const QByteArray &bytes,
                                  int codeSet, qint64 pieceSize = 1 << 20)
{
    const SearchPlan plan(condition, EngineOptions());
    LineMatcher matcher(condition, 4);
    RawLines lines(plan, matcher);
    CutContent content(bytes, pieceSize);
    return lines.search(content, codeSet);
}

} // namespace

void RawLinesTest::plainTextIsNotDecoded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("flags");
    const int pattern = SearchCondition::RegExpFlag;
    QTest::newRow("UTF-8") << QByteArray("a\nfoo\r\n") << int(CodeSet::Utf8)
                           << QStringLiteral("foo") << 0;
    QTest::newRow("Shift-JIS") << QByteArray("a\r\n\x8A\xBF"
                                             "foo\r\n")
                               << int(CodeSet::ShiftJis) << QStringLiteral("foo") << 0;
    QTest::newRow("EUC-JP") << QByteArray("a\n\xB4\xC1"
                                          "foo\n")
                            << int(CodeSet::EucJp) << QStringLiteral("foo") << 0;
    QTest::newRow("UTF-16") << QByteArray("a\0\n\0f\0o\0o\0", 10) << int(CodeSet::Utf16Le)
                            << QStringLiteral("foo") << 0;
    QTest::newRow("a pattern with a literal")
        << QByteArray("a\nfoo\n") << int(CodeSet::Utf8) << QStringLiteral("fo+") << pattern;
    QTest::newRow("a pattern without one")
        << QByteArray("a\n123\n") << int(CodeSet::Utf8) << QStringLiteral("[0-9]{3}") << pattern;
    QTest::newRow("the same in Shift-JIS") << QByteArray("a\n123\n") << int(CodeSet::ShiftJis)
                                           << QStringLiteral("[0-9]{3}") << pattern;
    QTest::newRow("lone carriage returns in a pattern's text")
        << QByteArray("a\n1\r23\n") << int(CodeSet::Utf8) << QStringLiteral("[0-9]{3}") << pattern;
}

void RawLinesTest::plainTextIsNotDecoded()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, codeSet);
    QFETCH(QString, keyword);
    QFETCH(int, flags);
    const auto hits = search(condition(keyword, flags), bytes, codeSet);
    QVERIFY(hits.has_value());
    QCOMPARE(hits->size(), 1);
    QVERIFY(hits->first().startsWith(QLatin1String("      2:")));
}

void RawLinesTest::someFilesMustBeDecoded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("flags");
    const int pattern = SearchCondition::RegExpFlag;
    QTest::newRow("a lone carriage return")
        << QByteArray("a\nf\roo\n") << int(CodeSet::Utf8) << QStringLiteral("foo") << 0;
    QTest::newRow("ISO 2022-JP") << QByteArray("foo\n") << int(CodeSet::Iso2022Jp)
                                 << QStringLiteral("foo") << 0;
    QTest::newRow("the locale's codec")
        << QByteArray("foo\n") << int(CodeSet::Default) << QStringLiteral("foo") << 0;
    QTest::newRow("a broken line with the keyword")
        << QByteArray("foo\xFF\n") << int(CodeSet::Utf8) << QStringLiteral("foo") << 0;
    QTest::newRow("a mark inside")
        << QByteArray("f\xEF\xBB\xBFoo\n") << int(CodeSet::Utf8) << QStringLiteral("foo") << 0;
    QTest::newRow("a pattern for any line")
        << QByteArray("foo\n") << int(CodeSet::Utf8) << QStringLiteral("f*") << pattern;
    QTest::newRow("a pattern without a literal in Japanese")
        << QByteArray("\x8A\xBF\n") << int(CodeSet::ShiftJis) << QStringLiteral("[0-9]") << pattern;
}

void RawLinesTest::someFilesMustBeDecoded()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, codeSet);
    QFETCH(QString, keyword);
    QFETCH(int, flags);
    QVERIFY(!search(condition(keyword, flags), bytes, codeSet).has_value());
}

void RawLinesTest::lineNumbersGoOnFromPieceToPiece()
{
    const auto hits = search(condition(QStringLiteral("foo")), "a\nb\nc\nd\nfoo\ne\nfoo", 4, 4);
    QVERIFY(hits.has_value());
    QCOMPARE(
        *hits,
        (QStringList{QStringLiteral("      5:    1:foo"), QStringLiteral("      7:    1:foo")}));
}

void RawLinesTest::keyword2IsFoundInTheNextPiece()
{
    SearchCondition near = condition(QStringLiteral("foo"));
    near.keyword2 = QStringLiteral("bar");
    near.plusline = 2;
    const auto hits = search(near, "foo\nx\nbar\nfoo\nx\nx\nbar\n", 4, 4);
    QVERIFY(hits.has_value());
    QCOMPARE(*hits, QStringList{QStringLiteral("      1:    1:foo")});
}

void RawLinesTest::aLineLongerThanAPieceIsFoundWhole()
{
    const QByteArray line = QByteArray(1000, 'x') + "foo";
    const auto hits = search(condition(QStringLiteral("foo")), "a\n" + line + "\nb\n", 4, 16);
    QVERIFY(hits.has_value());
    QCOMPARE(hits->size(), 1);
    QVERIFY(hits->first().endsWith(QString::fromLatin1(line)));
}

void RawLinesTest::aPendingLineKeepsItsText()
{
    SearchCondition near = condition(QStringLiteral("foo"));
    near.keyword2 = QStringLiteral("bar");
    near.plusline = 5;
    const auto hits = search(near, "one foo\ntwo lines\nthat differ\nbar\n", 4);
    QVERIFY(hits.has_value());
    QCOMPARE(*hits, QStringList{QStringLiteral("      1:    5:one foo")});
}

QTEST_GUILESS_MAIN(RawLinesTest)
#include "RawLinesTest.moc"
