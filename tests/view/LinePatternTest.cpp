#include "view/LinePattern.h"
#include "view/LanguageDefinition.h"
#include "view/LanguagePattern.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <random>

class LinePatternTest : public QObject {
    Q_OBJECT

private slots:
    void matchesAreThoseOfAnyExpression_data();
    void matchesAreThoseOfAnyExpression();
    void aLookGoesBackToo();
    void onlyMatchesBeforeTheLimitCount();
    void aMatchOfNothingIsPassedOver();
    void withoutAPatternNothingMatches();
    void aLookAheadSeesTheWholeLine();
    void aLookAheadIsAskedOnceALine_data();
    void aLookAheadIsAskedOnceALine();
    void aMatchSeesNoFartherThanItsSight();
    void aLookEndsSoon();
};

namespace {

using Match = QPair<int, int>;

/// A line that is looked through in steps, and matches seldom reach out of.
constexpr int kLong = LinePattern::kShortLine + 1;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

Match firstFrom(LinePatternWalk &walk, int from)
{
    for (;;) {
        const LinePatternWalk::Look look = walk.look(from);
        if (look.isDone)
            return {look.match.start, look.match.length};
    }
}

QVector<Match> matchesOf(const LinePattern &pattern, const QString &line,
                         int limit = LineFinder::kNoLimit)
{
    LinePatternWalk walk(pattern, line, limit);
    QVector<Match> matches;
    for (Match match = firstFrom(walk, 0); match.first >= 0;
         match = firstFrom(walk, match.first + match.second))
        matches.append(match);
    return matches;
}

/// In the time that the expression takes on the whole line at once.
QVector<Match> matchesInOneGo(const QRegExp &expression, const QString &line)
{
    QVector<Match> matches;
    for (int at = expression.indexIn(line); at >= 0 && at < line.size();) {
        const int length = expression.matchedLength();
        if (length > 0)
            matches.append({at, length});
        at = expression.indexIn(line, at + std::max(length, 1));
    }
    return matches;
}

/// What the pattern names literally, and a few others.
QStringList piecesFor(const QString &pattern)
{
    QStringList pieces = {text(" "), text("a"), text("b c "), text("\""), text("\t1")};
    QString plain = pattern;
    plain.replace(text("\\x0027"), text("'"));
    plain.remove(QRegularExpression(text("\\(\\?.|\\\\(?=\\W)|[()|*+^$\\]]")));
    pieces.append(plain);
    for (const QChar c : pattern)
        pieces.append(c);
    for (const char *both : {"//", "/*", "*/", "--", "-}", "#>", "<#", "]]", "[[", "]=]", "[=[",
                             "\"\"\"", "'''", "*)", "+/", "rem ", "REM ", "at ", "$'"})
        pieces.append(text(both));
    return pieces;
}

/// Markers of comments, and the reserved words and keywords that are patterns.
QStringList shippedPatterns()
{
    QStringList patterns;
    const QDir folder(QStringLiteral(SARVIK_LIST_FOLDER));
    for (const QString &name : folder.entryList({text("*.lst")}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            return QStringList();
        const LanguageDefinition definition =
            LanguageFile::parse(QString::fromLatin1(file.readAll()));
        patterns << definition.singleLine << definition.multiLineStart << definition.multiLineEnd
                 << definition.reserve << definition.keywords;
    }
    patterns.removeAll(QString());
    patterns.removeDuplicates();
    return patterns;
}

} // namespace

void LinePatternTest::matchesAreThoseOfAnyExpression_data()
{
    QTest::addColumn<QString>("pattern");
    QStringList patterns = shippedPatterns();
    QVERIFY(patterns.contains(text("//(?!.*\\*/)")));
    for (const char *own :
         {"a+(?!.*b)", "[ab](?!.*b)", "a|aa(?!.*b)|a+c(?!.*c)", "[ab]+(?!b|.*ca|.*cb)(?!c)",
          "a(?!.*b$)", "(a|ab)(?!.*ba)", "a*(?!.*b)", "(^|\\s)a(?!.*(b|c a))"})
        patterns.append(text(own));
    for (const QString &pattern : qAsConst(patterns))
        QTest::newRow(pattern.left(200).toLatin1().constData()) << pattern;
}

/// Of short matches in lines that are looked through in steps; the other lines are
/// looked through by the expression itself.
void LinePatternTest::matchesAreThoseOfAnyExpression()
{
    QFETCH(QString, pattern);
    const QRegExp expression = LanguagePattern::compiled(pattern);
    const LinePattern linePattern(expression, 2 * kLong);
    const QStringList pieces = piecesFor(pattern);
    std::mt19937 random(11);
    const int rounds = pattern.size() > 200 ? 4 : 25;
    for (int round = 0; round < rounds; ++round) {
        // Enough blanks before it that it is a long one.
        QString line = QString(static_cast<int>(random() % 2) * kLong, QLatin1Char(' '));
        const int few = 3 + static_cast<int>(random() % 8);
        QStringList some;
        for (int i = 0; i < few; ++i)
            some.append(pieces.at(static_cast<int>(random() % unsigned(pieces.size()))));
        for (int i = 0; i < 40; ++i)
            line += some.at(static_cast<int>(random() % unsigned(few)));
        line += QString(std::max(0, kLong - line.size()), QLatin1Char(' '));
        line += some.first();
        const QVector<Match> expected = matchesInOneGo(expression, line);
        QVERIFY2(matchesOf(linePattern, line) == expected, qPrintable(line));
    }
}

void LinePatternTest::aLookGoesBackToo()
{
    const QString line = text("a  aa  b").leftJustified(2 * kLong);
    const LinePattern pattern(QRegExp(text("a+(?!.*b)|b|\\s{2}a")));
    LinePatternWalk walk(pattern, line);
    QCOMPARE(firstFrom(walk, 4), Match(7, 1));
    QCOMPARE(firstFrom(walk, 0), Match(1, 3));
    QCOMPARE(firstFrom(walk, 8), Match(-1, 0));
    QCOMPARE(firstFrom(walk, 7), Match(7, 1));
}

void LinePatternTest::onlyMatchesBeforeTheLimitCount()
{
    for (const int size : {10, 2 * kLong}) {
        const QString line = text("abb abb").leftJustified(size);
        const LinePattern pattern(QRegExp(text("b+(?!.*c)")));
        QCOMPARE(matchesOf(pattern, line, 1), QVector<Match>());
        QCOMPARE(matchesOf(pattern, line, 2), QVector<Match>({{1, 2}}));
        QCOMPARE(matchesOf(pattern, line, 5), QVector<Match>({{1, 2}}));
        QCOMPARE(matchesOf(pattern, line, 6), QVector<Match>({{1, 2}, {5, 2}}));
    }
}

void LinePatternTest::aMatchOfNothingIsPassedOver()
{
    for (const int size : {4, 2 * kLong}) {
        const QString line = text("abxx").leftJustified(size);
        QCOMPARE(matchesOf(LinePattern(QRegExp(text("x*"))), line), QVector<Match>({{2, 2}}));
        QCOMPARE(matchesOf(LinePattern(QRegExp(text("^|$"))), line), QVector<Match>());
    }
}

void LinePatternTest::withoutAPatternNothingMatches()
{
    const QString line = QString(2 * kLong, QLatin1Char('a'));
    QCOMPARE(matchesOf(LinePattern(), line), QVector<Match>());
    QCOMPARE(matchesOf(LinePattern(QRegExp(text("a("))), line), QVector<Match>());
    QCOMPARE(matchesOf(LinePattern(QRegExp(text("a"))), QString()), QVector<Match>());
    QVERIFY(LinePattern().isEmpty());
}

void LinePatternTest::aLookAheadSeesTheWholeLine()
{
    const LinePattern pattern(QRegExp(text("//(?!.*\\*/)")));
    const QString blanks(1 << 20, QLatin1Char(' '));
    const QString line = text("//") + blanks + text("*/") + blanks + text("//");
    QCOMPARE(matchesOf(pattern, line), QVector<Match>({{line.size() - 2, 2}}));
}

void LinePatternTest::aLookAheadIsAskedOnceALine_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::newRow("that ends with the line") << text("//(?!.*\\*/)");
    QTest::newRow("with others beside it") << text("//(?!!|.*\\*/)");
    QTest::newRow("behind one that repeats") << text("//(?!=*!)(?!.*\\*/)");
    QTest::newRow("behind a repetition") << text("//+(?!.*\\*/)");
    QTest::newRow("in an alternative") << text("#|//(?!.*\\*/)");
    QTest::newRow("twice") << text("//(?!.*\\*/)(?!.*\\*\\))");
}

