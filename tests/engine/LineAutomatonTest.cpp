#include "engine/LineAutomaton.h"

#include "tests/support/TestLength.h"

#include <QRandomGenerator>
#include <QRegExp>
#include <QTest>

class LineAutomatonTest : public QObject {
    Q_OBJECT

private slots:
    void aLineThatMatchesIsFound_data();
    void aLineThatMatchesIsFound();
    void aLineThatCannotMatchIsPassedOver_data();
    void aLineThatCannotMatchIsPassedOver();
    void theFirstOfSeveralLinesIsFound();
    void aMatchDoesNotReachOverALineFeed();
    void theEndIsThatOfALine_data();
    void theEndIsThatOfALine();
    void carriageReturnsCountForNothing();
    void aPatternThatMatchesNothingIsOfNoUse_data();
    void aPatternThatMatchesNothingIsOfNoUse();
    void whatCannotBeFollowedIsOfNoUse_data();
    void whatCannotBeFollowedIsOfNoUse();
    void aPatternThatMakesPatternEnginesExplodeEndsSoon_data();
    void aPatternThatMakesPatternEnginesExplodeEndsSoon();
    void aPatternMayBeTooLargeForBytesOnly_data();
    void aPatternMayBeTooLargeForBytesOnly();
    void brokenBytesMayBeAnyCharacters();
    void noLineThatMatchesIsPassedOver();
};

namespace {

LineAutomaton automaton(const QString &pattern, Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    return LineAutomaton(pattern, sensitivity);
}

/// True, too, where it cannot be asked.
bool findsInBytes(const LineAutomaton &automaton, const QByteArray &bytes)
{
    const bool found = !automaton.isUsableInBytes()
        || automaton.nextInBytes(bytes.constData(), bytes.size(), 0) >= 0;
    if (std::any_of(bytes.cbegin(), bytes.cend(), [](char byte) { return uchar(byte) >= 0x80; }))
        return found;
    const bool foundInAscii = automaton.nextInAscii(bytes.constData(), bytes.size(), 0) >= 0;
    if (automaton.isUsableInBytes() && found != foundInAscii)
        qFatal("the answers for ASCII differ: %s", bytes.constData());
    return foundInAscii;
}

void addMatches()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("line");
    QTest::addColumn<Qt::CaseSensitivity>("sensitivity");
    const auto add = [](const char *name, const char *pattern, const char *line,
                        Qt::CaseSensitivity sensitivity = Qt::CaseSensitive) {
        QTest::newRow(name) << QString::fromUtf8(pattern) << QString::fromUtf8(line) << sensitivity;
    };
    add("three words", "\\w{5}\\s+\\w{5}\\s+\\w{5}", "(alpha  gamma\tdelta)");
    add("digits", "[0-9]{4}-[0-9]{2}", "on 2024-02-29");
    add("full-width digits", "\\d{2}", "x１２");
    add("alternatives", "foo|ba+r", "baaar");
    add("a group", "(ab)+c", "xababc");
    add("a lookahead", "a(?=b)b", "ab");
    add("a word boundary", "\\bfoo\\b", "a foo b");
    add("a back-reference", "(a|b)x\\1y", "axay");
    add("a negated class", "[^a]b", "漢b");
    add("a range and the long s", "[A-Z]", "ſ", Qt::CaseInsensitive);
    add("a range and the dotless i", "[H-J]x", "ıx", Qt::CaseInsensitive);
    add("a range and the Kelvin sign", "[a-z]oo", "\u212Aoo", Qt::CaseInsensitive);
    add("a class that begins with a bracket", "[]x]+y", "]y");
    add("an escape by number", "\\x0041\\0102", "AB");
    add("least and most", "a{2,3}b", "aab");
    add("more than are copied", "a{40}b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab");
    add("a high count", "ab{0,500}c", "abbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbc");
    add("a count of nothing", "ab{0}c", "ac");
    add("the Kelvin sign", "k+1", "\u212A1", Qt::CaseInsensitive);
    add("another case", "ab+c", "ABBC", Qt::CaseInsensitive);
    add("beyond the basic plane", "a.+b", "a𠮷b");
    add("blanks at the end", "\\s+$", "foo  bar  ");
    add("the end in an alternative", "a(b$|c)", "xab");
    add("the end twice", "a$$", "xa");
    add("the end repeated", "a$*b$+", "xab");
    add("the end perhaps", "a(b|$)?c", "ac");
    add("the end before nothing", "a$b*", "xa");
    add("the end in a lookahead", "a(?=b$)b", "ab");
    add("no end in a lookahead", "a(?!$)b", "abc");
    add("a dollar", "a\\$|a[$]b", "a$b");
}

} // namespace

