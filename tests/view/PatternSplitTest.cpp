#include "view/PatternSplit.h"

#include <QTest>

class PatternSplitTest : public QObject {
    Q_OBJECT

private slots:
    void whatReachesToTheEndIsTakenOff_data();
    void whatReachesToTheEndIsTakenOff();
    void alternativesArePartsOfTheirOwn();
    void whereAPartMayBeginIsTold();
    void theLongestMatchIsTold_data();
    void theLongestMatchIsTold();
    void aLiteralIsTold();
    void othersStayWhole_data();
    void othersStayWhole();
};

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// A part a line: marker, then what it forbids.
QString partsOf(const QString &pattern)
{
    QStringList lines;
    for (const PatternSplit::Part &part : PatternSplit::parts(pattern))
        lines.append((QStringList(part.marker) + part.forbidden).join(text("  ")));
    return lines.join(QLatin1Char('\n'));
}

} // namespace

void PatternSplitTest::whatReachesToTheEndIsTakenOff_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("parts");
    const auto row = [](const char *name, const char *pattern, const char *parts) {
        QTest::newRow(name) << text(pattern) << text(parts);
    };
    row("one", "//(?!.*\\*/)", "//  \\*/");
    row("behind a group", "(//|#(?!\\[))(?!.*\\*/)", "(//|#(?!\\[))  \\*/");
    row("alternatives that are forbidden", "//(?!.*(\\}|\\*\\)))", "//  (\\}|\\*\\))");
    row("several", "a(?!.*b)(?!.*c)", "a  c  b");
    row("alternatives of the look-ahead", "a(?!.*b|.*c)", "a  b  c");
    row("another look-ahead before it", "--+(?![-}])(?!.*-\\})", "--+(?![-}])  -\\}");
    row("another alternative in it", "#(?!>|.*#>|x)", "#(?!>|x)  #>");
    row("another look-ahead behind it", "a(?!.*b)(?!c)", "a(?!c)  b");
    row("an alternative of the pattern", "^#|//(?!.*\\*/)|;", "^#\n//  \\*/\n;");
    row("two alternatives of the pattern", "#(?!.*x)|;(?!.*y)", "#  x\n;  y");
    row("classes", "a[]|)](?![)].*|.*[(|])", "a[]|)](?![)].*)  [(|]");
    row("a class without some", "a[^]|](?!.*[^x])", "a[^]|]  [^x]");
    row("escapes", "\\(?!\\|x(?!.*\\))", "\\(?!\\|x  \\)");
    row("the end of the line as a sign of what is forbidden", "a(?!.*b$)", "a  b$");
}

void PatternSplitTest::whatReachesToTheEndIsTakenOff()
{
    QFETCH(QString, pattern);
    QFETCH(QString, parts);
    QCOMPARE(partsOf(pattern), parts);
}

void PatternSplitTest::alternativesArePartsOfTheirOwn()
{
    QCOMPARE(partsOf(text("a*|(b|c)|[|]|\\||")), text("a*\n(b|c)\n[|]\n\\|\n"));
    QCOMPARE(partsOf(text("(a)|\\1")), text("(a)|\\1"));
}

void PatternSplitTest::whereAPartMayBeginIsTold()
{
    const auto parts = PatternSplit::parts(text("^a|\\ba|(^a)|b^|\\^|\\Ba|^?a|\\b*a"));
    QCOMPARE(parts.size(), std::size_t(8));
    for (std::size_t i = 0; i < parts.size(); ++i) {
        QCOMPARE(parts[i].limit, i == 0 ? 1 : PatternSplit::kUnbounded);
        QCOMPARE(parts[i].isAtBoundary, i == 1);
    }
    QCOMPARE(PatternSplit::parts(text("^(a)\\1")).front().limit, PatternSplit::kUnbounded);
    for (const char *never : {"$.", "$'"})
        QCOMPARE(PatternSplit::parts(text(never)).front().limit, 0);
    for (const char *some : {"$", "$+", "$|", "\\$.", "$.*", "$$"})
        QCOMPARE(PatternSplit::parts(text(some)).front().limit, PatternSplit::kUnbounded);
}

void PatternSplitTest::theLongestMatchIsTold_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("longest"); // at least; -1 for any
    QTest::newRow("text") << text("abc") << 3;
    QTest::newRow("a look-ahead that repeats") << text("#(?!\\[=*\\[)(?!.*x)") << 1;
    QTest::newRow("another one") << text("ab(?=c+)") << 2;
    QTest::newRow("a class of signs") << text("(^|[\\s;({|*])#?") << 2;
    QTest::newRow("signs that stand for themselves") << text("\\*\\{") << 2;
    QTest::newRow("a repetition") << text("a+") << -1;
    QTest::newRow("a counted one") << text("a{9}") << -1;
    QTest::newRow("in a group") << text("(a|(b)c*)") << -1;
    QTest::newRow("behind a look-ahead") << text("a(?=b)c+") << -1;
    QTest::newRow("a text that stands for another") << text("(a+)\\1") << -1;
}

void PatternSplitTest::theLongestMatchIsTold()
{
    QFETCH(QString, pattern);
    QFETCH(int, longest);
    const auto parts = PatternSplit::parts(pattern);
    QCOMPARE(parts.size(), std::size_t(1));
    if (longest < 0) {
        QCOMPARE(parts[0].longestMatch, PatternSplit::kUnbounded);
    } else {
        QVERIFY(parts[0].longestMatch >= longest);
        QVERIFY(parts[0].longestMatch <= pattern.size());
    }
}

void PatternSplitTest::aLiteralIsTold()
{
    const auto literalOf = [](const char *pattern) {
        return PatternSplit::parts(text(pattern)).front().literal;
    };
    QCOMPARE(literalOf("//(?!.*\\*/)"), text("//"));
    QCOMPARE(literalOf("/\\*"), text("/*"));
    QCOMPARE(literalOf("<!--"), text("<!--"));
    QCOMPARE(literalOf("]=}"), QString());
    QCOMPARE(literalOf("\\\\a \\_b"), text("\\a _b"));
    for (const char *pattern :
         {"a.", "^a", "a$", "a+", "a?", "[a]", "(a)", "\\s", "\\ba", "\\x0041", "a(?!b)", "\\t"})
        QCOMPARE(literalOf(pattern), QString());
}

void PatternSplitTest::othersStayWhole_data()
{
    QTest::addColumn<QString>("pattern");
    for (const char *pattern : {"",
                                "a",
                                "(a|b)",
                                "a(?!b)",
                                "a(?=.*b)",
                                "(?!.*b)",
                                "(?!.*b)a",
                                "(a(?!.*b))c",
                                "a(?!.*b)+",
                                "a(?!b.*c)",
                                "a(?!.*)",
                                "a(?!.*b*)",
                                "a(?!.*$)",
                                "a(?!.*^b)",
                                "a(?!.*\\bb)",
                                "a(?!.*(c|\\Bb))",
                                "a(?!.*(?=b))",
                                "a(?!.*(b(?!c)))",
                                "a(?!.*?b)",
                                "(a)(?!.*\\1)",
                                "a(?!.*{2}b)",
                                "a(?!.*b",
                                "a[(?!.*b)",
                                "a\\"})
        QTest::newRow(pattern) << text(pattern);
}

void PatternSplitTest::othersStayWhole()
{
    QFETCH(QString, pattern);
    QCOMPARE(partsOf(pattern), pattern);
}

QTEST_GUILESS_MAIN(PatternSplitTest)
#include "PatternSplitTest.moc"