void LinePatternTest::aLookAheadIsAskedOnceALine()
{
    // Takes hours when each marker looks for the end of the line.
    QFETCH(QString, pattern);
    constexpr int kCount = 1 << 18;
    const QString line = text("// x ").repeated(kCount);
    const LinePattern linePattern{QRegExp(pattern)};
    QCOMPARE(matchesOf(linePattern, line).size(), kCount);
    QCOMPARE(matchesOf(linePattern, line + text("*/")).size(), 0);
    QCOMPARE(matchesOf(linePattern, text("//*/ ").repeated(kCount) + text("//")),
             QVector<Match>({{5 * kCount, 2}}));
}

void LinePatternTest::aMatchSeesNoFartherThanItsSight()
{
    const QString line = QString(kLong, QLatin1Char('a')) + QLatin1Char('b');
    QCOMPARE(matchesOf(LinePattern(QRegExp(text("a+b")), kLong + 1), line),
             QVector<Match>({{0, kLong + 1}}));
    QCOMPARE(matchesOf(LinePattern(QRegExp(text("a+b")), kLong), line),
             QVector<Match>({{1, kLong}}));
}

void LinePatternTest::aLookEndsSoon()
{
    // Taken at once, it would take hours.
    const LinePattern pattern(QRegExp(text("\\w+(?=\\d)")));
    LinePatternWalk walk(pattern, QString(1 << 20, QLatin1Char('a')));
    for (int looks = 0; looks < 100; ++looks)
        QVERIFY(!walk.look(0).isDone);
}

QTEST_GUILESS_MAIN(LinePatternTest)
#include "LinePatternTest.moc"