void LineAutomatonTest::aLineThatMatchesIsFound_data()
{
    addMatches();
}

void LineAutomatonTest::aLineThatMatchesIsFound()
{
    QFETCH(QString, pattern);
    QFETCH(QString, line);
    QFETCH(Qt::CaseSensitivity, sensitivity);
    QVERIFY(QRegExp(pattern, sensitivity).indexIn(line) >= 0);
    const LineAutomaton made = automaton(pattern, sensitivity);
    QVERIFY(made.isUsable());
    QVERIFY(made.next(line, 0) >= 0);
    QVERIFY(findsInBytes(made, line.toUtf8()));
}

void LineAutomatonTest::aLineThatCannotMatchIsPassedOver_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("line");
    const auto add = [](const char *name, const char *pattern, const char *line) {
        QTest::newRow(name) << QString::fromUtf8(pattern) << QString::fromUtf8(line);
    };
    add("a word too short", "\\w{5}\\s+\\w{5}\\s+\\w{5}", "alpha beta gamma delta");
    add("digits too few", "[0-9]{4}-[0-9]{2}", "24-02-29 2024-2-29");
    add("another case", "ab+c", "ABBC");
    add("too many copies", "xa{2}b", "xaaab");
    add("a class beyond ASCII is not one within", "[あ-ん]+x", "abcx");
    add("ASCII alone is not beyond it", "[a-z]9", "漢9");
    add("blanks before the end", "\\s+$", "foo  bar;");
    add("behind the end", "a$b", "ab");
    add("the end in an alternative", "a(b$|c)", "abd");
}

void LineAutomatonTest::aLineThatCannotMatchIsPassedOver()
{
    QFETCH(QString, pattern);
    QFETCH(QString, line);
    const LineAutomaton made = automaton(pattern);
    QVERIFY(made.isUsable());
    QCOMPARE(made.next(line, 0), qint64(-1));
    QVERIFY(!findsInBytes(made, line.toUtf8()));
}

void LineAutomatonTest::theFirstOfSeveralLinesIsFound()
{
    const LineAutomaton made = automaton(QStringLiteral("[0-9]+x"));
    const QString text = QStringLiteral("none\n1 2 3\nhere 45x\n6x\n");
    const qint64 found = made.next(text, 0);
    QCOMPARE(text.left(int(found)).count(QLatin1Char('\n')), 2);
    const qint64 behind = text.indexOf(QStringLiteral("6x"));
    QCOMPARE(made.next(text, behind), behind + 1);
    QCOMPARE(made.next(text, text.size()), qint64(-1));
}

void LineAutomatonTest::aMatchDoesNotReachOverALineFeed()
{
    const LineAutomaton made = automaton(QStringLiteral("a[^b]c"));
    QCOMPARE(made.next(QStringLiteral("a\nc a\n\nc"), 0), qint64(-1));
    QVERIFY(!findsInBytes(made, "a\nc a\n\nc"));
}

void LineAutomatonTest::theEndIsThatOfALine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line"); // -1: none
    const auto add = [](const char *name, const char *text, int line) {
        QTest::newRow(name) << QString::fromUtf8(text) << line;
    };
    add("the last one", "b\naa", 1);
    add("with a line feed", "b\naa\nb", 1);
    add("with both", "b\r\naa\r\nb", 1);
    add("with a carriage return", "aa\rb", 0);
    add("with two", "b\naa\r\r\nb", 1);
    add("not where another begins", "aab\nb\naab", -1);
    add("nothing", "", -1);
    add("nothing behind a line feed", "b\n", -1);
    add("beyond ASCII before it", "aa漢\n漢aa\n", 1);
}

