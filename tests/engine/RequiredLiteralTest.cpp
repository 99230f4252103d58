#include "engine/RequiredLiteral.h"

#include "engine/RegExpLiteralParser.h"

#include <QRandomGenerator>
#include <QRegExp>
#include <QTest>

#include <algorithm>

class RequiredLiteralTest : public QObject {
    Q_OBJECT

private slots:
    void aPlainKeywordIsItsOwnLiteral();
    void anEmptyKeywordHasNoLiteral();
    void anInvalidPatternNeverMatches_data();
    void anInvalidPatternNeverMatches();
    void aPatternsLiteralIsFound_data();
    void aPatternsLiteralIsFound();
    void onlyAPatternOfCharactersIsWhole();
    void whereMatchesOfAListBeginIsKnown_data();
    void whereMatchesOfAListBeginIsKnown();
    void wordBoundariesLeaveTheLiteral();
    void aPlainPatternIsLookedForInLowerCase();
    void aClassIsNoLiteralWhenCaseIsIgnored();
    void deepNestingEndsInNoLiteral();
    void everyMatchOfARandomPatternHoldsTheLiteral_data();
    void everyMatchOfARandomPatternHoldsTheLiteral();
};

namespace {

/// Makes patterns and texts over a few characters, so that they often match.
class PatternSource {
public:
    explicit PatternSource(quint32 seed) : m_random(seed) { }

    QString pattern() { return chance(8) ? garbage() : expression(0); }
    QString text()
    {
        QString result;
        for (int i = m_random.bounded(14); i > 0; --i)
            result += pick(kCharacters);
        return result;
    }

private:
    const QString kCharacters =
        QStringLiteral("aaabbbccAkKsS\u212A\u017F\u0130\u0131i\u3042\u00B5 _1\n]}");
    const QString kMarks = QStringLiteral("()[]{}|*+?.^$\\-,1aB");

    bool chance(int oneIn) { return m_random.bounded(oneIn) == 0; }
    QChar pick(const QString &from) { return from.at(m_random.bounded(from.size())); }

    QString garbage()
    {
        QString result;
        for (int i = m_random.bounded(1, 9); i > 0; --i)
            result += chance(2) ? pick(kMarks) : pick(kCharacters);
        return result;
    }
    QString expression(int depth)
    {
        QString result = term(depth);
        while (chance(5))
            result += QLatin1Char('|') + term(depth);
        return result;
    }
    QString term(int depth)
    {
        QString result;
        for (int i = m_random.bounded(depth == 0 ? 1 : 0, 6); i > 0; --i)
            result += atom(depth) + quantifier();
        return result;
    }
    QString quantifier()
    {
        static const QStringList some = {
            QStringLiteral("*"),     QStringLiteral("+"),     QStringLiteral("?"),
            QStringLiteral("{0}"),   QStringLiteral("{1}"),   QStringLiteral("{2}"),
            QStringLiteral("{,2}"),  QStringLiteral("{1,}"),  QStringLiteral("{2,3}"),
            QStringLiteral("{0,1}"), QStringLiteral("{1,2}"), QStringLiteral("{}")};
        return chance(4) ? some.at(m_random.bounded(some.size())) : QString();
    }
    QString atom(int depth)
    {
        static const QStringList others = {
            QStringLiteral("."),      QStringLiteral("^"),        QStringLiteral("$"),
            QStringLiteral("\\b"),    QStringLiteral("\\B"),      QStringLiteral("\\w"),
            QStringLiteral("\\W"),    QStringLiteral("\\d"),      QStringLiteral("\\s"),
            QStringLiteral("\\S"),    QStringLiteral("\\D"),      QStringLiteral("\\1"),
            QStringLiteral("\\2"),    QStringLiteral("\\x61"),    QStringLiteral("\\x3042"),
            QStringLiteral("\\x6"),   QStringLiteral("\\0142"),   QStringLiteral("\\012"),
            QStringLiteral("\\]"),    QStringLiteral("\\n"),      QStringLiteral("\\k"),
            QStringLiteral("[ab]"),   QStringLiteral("[^ab]"),    QStringLiteral("[a-c]"),
            QStringLiteral("[]a]"),   QStringLiteral("[^]a]"),    QStringLiteral("[\\w]"),
            QStringLiteral("[a\\]]"), QStringLiteral("[\\x61b]"), QStringLiteral("[a-]"),
            QStringLiteral("[Kk]"),   QStringLiteral("[-a]"),     QStringLiteral("\\x")};
        if (depth < 3 && chance(6)) {
            static const QStringList openings = {QStringLiteral("("), QStringLiteral("(?:"),
                                                 QStringLiteral("(?="), QStringLiteral("(?!")};
            return openings.at(m_random.bounded(openings.size())) + expression(depth + 1)
                + QLatin1Char(')');
        }
        if (chance(4))
            return others.at(m_random.bounded(others.size()));
        const QChar character = pick(kCharacters);
        const bool mark = character == QLatin1Char(']') || character == QLatin1Char('}');
        return mark ? QString(QLatin1Char('\\') + QString(character)) : QString(character);
    }

