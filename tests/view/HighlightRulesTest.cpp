#include "view/HighlightRules.h"

#include <QTest>

#include <algorithm>
#include <random>

class HighlightRulesTest : public QObject {
    Q_OBJECT

private slots:
    void rulesApplyInTheOrderOfTheirNames();
    void numbersInNamesSortAsText();
    void findsComeAfterAllOthers();
    void everyMatchIsVisited();
    void aMatchOfNothingIsPassedOver();
    void anEmptyExpressionMatchesNothing();
    void anInvalidExpressionMatchesNothing();
    void anExpressionSeesTheWholeLine();
    void matchesBeginBeforeTheLimit();
    void findsInALongTextAreThoseOfAnyText();
    void theStartOfALongTextIsFoundOnce();
    void findsInALongTextBeginBeforeTheLimit();
    void otherRulesOfALongTextSeeBeyondTheLimit();
    void aFindThatSearchesToTheEndIsBounded();
    void aLookForFindsGoesOnWhereItEnded();
    void aLookForRulesOfALongTextGoesOnWhereItEnded();
    void rulesOfALongTextAreGivenUp();
    void inAShortTextNothingIsGivenUp();
    void aChangedRuleIsLookedForAnew();
    void aRuleIsReplacedByItsName();
    void aRemovedRuleIsGone();
    void clearRemovesAll();
    void aWordMatchesWhole_data();
    void aWordMatchesWhole();
    void aWordMayBeAPattern();
    void oneWordMayHaveSeveralRules();
    void wordsAndPatternsKeepTheirOrder();
    void wordsMatchAsTheirPatternsDo();
};

namespace {

using Group = HighlightRules::Group;
/// Longer than what is looked for at once.
constexpr int kLongText = 16384;
constexpr int kAll = std::numeric_limits<int>::max();

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString matchesOf(const HighlightRules &rules, const QString &line, Group group = Group::Language,
                  int limit = kAll)
{
    QStringList result;
    rules.visitMatches(line, group, limit, [&](int start, int length, HighlightColour colour) {
        result.append(text("%1:%2:%3").arg(static_cast<int>(colour)).arg(start).arg(length));
    });
    return result.join(QLatin1Char(' '));
}

constexpr HighlightColour kKeyword = HighlightColour::Keyword; // 2
constexpr HighlightColour kReserved = HighlightColour::ReservedWord; // 3

} // namespace

void HighlightRulesTest::rulesApplyInTheOrderOfTheirNames()
{
    HighlightRules rules;
    rules.set(text("Value"), QRegExp(text("a")), HighlightColour::Value);
    rules.set(text("Comment"), QRegExp(text("a")), HighlightColour::LineComment);
    rules.set(text("Reserve_0"), QRegExp(text("a")), kReserved);
    rules.set(text("KeyWord_0"), QRegExp(text("a")), kKeyword);
    rules.set(text("Grep"), QRegExp(text("a")), HighlightColour::FileLine);
    QCOMPARE(rules.names(),
             (QStringList{text("Comment"), text("Grep"), text("KeyWord_0"), text("Reserve_0"),
                          text("Value")}));
    QCOMPARE(matchesOf(rules, text("a")), text("1:0:1 5:0:1 2:0:1 3:0:1 4:0:1"));
}

void HighlightRulesTest::numbersInNamesSortAsText()
{
    HighlightRules rules;
    rules.set(text("KeyWord_2"), QRegExp(text("b")), kKeyword);
    rules.set(text("KeyWord_10"), QRegExp(text("a")), kReserved);
    QCOMPARE(rules.names(), (QStringList{text("KeyWord_10"), text("KeyWord_2")}));
    QCOMPARE(matchesOf(rules, text("ba")), text("3:1:1 2:0:1"));
}