void LineAutomatonTest::theEndIsThatOfALine()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    const LineAutomaton made = automaton(QStringLiteral("a+$"));
    const qint64 found = made.next(text, 0);
    QCOMPARE(found < 0 ? -1 : text.left(int(found)).count(QLatin1Char('\n')), line);
    QCOMPARE(findsInBytes(made, text.toUtf8()), line >= 0);
}

void LineAutomatonTest::carriageReturnsCountForNothing()
{
    const LineAutomaton made = automaton(QStringLiteral("[ab]c[de]"));
    QVERIFY(findsInBytes(made, "xa\rc\r\rd"));
    QVERIFY(!findsInBytes(made, "xa\r\rd"));
}

void LineAutomatonTest::aPatternThatMatchesNothingIsOfNoUse_data()
{
    QTest::addColumn<QString>("pattern");
    for (const char *const pattern :
         {"a*", "(ab)?", "^", "$", "a*$", "a$|", "\\b", "a|", "(?=a)", "x{0}"})
        QTest::newRow(pattern) << QString::fromLatin1(pattern);
}

void LineAutomatonTest::aPatternThatMatchesNothingIsOfNoUse()
{
    QFETCH(QString, pattern);
    QVERIFY(!automaton(pattern).isUsable());
}

void LineAutomatonTest::whatCannotBeFollowedIsOfNoUse_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<Qt::CaseSensitivity>("sensitivity");
    QTest::newRow("nothing to repeat") << QStringLiteral("*a") << Qt::CaseSensitive;
    QTest::newRow("an open group") << QStringLiteral("(a") << Qt::CaseSensitive;
    QTest::newRow("a closed group") << QStringLiteral("a)") << Qt::CaseSensitive;
    QTest::newRow("an open class") << QStringLiteral("[a") << Qt::CaseSensitive;
    QTest::newRow("another kind of group") << QStringLiteral("(?<a)b") << Qt::CaseSensitive;
    QTest::newRow("one character that becomes two")
        << QStringLiteral("a\u0130b|c") << Qt::CaseInsensitive;
}

void LineAutomatonTest::whatCannotBeFollowedIsOfNoUse()
{
    QFETCH(QString, pattern);
    QFETCH(Qt::CaseSensitivity, sensitivity);
    QVERIFY(!automaton(pattern, sensitivity).isUsable());
}

void LineAutomatonTest::aPatternThatMakesPatternEnginesExplodeEndsSoon_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("usable");
    QTest::newRow("a repetition of repetitions") << QStringLiteral("(a*)*b") << true;
    QTest::newRow("alternatives that overlap") << QStringLiteral("(a|aa|aaa)+$") << true;
    QTest::newRow("optional ones and as many")
        << QStringLiteral("a?a?a?a?a?a?a?a?a?a?aaaaaaaaaa") << true;
    QTest::newRow("a place to remember") << QStringLiteral("(a|b)*a(a|b){16}") << false;
    QTest::newRow("copies of copies") << QStringLiteral("((a{16}){16}){16}") << false;
}

void LineAutomatonTest::aPatternThatMakesPatternEnginesExplodeEndsSoon()
{
    QFETCH(QString, pattern);
    QFETCH(bool, usable);
    const LineAutomaton made = automaton(pattern);
    QCOMPARE(made.isUsable(), usable);
    if (usable)
        QVERIFY(!findsInBytes(made, QByteArray(9, 'c') + QByteArray(100000, 'd')));
}

void LineAutomatonTest::aPatternMayBeTooLargeForBytesOnly_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QByteArray>("match");
    QTest::newRow("a number") << QStringLiteral("[^0-9][0-9]{13}") << QByteArray(" 9784000000000");
    QTest::newRow("capitals") << QStringLiteral("\\S+\\s[A-Z]{12}") << QByteArray("a ABCDEFGHIJKL");
    QTest::newRow("letters") << QStringLiteral("[^a-h]+\\D[a-h]{10}") << QByteArray("  abcdefghab");
}