    QRandomGenerator m_random;
};

bool holdsOne(const QString &text, const RequiredLiteral &literal)
{
    const QStringList &alternatives = literal.alternatives();
    return std::any_of(alternatives.cbegin(), alternatives.cend(), [&](const QString &one) {
        return text.contains(one, literal.caseSensitivity());
    });
}

} // namespace

void RequiredLiteralTest::aPlainKeywordIsItsOwnLiteral()
{
    const RequiredLiteral literal(QStringLiteral("a.*(b"), false, Qt::CaseSensitive);
    QCOMPARE(literal.alternatives(), QStringList(QStringLiteral("a.*(b")));
    QVERIFY(literal.isWholePattern());
    QVERIFY(!literal.neverMatches());
}

void RequiredLiteralTest::anEmptyKeywordHasNoLiteral()
{
    for (const bool regExp : {false, true}) {
        const RequiredLiteral literal(QString(), regExp, Qt::CaseSensitive);
        QVERIFY(literal.alternatives().isEmpty());
        QVERIFY(!literal.isWholePattern());
        QVERIFY(!literal.neverMatches());
    }
}

void RequiredLiteralTest::anInvalidPatternNeverMatches_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::newRow("unclosed group") << QStringLiteral("foo(bar");
    QTest::newRow("unopened group") << QStringLiteral("foo)bar");
    QTest::newRow("unclosed class") << QStringLiteral("foo[bar");
    QTest::newRow("lone bracket") << QStringLiteral("foo]");
    QTest::newRow("lone brace") << QStringLiteral("foo}");
    QTest::newRow("unclosed count") << QStringLiteral("foo{2");
    QTest::newRow("falling count") << QStringLiteral("foo{3,2}");
    QTest::newRow("nothing to repeat") << QStringLiteral("*foo");
    QTest::newRow("repeated twice") << QStringLiteral("foo**");
    QTest::newRow("lookbehind") << QStringLiteral("(?<=foo)bar");
    QTest::newRow("backslash at the end") << QStringLiteral("foo\\");
    QTest::newRow("count of letters") << QStringLiteral("foo{a}");
    QTest::newRow("group of no known kind") << QStringLiteral("(?foo)");
    QTest::newRow("backslash at the end of a class") << QStringLiteral("[foo\\");
    QTest::newRow("deep groups") << QString(12000, QLatin1Char('(')) + QStringLiteral("foo")
            + QString(12000, QLatin1Char(')'));
    QTest::newRow("counts of counts") << QStringLiteral("(((foo{999}){999}){999})");
    QTest::newRow("octal number too large") << QStringLiteral("foo\\0777");
}

void RequiredLiteralTest::anInvalidPatternNeverMatches()
{
    QFETCH(QString, pattern);
    const RequiredLiteral literal(pattern, true, Qt::CaseSensitive);
    QVERIFY(literal.neverMatches());
    QVERIFY(!literal.isWholePattern());
    const RequiredLiteral plain(pattern, false, Qt::CaseSensitive);
    QVERIFY(!plain.neverMatches());
}