void HighlightRulesTest::findsComeAfterAllOthers()
{
    HighlightRules rules;
    QCOMPARE(HighlightRules::findName(1), text("zFind_1"));
    rules.set(HighlightRules::findName(2), QRegExp(text("a")), HighlightColour::Find2);
    rules.set(HighlightRules::findName(1), QRegExp(text("a")), HighlightColour::Find1);
    rules.set(text("Value"), QRegExp(text("a")), HighlightColour::Value);
    QCOMPARE(rules.names().last(), text("zFind_2"));
    QCOMPARE(matchesOf(rules, text("a")), text("4:0:1"));
    QCOMPARE(matchesOf(rules, text("a"), Group::Finds), text("6:0:1 7:0:1"));
}

void HighlightRulesTest::everyMatchIsVisited()
{
    HighlightRules rules;
    rules.set(text("R"), QRegExp(text("aa")), kReserved);
    QCOMPARE(matchesOf(rules, text("aaaaa aa")), text("3:0:2 3:2:2 3:6:2"));
}

void HighlightRulesTest::aMatchOfNothingIsPassedOver()
{
    HighlightRules rules;
    rules.set(text("R"), QRegExp(text("a*")), kReserved);
    QCOMPARE(matchesOf(rules, text("baab")), text("3:1:2"));
    QCOMPARE(matchesOf(rules, QString()), QString());
    rules.set(text("R"), QRegExp(text("$")), kReserved);
    QCOMPARE(matchesOf(rules, text("ab")), QString());
}

void HighlightRulesTest::anEmptyExpressionMatchesNothing()
{
    HighlightRules rules;
    rules.set(text("R"), QRegExp(), kReserved);
    QCOMPARE(matchesOf(rules, text("a")), QString());
}

void HighlightRulesTest::anInvalidExpressionMatchesNothing()
{
    HighlightRules rules;
    rules.set(text("R"), QRegExp(text("a(")), kReserved);
    rules.setWord(text("S"), text("a("), kReserved);
    QCOMPARE(matchesOf(rules, text("a( a")), QString());
}

void HighlightRulesTest::anExpressionSeesTheWholeLine()
{
    HighlightRules rules;
    rules.set(text("R"), QRegExp(text("^a|\\bb")), kReserved);
    // Behind the first match it is not the start of the line again.
    QCOMPARE(matchesOf(rules, text("aa ab b")), text("3:0:1 3:6:1"));
}

void HighlightRulesTest::matchesBeginBeforeTheLimit()
{
    HighlightRules rules;
    rules.set(text("R"), QRegExp(text("aa")), kReserved);
    rules.setWord(text("S"), text("word"), kKeyword);
    const QString line = text("aa word aa word");
    QCOMPARE(matchesOf(rules, line, Group::Language, 8), text("3:0:2 2:3:4"));
    QCOMPARE(matchesOf(rules, line, Group::Language, 4), text("3:0:2 2:3:4"));
    QCOMPARE(matchesOf(rules, line, Group::Language, 3), text("3:0:2"));
    QCOMPARE(matchesOf(rules, line, Group::Language, 9), text("3:0:2 3:8:2 2:3:4"));
    QCOMPARE(matchesOf(rules, line, Group::Language, 0), QString());
}

void HighlightRulesTest::findsInALongTextAreThoseOfAnyText()
{
    std::mt19937 random(7);
    QString line;
    while (line.size() < 3 * kLongText)
        line += QLatin1Char("ab c_\t"[random() % 6]);
    for (const char *pattern : {"ab", "\\ba+\\b", "b[ac]*b", "$", "c+ "}) {
        const QRegExp expression(text(pattern));
        QStringList expected;
        for (int at = expression.indexIn(line); at >= 0 && at < line.size();) {
            const int length = expression.matchedLength();
            if (length > 0)
                expected.append(text("1:%1:%2").arg(at).arg(length));
            at = expression.indexIn(line, at + std::max(length, 1));
        }
        HighlightRules rules;
        rules.set(HighlightRules::findName(1), expression, HighlightColour::Find1);
        QStringList found;
        rules.visitMatches(line, Group::Finds, line.size(),
                           [&found](int start, int length, HighlightColour) {
                               found.append(text("1:%1:%2").arg(start).arg(length));
                           });
        QCOMPARE(found, expected);
    }
}