void LineAutomatonTest::aPatternMayBeTooLargeForBytesOnly()
{
    QFETCH(QString, pattern);
    QFETCH(QByteArray, match);
    const LineAutomaton made = automaton(pattern);
    QVERIFY(made.isUsable());
    QVERIFY(!made.isUsableInBytes());
    QVERIFY(findsInBytes(made, "x\n" + match + '\n'));
    QVERIFY(!findsInBytes(made, "x\n" + match.chopped(1) + '\n'));
    QVERIFY(made.next(QString::fromLatin1(match), 0) >= 0);
}

void LineAutomatonTest::brokenBytesMayBeAnyCharacters()
{
    const LineAutomaton made = automaton(QStringLiteral("a.b"));
    QVERIFY(findsInBytes(made,
                         "a\xFF"
                         "b"));
    QVERIFY(findsInBytes(made,
                         "a\xE3\x81"
                         "b"));
    QVERIFY(!findsInBytes(made, "ab"));
}

void LineAutomatonTest::noLineThatMatchesIsPassedOver()
{
    static const char *const parts[] = {
        "a",     "b",  "[ab]", "[^a]",  ".",       "\\w",      "\\d",   "(a|c)", "(?:b)",
        "あ",    "ｋ", "k",    "\\s",   "[あ-ん]", "\\bx",     "x\\B",  "(ab)",  "\\1",
        "(?!a)", "^",  "$",    "[a-z]", "[A-Z]",   "[0-9A-F]", "[j-s]", "[^a-y]"};
    static const char *const counts[] = {"", "", "", "", "*", "+", "?", "{2}", "{1,3}", "{0,1}"};
    static const char *const texts[] = {"a", "b",  "c",  "x", "k", "K",  "\u212A", "あ", "漢", "1",
                                        " ", "ｋ", "Ａ", "9", "_", "𠮷", "ſ",      "ı",  "İ"};
    static const char *const before[] = {"[^a-c]+\\D", "[^0-9]", "\\W+\\w", "\\S+\\s"};
    static const char *const after[] = {"[a-c]", "[0-9]", "[a-z]"};
    static const char *const ends[] = {"", "\n", "\r\n", "\nanother"};
    QRandomGenerator random(20240601);
    const auto pick = [&random](const auto &list) {
        return QString::fromUtf8(list[random.bounded(int(std::size(list)))]);
    };
    int matches = 0;
    int largeOnes = 0;
    for (int round = 0; round < TestLength::rounds(4000, 400000); ++round) {
        QString pattern;
        for (int i = 1 + random.bounded(5); i > 0; --i)
            pattern +=
                pick(parts) + pick(counts) + QLatin1String(random.bounded(12) == 0 ? "|" : "");
        // Too large for bytes, at times.
        if (random.bounded(60) == 0)
            pattern =
                pick(before) + pick(after) + QStringLiteral("{%1}").arg(random.bounded(4, 12));
        const auto sensitivity = random.bounded(2) == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const QRegExp expression(pattern, sensitivity);
        const LineAutomaton made = automaton(pattern, sensitivity);
        if (!expression.isValid() || !made.isUsable())
            continue;
        QString line;
        for (int i = random.bounded(12); i > 0; --i)
            line += pick(texts);
        if (random.bounded(4) == 0)
            line += QStringLiteral(" abcabcabcabc 123456789012 kxkxkxkxkxkxk");
        if (expression.indexIn(line) < 0)
            continue;
        ++matches;
        const QString earlier = QStringLiteral("an earlier one\n");
        const QString end = pick(ends);
        const QString text = earlier + line + end;
        // Of the line's last character that is a line feed, or of its last one.
        const qint64 found = made.next(text, earlier.size());
        const bool isOnLine = found >= earlier.size()
            && found < std::max(earlier.size() + line.size() + end.indexOf(QLatin1Char('\n')) + 1,
                                earlier.size() + line.size());
        largeOnes += made.isUsableInBytes() ? 0 : 1;
        if (!isOnLine || !findsInBytes(made, line.toUtf8() + end.toUtf8()))
            QFAIL(qPrintable(pattern + QLatin1String(" in ") + line));
    }
    QVERIFY2(matches > 400, qPrintable(QString::number(matches)));
    QVERIFY2(largeOnes > 0, qPrintable(QString::number(largeOnes)));
}

QTEST_GUILESS_MAIN(LineAutomatonTest)
#include "LineAutomatonTest.moc"