void RequiredLiteralTest::aPatternsLiteralIsFound_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("literals"); // separated by blanks, sorted
    const auto row = [](const char *name, const char *pattern, const char *literals) {
        QTest::newRow(name) << QString::fromUtf8(pattern) << QString::fromUtf8(literals);
    };
    row("characters", "foo", "foo");
    row("the longer of two", "ab.*cdef", "cdef");
    row("anything", ".*", "");
    row("optional character", "colou?r", "color colour");
    row("optional tail", "foo(bar)?", "foo");
    row("repeated character", "ab+c", "ab");
    row("repeated group", "(foo)+bar", "foobar");
    row("group with a count", "(ab){3}", "ababab");
    row("zero copies", "abx{0}cde", "cde");
    row("empty braces are zero copies", "abx{}cde", "cde");
    row("no least count", "abx{,3}cde", "cde");
    row("open count", "x{2,}abc", "xxabc");
    row("alternation", "foo|bar", "bar foo");
    row("alternation inside", "a(foo|bar)z", "abarz afooz");
    row("alternation with an empty branch", "foo|", "");
    row("alternation with an unknown branch", "foo|.*", "");
    row("branch contained in another", "foo|afoob", "foo");
    row("anchors", "^foo$", "foo");
    row("word boundary inside", "foo\\b bar", "foo bar");
    row("lookahead", "foo(?=barbaz)", "foo");
    row("negative lookahead", "foo(?!barbaz)", "foo");
    row("group without capture", "(?:foo)bar", "foobar");
    row("back-reference", "(foo)\\1bar", "foo");
    row("digits of a back-reference", "(a)\\12bbb", "bbb");
    row("class", "foo[a-z]quux", "quux");
    row("small class", "[Ff]oobar", "Foobar foobar");
    row("class with a bracket first", "[]a]bcd", "]bcd abcd");
    row("class with an escaped bracket", "[\\]a]bcd", "]bcd abcd");
    row("negative class with a bracket first", "[^]abcdefgh]xy", "xy");
    row("hexadecimal character", "\\x3042\\x41x", "\u3042Ax");
    row("octal character", "\\0101x", "Ax");
    row("control characters", "a\\a\\f\\n\\r\\t\\v\\x1", "a\a\f\n\r\t\v\x01");
    row("escaped marks", "a\\.b\\\\c", "a.b\\c");
    row("escaped letter without a meaning", "\\k\\yz", "kyz");
    row("kanji beat letters", "日本.*abc", "日本");
    row("digit class", "foo\\dbarbar", "barbar");
    row("nested alternation", "x(a|b(c|d))y", "xay xbcy xbdy");
}

void RequiredLiteralTest::aPatternsLiteralIsFound()
{
    QFETCH(QString, pattern);
    QFETCH(QString, literals);
    const RequiredLiteral literal(pattern, true, Qt::CaseSensitive);
    QStringList found = literal.alternatives();
    found.sort();
    const QStringList expected = pattern.contains(QLatin1Char(' '))
        ? QStringList(literals)
        : literals.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QCOMPARE(found, expected);
}

void RequiredLiteralTest::onlyAPatternOfCharactersIsWhole()
{
    const auto isWhole = [](const char *pattern) {
        return RequiredLiteral(QString::fromUtf8(pattern), true, Qt::CaseSensitive)
            .isWholePattern();
    };
    QVERIFY(isWhole("foo"));
    QVERIFY(isWhole("f\\x6fo\\."));
    QVERIFY(!isWhole("^foo"));
    QVERIFY(!isWhole("foo$"));
    QVERIFY(!isWhole("\\bfoo"));
    QVERIFY(!isWhole("(foo)"));
    QVERIFY(!isWhole("foo{1}"));
    QVERIFY(!isWhole("fo[o]"));
    QVERIFY(!isWhole("foo|foo"));
    QVERIFY(!isWhole("foo(?=b)"));
    QVERIFY(!isWhole("foo."));
}

void RequiredLiteralTest::whereMatchesOfAListBeginIsKnown_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("behind");
    QTest::addColumn<bool>("isList");
    const auto add = [](const char *name, const char *before, const char *behind, bool isList) {
        QTest::newRow(name) << QString::fromLatin1(before) << QString::fromLatin1(behind) << isList;
    };
    add("alone", "", "", true);
    add("between boundaries", "\\b", "\\b", true);
    add("behind a text", "x", "", true);
    add("before a text", "^", "x$", true);
    add("before a lookahead", "", "(?=x)", true);
    add("behind a lookahead", "(?!x)", "", true);
    add("behind anything", ".*", "", false);
    add("behind what may be there", "x?", "", false);
    add("before anything", "", "\\w", false);
    add("once or more", "", "+", false);
}