void HighlightRulesTest::theStartOfALongTextIsFoundOnce()
{
    HighlightRules rules;
    rules.set(HighlightRules::findName(1), QRegExp(text("^a")), kReserved);
    QCOMPARE(matchesOf(rules, text("a").repeated(kLongText), Group::Finds), text("3:0:1"));
}

void HighlightRulesTest::findsInALongTextBeginBeforeTheLimit()
{
    HighlightRules rules;
    rules.set(HighlightRules::findName(1), QRegExp(text("bb")), kReserved);
    const QString line = text("abb").repeated(kLongText);
    QCOMPARE(matchesOf(rules, line, Group::Finds, 2), text("3:1:2"));
    QCOMPARE(matchesOf(rules, line, Group::Finds, 4), text("3:1:2"));
    QCOMPARE(matchesOf(rules, line, Group::Finds, 5), text("3:1:2 3:4:2"));
    QCOMPARE(matchesOf(rules, line, Group::Finds, 0), QString());
}

void HighlightRulesTest::otherRulesOfALongTextSeeBeyondTheLimit()
{
    constexpr int kLimit = 100;
    HighlightRules rules;
    rules.set(text("Value"), QRegExp(text("a+b")), kReserved);
    const QString line = text("ab") + text("-").repeated(kLimit - 3)
        + text("a").repeated(HighlightRules::kSight - 1) + text("b")
        + text("-").repeated(2 * HighlightRules::kSight);
    QCOMPARE(matchesOf(rules, line, Group::Language, kLimit),
             text("3:0:2 3:99:%1").arg(HighlightRules::kSight));
    QCOMPARE(matchesOf(rules, line, Group::Language, kLimit - 1), text("3:0:2"));
    QString longer = line;
    longer.insert(kLimit, QLatin1Char('a'));
    QCOMPARE(matchesOf(rules, longer, Group::Language, kLimit), text("3:0:2"));
}

void HighlightRulesTest::aFindThatSearchesToTheEndIsBounded()
{
    // Looked for in one go, this would take hours.
    HighlightRules rules;
    rules.set(HighlightRules::findName(1), QRegExp(text("a.*b")), kReserved);
    const QString line = text("a").repeated(1 << 20) + text("b");
    int found = 0;
    rules.visitMatches(line, Group::Finds, 1 << 16,
                       [&found](int, int, HighlightColour) { ++found; });
    QCOMPARE(found, 0);
}

void HighlightRulesTest::aLookForFindsGoesOnWhereItEnded()
{
    const QString line = text("a ").repeated(2000) + text("ab");
    HighlightRules rules;
    rules.set(HighlightRules::findName(1), QRegExp(text("a+(?=b)")), kReserved);
    rules.set(HighlightRules::findName(2), QRegExp(text("b+")), kKeyword);
    int calls = 1;
    while (!rules.lookForMatches(line, kAll, [] { return true; })) {
        ++calls;
        QVERIFY(calls < 1000);
    }
    // Four pieces for each rule at least.
    QVERIFY2(calls >= 2 * 4, qPrintable(QString::number(calls)));
    QVERIFY(rules.lookForMatches(line, kAll, [] { return true; }));
    QCOMPARE(matchesOf(rules, line, Group::Finds), text("3:4000:1 2:4001:1"));
}

