#include "engine/LineFinder.h"

#include <QtTest>

#include <algorithm>
#include <random>

class LineFinderTest : public QObject {
    Q_OBJECT

private slots:
    void aLineThatIsInSightIsSeenWhole_data();
    void aLineThatIsInSightIsSeenWhole();
    void caseAndGreedMeanWhatTheyMeanElsewhere_data();
    void caseAndGreedMeanWhatTheyMeanElsewhere();
    void shortMatchesInALongLineAreThoseOfAnyLine_data();
    void shortMatchesInALongLineAreThoseOfAnyLine();
    void matchesOfAPatternThatRepeatsNothingAreExact();
    void aLookEndsSoon_data();
    void aLookEndsSoon();
    void aMatchOutOfSightEndsWhereItIsSeen();
    void theEndOfTheSightIsNoEndOfTheLine();
    void theStartOfAPieceIsNoStartOfTheLine();
    void aMatchThatBeginsAtTheLimitIsNone();
    void aMatchBehindTheEndIsNone();
    void anotherSightMayBeAskedFor();
    void onlyBoundariesAreTriedIfSaid();
    void aCarriageReturnMayBeMatched();
    void withoutAPatternNothingIsFound_data();
    void withoutAPatternNothingIsFound();
};

namespace {

constexpr int kLong = 5000;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

LineFinder finder(const char *pattern)
{
    return LineFinder(QRegExp(text(pattern)));
}

QString letters(int count)
{
    return QString(count, QLatin1Char('a'));
}

/// In the time that the pattern takes on the whole line at once.
QStringList forwardInOneGo(const QRegExp &expression, const QString &line)
{
    QStringList found;
    for (int at = expression.indexIn(line); at >= 0 && at < line.size();) {
        const int length = expression.matchedLength();
        if (length > 0)
            found.append(text("%1:%2").arg(at).arg(length));
        at = expression.indexIn(line, at + std::max(length, 1));
    }
    return found;
}

QStringList backwardInOneGo(const QRegExp &expression, const QString &line)
{
    QStringList found;
    for (int end = line.size(), at = end; at > 0;) {
        at = expression.lastIndexIn(line, at - 1);
        if (at < 0)
            break;
        const int length = expression.matchedLength();
        if (length > 0 && at + length <= end) {
            found.append(text("%1:%2").arg(at).arg(length));
            end = at;
        }
    }
    return found;
}

QStringList forwardByLooks(LineFinder finder, const QString &line, int *looks = nullptr)
{
    QStringList found;
    for (int from = 0; from < line.size();) {
        const LineFinder::Look look = finder.lookForward(line, from);
        if (look.match.isValid())
            found.append(text("%1:%2").arg(look.match.start).arg(look.match.length));
        from = look.next;
        if (looks != nullptr)
            ++*looks;
    }
    return found;
}

QStringList backwardByLooks(LineFinder finder, const QString &line, int *looks = nullptr)
{
    QStringList found;
    for (int from = line.size(), end = from; from > 0;) {
        const LineFinder::Look look = finder.lookBackward(line, from, end);
        if (look.match.isValid()) {
            found.append(text("%1:%2").arg(look.match.start).arg(look.match.length));
            end = look.match.start;
        }
        from = look.next;
        if (looks != nullptr)
            ++*looks;
    }
    return found;
}

QString randomLine(int size)
{
    std::mt19937 random(7);
    QString line;
    while (line.size() < size)
        line += QLatin1Char("ab c_\t"[random() % 6]);
    return line;
}

} // namespace

void LineFinderTest::aLineThatIsInSightIsSeenWhole_data()
{
    QTest::addColumn<QString>("pattern");
    for (const char *pattern : {"a.*b", "^.*$", "b.*", ".*_", "\\w+$", "a*", "(a)[^_]*\\1", "c$"})
        QTest::newRow(pattern) << text(pattern);
}

void LineFinderTest::aLineThatIsInSightIsSeenWhole()
{
    QFETCH(QString, pattern);
    const QString line = randomLine(LineFinder::kSight);
    QCOMPARE(forwardByLooks(LineFinder(QRegExp(pattern)), line),
             forwardInOneGo(QRegExp(pattern), line));
    QCOMPARE(backwardByLooks(LineFinder(QRegExp(pattern)), line),
             backwardInOneGo(QRegExp(pattern), line));
}