void RequiredLiteralTest::whereMatchesOfAListBeginIsKnown()
{
    QFETCH(QString, before);
    QFETCH(QString, behind);
    QFETCH(bool, isList);
    QStringList words;
    for (int i = 100; i < 116; ++i)
        words.append(QString::number(i));
    const auto literal = [&] {
        const QString list = QLatin1Char('(') + words.join(QLatin1Char('|')) + QLatin1Char(')');
        return RequiredLiteral(before + list + behind, true, Qt::CaseSensitive);
    };
    QVERIFY(!literal().isList()); // the texts of a short list are not all kept
    words.append(QStringLiteral("116"));
    QCOMPARE(literal().isList(), isList);
    QVERIFY(!literal().alternatives().isEmpty());
}

void RequiredLiteralTest::wordBoundariesLeaveTheLiteral()
{
    const RequiredLiteral literal(QStringLiteral("\\bfoo|bar\\b"), true, Qt::CaseSensitive);
    QCOMPARE(literal.alternatives(), QStringList({QStringLiteral("foo"), QStringLiteral("bar")}));
}

void RequiredLiteralTest::aPlainPatternIsLookedForInLowerCase()
{
    const QString pattern = QStringLiteral("\u0130");
    const QString dotted = QStringLiteral("i\u0307");
    QVERIFY(QRegExp(pattern, Qt::CaseInsensitive).indexIn(dotted) == 0);
    const RequiredLiteral literal(pattern, true, Qt::CaseInsensitive);
    QVERIFY(holdsOne(dotted, literal));
}

void RequiredLiteralTest::aClassIsNoLiteralWhenCaseIsIgnored()
{
    // The dotless i is in [I]: its upper case is; it does not fold to i, though.
    const QString pattern = QStringLiteral("x[I]y");
    const QString text = QStringLiteral("x\u0131y");
    QVERIFY(QRegExp(pattern, Qt::CaseInsensitive).indexIn(text) == 0);
    QVERIFY(holdsOne(text, RequiredLiteral(pattern, true, Qt::CaseInsensitive)));
}

void RequiredLiteralTest::deepNestingEndsInNoLiteral()
{
    const int depth = 500;
    const QString pattern =
        QString(depth, QLatin1Char('(')) + QStringLiteral("foo") + QString(depth, QLatin1Char(')'));
    RegExpLiteralParser parser(pattern, Qt::CaseSensitive);
    QVERIFY(parser.parse().required().isEmpty());
    QVERIFY(!parser.isPlain());
}

void RequiredLiteralTest::everyMatchOfARandomPatternHoldsTheLiteral_data()
{
    QTest::addColumn<Qt::CaseSensitivity>("sensitivity");
    QTest::newRow("case counts") << Qt::CaseSensitive;
    QTest::newRow("case ignored") << Qt::CaseInsensitive;
}

void RequiredLiteralTest::everyMatchOfARandomPatternHoldsTheLiteral()
{
    QFETCH(Qt::CaseSensitivity, sensitivity);
    constexpr int Patterns = 25000;
    constexpr int TextsPerPattern = 25;
    PatternSource source(20240501);
    int matchesWithLiteral = 0;
    int refusals = 0;
    for (int i = 0; i < Patterns; ++i) {
        const QString pattern = source.pattern();
        const RequiredLiteral literal(pattern, true, sensitivity);
        const QRegExp expression(pattern, sensitivity);
        for (int j = 0; j < TextsPerPattern; ++j) {
            const QString text = source.text();
            const bool matches = expression.indexIn(text) >= 0;
            const bool known = !literal.alternatives().isEmpty();
            const bool mayMatch = !literal.neverMatches() && (!known || holdsOne(text, literal));
            const bool wrong =
                (matches && !mayMatch) || (literal.isWholePattern() && matches != mayMatch);
            if (wrong)
                QFAIL(qPrintable(QStringLiteral("pattern <%1> text <%2>").arg(pattern, text)));
            matchesWithLiteral += matches && known ? 1 : 0;
            refusals += mayMatch ? 0 : 1;
        }
    }
    QVERIFY(matchesWithLiteral > Patterns);
    QVERIFY(refusals > Patterns);
}

QTEST_GUILESS_MAIN(RequiredLiteralTest)
#include "RequiredLiteralTest.moc"