void HighlightRulesTest::aLookForRulesOfALongTextGoesOnWhereItEnded()
{
    const QString line = text("a ").repeated(2000) + text("ab word");
    HighlightRules rules;
    rules.set(text("A"), QRegExp(text("a+(?=b)")), kReserved);
    rules.setWord(text("B"), text("word"), kReserved);
    rules.set(text("C"), QRegExp(text("b+")), kKeyword);
    rules.set(HighlightRules::findName(1), QRegExp(text("ab")), HighlightColour::Find1);
    int calls = 1;
    while (!rules.lookForMatches(line, kAll, [] { return true; })) {
        ++calls;
        QVERIFY(calls < 2000);
    }
    QVERIFY2(calls >= 3 * 4, qPrintable(QString::number(calls)));
    QVERIFY(rules.lookForMatches(line, kAll, [] { return true; }));
    QCOMPARE(matchesOf(rules, line, Group::Language), text("3:4000:1 3:4003:4 2:4001:1"));
    QCOMPARE(matchesOf(rules, line, Group::Finds).section(QLatin1Char(':'), 1), text("4000:2"));
    // The same text asked for as far as another place is looked through anew.
    QCOMPARE(matchesOf(rules, line, Group::Language, 4001), text("3:4000:1"));
}

void HighlightRulesTest::rulesOfALongTextAreGivenUp()
{
    // Would take hours.
    HighlightRules rules;
    rules.setPatience(0);
    rules.set(text("A"), QRegExp(text("a+(?=c)")), kReserved);
    rules.setWord(text("B"), text("word"), kReserved);
    rules.set(HighlightRules::findName(1), QRegExp(text("word")), kKeyword);
    const QString line = text("word ") + text("a").repeated(1 << 20);
    QCOMPARE(matchesOf(rules, line, Group::Language), text("3:0:4"));
    QCOMPARE(matchesOf(rules, line, Group::Finds), text("2:0:4"));
}

void HighlightRulesTest::inAShortTextNothingIsGivenUp()
{
    HighlightRules rules;
    rules.setPatience(0);
    rules.set(text("A"), QRegExp(text("a+(?=c)")), kReserved);
    rules.set(text("B"), QRegExp(text("c")), kKeyword);
    const QString line = text("ab").repeated(LinePattern::kShortLine / 2 - 1) + text("ac");
    QCOMPARE(line.size(), LinePattern::kShortLine);
    QCOMPARE(matchesOf(rules, line), text("3:1022:1 2:1023:1"));
}

void HighlightRulesTest::aChangedRuleIsLookedForAnew()
{
    HighlightRules rules;
    rules.set(HighlightRules::findName(1), QRegExp(text("a")), kReserved);
    QCOMPARE(matchesOf(rules, text("ab"), Group::Finds), text("3:0:1"));
    rules.set(HighlightRules::findName(1), QRegExp(text("b")), kReserved);
    QCOMPARE(matchesOf(rules, text("ab"), Group::Finds), text("3:1:1"));
    QCOMPARE(matchesOf(rules, text("ba"), Group::Finds), text("3:0:1"));
    rules.remove(HighlightRules::findName(1));
    QCOMPARE(matchesOf(rules, text("ba"), Group::Finds), QString());
}

void HighlightRulesTest::aRuleIsReplacedByItsName()
{
    HighlightRules rules;
    rules.setWord(text("R"), text("a"), kKeyword);
    QCOMPARE(matchesOf(rules, text("a b")), text("2:0:1"));
    rules.set(text("R"), QRegExp(text("b")), kReserved);
    QCOMPARE(matchesOf(rules, text("a b")), text("3:2:1"));
    QCOMPARE(rules.expression(text("R")), QRegExp(text("b")));
}

void HighlightRulesTest::aRemovedRuleIsGone()
{
    HighlightRules rules;
    rules.set(text("R"), QRegExp(text("a")), kReserved);
    rules.setWord(text("S"), text("a"), kKeyword);
    rules.remove(text("S"));
    QCOMPARE(matchesOf(rules, text("a")), text("3:0:1"));
    rules.remove(text("R"));
    QCOMPARE(matchesOf(rules, text("a")), QString());
    QVERIFY(rules.expression(text("R")).isEmpty());
    rules.remove(text("never there"));
}

void HighlightRulesTest::clearRemovesAll()
{
    HighlightRules rules;
    rules.set(text("R"), QRegExp(text("a")), kReserved);
    rules.setWord(text("S"), text("a"), kKeyword);
    rules.clear();
    QVERIFY(rules.names().isEmpty());
    QCOMPARE(matchesOf(rules, text("a")), QString());
}