void LineFinderTest::caseAndGreedMeanWhatTheyMeanElsewhere_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("minimal");
    // Without "İ": alone, the toolkit's own search passes over it where a try at its
    // place matches.
    for (const char *pattern : {"a.*B", "i+", "s+", "K.", "k+灯?", "\\bA", "[A-C]+", "灯.*守",
                                "(a|灯)+", "ſ", "^A", "b$"}) {
        for (const bool minimal : {false, true})
            QTest::addRow("%s%s", pattern, minimal ? ", least" : "")
                << QString::fromUtf8(pattern) << minimal;
    }
}

void LineFinderTest::caseAndGreedMeanWhatTheyMeanElsewhere()
{
    QFETCH(QString, pattern);
    QFETCH(bool, minimal);
    QRegExp expression(pattern, Qt::CaseInsensitive);
    expression.setMinimal(minimal);
    const QString letters = QString::fromUtf8("aAbB cC_iIİısSſkK\u212A灯守");
    std::mt19937 random(11);
    for (const int size : {40, 255, 256, 257, 600, LineFinder::kSight}) {
        QString line;
        while (line.size() < size)
            line += letters.at(int(random() % unsigned(letters.size())));
        QCOMPARE(forwardByLooks(LineFinder(expression), line), forwardInOneGo(expression, line));
        QCOMPARE(backwardByLooks(LineFinder(expression), line), backwardInOneGo(expression, line));
    }
}

void LineFinderTest::shortMatchesInALongLineAreThoseOfAnyLine_data()
{
    QTest::addColumn<QString>("pattern");
    for (const char *pattern : {"ab", "\\ba+\\b", "b[ac]*b", "c+ ", "\\Ba+", "a+(?=b)", "a+(?!b)",
                                "^[a-c_ \t]", "[ab]+$", "^a|c+", "(a|b)\\1", "a{2,3}"})
        QTest::newRow(pattern) << text(pattern);
}

void LineFinderTest::shortMatchesInALongLineAreThoseOfAnyLine()
{
    QFETCH(QString, pattern);
    const QString line = randomLine(kLong);
    QCOMPARE(forwardByLooks(LineFinder(QRegExp(pattern)), line),
             forwardInOneGo(QRegExp(pattern), line));
    QCOMPARE(backwardByLooks(LineFinder(QRegExp(pattern)), line),
             backwardInOneGo(QRegExp(pattern), line));
}

void LineFinderTest::matchesOfAPatternThatRepeatsNothingAreExact()
{
    const QString word = letters(2 * LineFinder::kSight);
    for (const QString &pattern : {word, QString(word + text("\\b")), QString(word + text("$"))}) {
        for (int before = LineFinder::kPiece - 5; before < LineFinder::kPiece + 5; ++before) {
            QString line = QString(before, QLatin1Char(' ')) + word;
            QCOMPARE(forwardByLooks(LineFinder(QRegExp(pattern)), line),
                     QStringList(text("%1:%2").arg(before).arg(word.size())));
            const QString inALongLine = QString(kLong, QLatin1Char(' ')) + line;
            QCOMPARE(backwardByLooks(LineFinder(QRegExp(pattern)), inALongLine),
                     QStringList(text("%1:%2").arg(kLong + before).arg(word.size())));
        }
    }
}

void LineFinderTest::aLookEndsSoon_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isRuledOut");
    const auto row = [](const char *pattern, bool isRuledOut) {
        QTest::newRow(pattern) << text(pattern) << isRuledOut;
    };
    row("\\w+\\d", true);
    row("(a|a)*b$", true);
    row("\\w+(?=\\d)", false);
}

void LineFinderTest::aLookEndsSoon()
{
    QFETCH(QString, pattern);
    QFETCH(bool, isRuledOut);
    constexpr int kPieces = 2;
    const QString line = letters(kPieces * LineFinder::kPiece);
    int looks = 0;
    QCOMPARE(forwardByLooks(LineFinder(QRegExp(pattern)), line, &looks), QStringList());
    const auto isAsExpected = [&] {
        return isRuledOut ? looks == kPieces : looks > 10 * kPieces;
    };
    QVERIFY2(isAsExpected(), qPrintable(QString::number(looks)));
    looks = 0;
    QCOMPARE(backwardByLooks(LineFinder(QRegExp(pattern)), line, &looks), QStringList());
    QVERIFY2(isAsExpected(), qPrintable(QString::number(looks)));
}

void LineFinderTest::aMatchOutOfSightEndsWhereItIsSeen()
{
    const QString line = letters(3000);
    QCOMPARE(forwardByLooks(finder("a+"), line),
             QStringList({text("0:1024"), text("1024:1024"), text("2048:952")}));
}

void LineFinderTest::theEndOfTheSightIsNoEndOfTheLine()
{
    QCOMPARE(forwardByLooks(finder("a+$"), letters(3000) + text("b")), QStringList());
    QCOMPARE(backwardByLooks(finder("a+$"), letters(3000) + text("b")), QStringList());
    QCOMPARE(forwardByLooks(finder("a+$"), text("b") + letters(LineFinder::kSight)).size(), 1);
}

void LineFinderTest::theStartOfAPieceIsNoStartOfTheLine()
{
    const QString line = letters(3000);
    QCOMPARE(forwardByLooks(finder("^a{1}"), line), QStringList(text("0:1")));
    QCOMPARE(backwardByLooks(finder("^a{1}"), line), QStringList(text("0:1")));
    QCOMPARE(forwardByLooks(finder("\\ba{1}"), line), QStringList(text("0:1")));
    QCOMPARE(backwardByLooks(finder("\\ba{1}"), line), QStringList(text("0:1")));
}

void LineFinderTest::aMatchThatBeginsAtTheLimitIsNone()
{
    LineFinder found = finder("ab+");
    const QString line = text("xxabb");
    QVERIFY(!found.lookForward(line, 0, 2).match.isValid());
    QCOMPARE(found.lookForward(line, 0, 2).next, 2);
    QCOMPARE(found.lookForward(line, 0, 3).match.start, 2);
    QCOMPARE(found.lookForward(line, 0, 3).match.length, 3);
    QVERIFY(!found.lookForward(line, 3).match.isValid());
    QCOMPARE(found.lookForward(line, 3).next, 5);
    QCOMPARE(found.lookForward(line, 9).next, 5);
}

void LineFinderTest::aMatchBehindTheEndIsNone()
{
    LineFinder found = finder("ab?");
    const QString line = text("a ab");
    QCOMPARE(found.lookBackward(line, 4, 4).match.start, 2);
    QCOMPARE(found.lookBackward(line, 4, 3).match.start, 0);
    QCOMPARE(found.lookBackward(line, 9, 9).match.start, 2);
    QVERIFY(!found.lookBackward(line, 0, 4).match.isValid());
}

void LineFinderTest::anotherSightMayBeAskedFor()
{
    QCOMPARE(forwardByLooks(LineFinder(QRegExp(text("a+")), 2000), letters(3000)),
             QStringList({text("0:2000"), text("2000:1000")}));
    QCOMPARE(forwardByLooks(LineFinder(QRegExp(text("a+b")), 3000), letters(3000) + text("b")),
             QStringList(text("1:3000")));
}

void LineFinderTest::onlyBoundariesAreTriedIfSaid()
{
    const QString line = QString::fromUtf8("aab -ab_ab+\u3042ab\u0301 ab ").repeated(100);
    for (const char *pattern : {"\\b[ab]+", "\\b[^ab]+", "\\b\\W*", "\\ba+b(?=\\W)", "\\b.{2}"}) {
        LineFinder some = finder(pattern);
        some.setBeginsAtBoundary();
        QCOMPARE(forwardByLooks(some, line), forwardByLooks(finder(pattern), line));
        QCOMPARE(forwardByLooks(some, line), forwardInOneGo(QRegExp(text(pattern)), line));
        QCOMPARE(backwardByLooks(some, line), backwardByLooks(finder(pattern), line));
    }
    LineFinder other = finder("b+");
    other.setBeginsAtBoundary();
    QCOMPARE(forwardByLooks(other, letters(300) + text(" bb ab")), QStringList(text("301:2")));
}

void LineFinderTest::aCarriageReturnMayBeMatched()
{
    const QString line = letters(300) + text("\rb") + letters(300);
    QCOMPARE(forwardByLooks(finder("[^a]+b"), line), QStringList(text("300:2")));
}

void LineFinderTest::withoutAPatternNothingIsFound_data()
{
    QTest::addColumn<QRegExp>("pattern");
    QTest::newRow("none") << QRegExp();
    QTest::newRow("invalid") << QRegExp(text("("));
    QTest::newRow("of empty matches") << QRegExp(text("b*"));
}

void LineFinderTest::withoutAPatternNothingIsFound()
{
    QFETCH(QRegExp, pattern);
    QCOMPARE(forwardByLooks(LineFinder(pattern), letters(2000)), QStringList());
    QCOMPARE(backwardByLooks(LineFinder(pattern), letters(2000)), QStringList());
    QCOMPARE(forwardByLooks(LineFinder(), letters(2000)), QStringList());
}

QTEST_GUILESS_MAIN(LineFinderTest)
#include "LineFinderTest.moc"