void HighlightRulesTest::aWordMatchesWhole_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("matches");
    const auto row = [](const char *name, const char *line, const char *matches) {
        QTest::newRow(name) << text(line) << text(matches);
    };

    row("alone", "int", "2:0:3");
    row("between signs", "(int)+int", "2:1:3 2:6:3");
    row("part of a word", "print", "");
    row("start of a word", "integer", "");
    row("before an underscore", "int_t", "");
    row("before a digit", "int8", "");
    row("other case", "INT", "");
    row("behind a Japanese letter", "\xe5\xa4\x89int", "");
    row("behind a full-width sign", "\xe3\x80\x81int", "2:1:3");
    row("before a combining mark", "int\xcc\x81", "");
}

void HighlightRulesTest::aWordMatchesWhole()
{
    QFETCH(QString, line);
    QFETCH(QString, matches);
    HighlightRules rules;
    rules.setWord(text("K"), text("int"), kKeyword);
    QCOMPARE(matchesOf(rules, line), matches);
    rules.set(text("K"), QRegExp(text("\\bint\\b")), kKeyword);
    QCOMPARE(matchesOf(rules, line), matches);
}

void HighlightRulesTest::aWordMayBeAPattern()
{
    HighlightRules rules;
    rules.setWord(text("K"), text("u?int[0-9]+"), kKeyword);
    QCOMPARE(matchesOf(rules, text("int8 uint16 xint8 int")), text("2:0:4 2:5:6"));
    rules.setWord(text("K"), text("not-a"), kKeyword);
    QCOMPARE(matchesOf(rules, text("not-a not-ab")), text("2:0:5"));
}

void HighlightRulesTest::oneWordMayHaveSeveralRules()
{
    HighlightRules rules;
    rules.setWord(text("Reserve_0"), text("a"), kReserved);
    rules.setWord(text("KeyWord_0"), text("a"), kKeyword);
    QCOMPARE(matchesOf(rules, text("a a")), text("2:0:1 2:2:1 3:0:1 3:2:1"));
}

void HighlightRulesTest::wordsAndPatternsKeepTheirOrder()
{
    HighlightRules rules;
    rules.setWord(text("K_1"), text("b"), kKeyword);
    rules.set(text("K_2"), QRegExp(text("b+")), kReserved);
    rules.setWord(text("K_3"), text("b"), HighlightColour::Value);
    QCOMPARE(matchesOf(rules, text("b bb")), text("2:0:1 3:0:1 3:2:2 4:0:1"));
}

void HighlightRulesTest::wordsMatchAsTheirPatternsDo()
{
    static const char *const words[] = {"a", "ab",           "b_",       "_",
                                        "9", "\xe3\x81\x82", "\xcc\x81", "b9"};
    static const char *const pieces[] = {"a",
                                         "b",
                                         "_",
                                         "9",
                                         " ",
                                         "-",
                                         "\xe3\x81\x82",
                                         "\xcc\x81",
                                         "\xf0\x9f\x98\x80",
                                         "\xe3\x80\x80",
                                         "\xd9\xa1"};
    HighlightRules quick;
    HighlightRules plain;
    int number = 0;
    for (const char *word : words) {
        const QString name = text("KeyWord_%1").arg(number++);
        quick.setWord(name, text(word), kKeyword);
        plain.set(name, QRegExp(text("\\b") + text(word) + text("\\b")), kKeyword);
    }
    std::mt19937 random(3);
    int matches = 0;
    for (int i = 0; i < 20000; ++i) {
        QString line;
        for (int length = static_cast<int>(random() % 12); length > 0; --length)
            line += text(pieces[random() % std::size(pieces)]);
        const QString expected = matchesOf(plain, line);
        QCOMPARE(matchesOf(quick, line), expected);
        matches += expected.isEmpty() ? 0 : 1;
    }
    QVERIFY(matches > 1000);
}

QTEST_GUILESS_MAIN(HighlightRulesTest)
#include "HighlightRulesTest.moc"
