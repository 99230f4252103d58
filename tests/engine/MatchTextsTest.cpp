#include "engine/MatchTexts.h"

#include <QTest>

class MatchTextsTest : public QObject {
    Q_OBJECT

private slots:
    void anythingRequiresNothing();
    void exactTextsAreJoined();
    void theEndsAroundAGapAreKept();
    void aTextThatMayBeEmptyRequiresNothing();
    void oneUnknownBranchMakesAllUnknown();
    void tooManyTextsAreForgotten();
    void aLongListOfAlternativesIsKept();
    void aListBehindOrBeforeATextIsKept();
    void aListWithATextOfOneLetterIsForgotten();
    void aListThatIsTooLongIsForgotten();
    void anAlternativeThatIsUnknownMakesAListUnknown();
    void longTextsAreCut();
    void copiesAreCounted();
    void moreCopiesKeepTheEnds();
    void theLongerTextIsRequired();
};

namespace {

MatchTexts text(const char *text)
{
    return MatchTexts::exactly({QString::fromUtf8(text)});
}

MatchTexts oneOf(const QStringList &texts)
{
    return MatchTexts::exactly(texts);
}

/// So many texts, from 1000 on.
MatchTexts numbers(int count)
{
    QVector<MatchTexts> all;
    for (int i = 0; i < count; ++i)
        all.append(oneOf({QString::number(1000 + i)}));
    return MatchTexts::anyOf(all);
}

QString required(const MatchTexts &texts)
{
    return texts.required().join(QLatin1Char('|'));
}

} // namespace

void MatchTextsTest::anythingRequiresNothing()
{
    QVERIFY(MatchTexts::anything().required().isEmpty());
    QVERIFY(MatchTexts::anything().followedBy(MatchTexts::anything()).required().isEmpty());
}

void MatchTextsTest::exactTextsAreJoined()
{
    QCOMPARE(required(text("ab").followedBy(text("cd"))), QStringLiteral("abcd"));
    const MatchTexts two = oneOf({QStringLiteral("x"), QStringLiteral("y")});
    QCOMPARE(required(text("a").followedBy(two).followedBy(two)),
             QStringLiteral("axx|axy|ayx|ayy"));
}

void MatchTextsTest::theEndsAroundAGapAreKept()
{
    const MatchTexts gap = MatchTexts::anything();
    const MatchTexts texts =
        text("a").followedBy(text("b")).followedBy(gap).followedBy(text("c")).followedBy(
            text("de"));
    QCOMPARE(required(texts), QStringLiteral("cde"));
    const MatchTexts group = gap.followedBy(text("tail"));
    QCOMPARE(required(group.followedBy(text("more"))), QStringLiteral("tailmore"));
}

void MatchTextsTest::aTextThatMayBeEmptyRequiresNothing()
{
    QVERIFY(text("abc").repeated(0, 1).required().isEmpty());
    QVERIFY(text("abc").repeated(0, -1).required().isEmpty());
    QVERIFY(text("abc").repeated(0, 0).required().isEmpty());
    QVERIFY(text("abc").orElse(text("")).required().isEmpty());
}

void MatchTextsTest::oneUnknownBranchMakesAllUnknown()
{
    QVERIFY(text("abc").orElse(MatchTexts::anything()).required().isEmpty());
    QVERIFY(MatchTexts::anything().orElse(text("abc")).required().isEmpty());
}

void MatchTextsTest::tooManyTextsAreForgotten()
{
    MatchTexts digits = text("0");
    for (char digit = '1'; digit <= '9'; ++digit)
        digits = digits.orElse(oneOf({QString(QLatin1Char(digit))}));
    QCOMPARE(digits.required().size(), 10);
    QVERIFY(digits.followedBy(digits).required().size() <= MatchTexts::kMaxTexts);
    QCOMPARE(required(text("ab").followedBy(digits).followedBy(digits).followedBy(text("xyz"))),
             QStringLiteral("xyz"));
    MatchTexts many = digits;
    for (char letter = 'a'; letter <= 'g'; ++letter)
        many = many.orElse(oneOf({QString(QLatin1Char(letter))}));
    QVERIFY(many.required().isEmpty());
}

void MatchTextsTest::aLongListOfAlternativesIsKept()
{
    const MatchTexts list = numbers(1000);
    QVERIFY(list.isExact());
    QCOMPARE(list.required().size(), 1000);
    const MatchTexts twice = MatchTexts::anyOf({list, list, text("99")});
    QCOMPARE(twice.required().size(), 1001);
}

void MatchTextsTest::aListBehindOrBeforeATextIsKept()
{
    const MatchTexts list = numbers(1000);
    const MatchTexts around = text("<").followedBy(list).followedBy(text(">"));
    QVERIFY(around.isExact());
    QCOMPARE(around.required().size(), 1000);
    QCOMPARE(around.required().first(), QStringLiteral("<1000>"));
    QVERIFY(list.followedBy(text("")).isExact());
    QVERIFY(!list.followedBy(MatchTexts::anything()).isExact());
    QCOMPARE(list.followedBy(MatchTexts::anything()).required().size(), 1000);
    QCOMPARE(list.followedBy(oneOf({QString(), QStringLiteral("s")})).required().size(), 1000);
    QCOMPARE(list.followedBy(list).required().size(), 1000);
}

void MatchTextsTest::aListWithATextOfOneLetterIsForgotten()
{
    QVERIFY(numbers(15).orElse(text("x")).isExact());
    QVERIFY(!numbers(16).orElse(text("x")).isExact());
    QVERIFY(numbers(16).orElse(text("x")).required().isEmpty());
    QVERIFY(numbers(16).orElse(text("")).required().isEmpty());
    QCOMPARE(numbers(16).orElse(text("漢")).required().size(), 17);
}

void MatchTextsTest::aListThatIsTooLongIsForgotten()
{
    QCOMPARE(numbers(MatchTexts::kMaxListed).required().size(), int(MatchTexts::kMaxListed));
    QVERIFY(numbers(MatchTexts::kMaxListed + 1).required().isEmpty());
}

void MatchTextsTest::anAlternativeThatIsUnknownMakesAListUnknown()
{
    QVERIFY(numbers(100).orElse(MatchTexts::anything()).required().isEmpty());
    const MatchTexts loose = text("head").followedBy(MatchTexts::anything());
    QVERIFY(!numbers(100).orElse(loose).isExact());
    QCOMPARE(numbers(100).orElse(loose).required().size(), 101);
}

void MatchTextsTest::longTextsAreCut()
{
    MatchTexts texts = text("");
    for (int i = 0; i < 1000; ++i)
        texts = texts.followedBy(text("x"));
    QCOMPARE(texts.required().size(), 1);
    QVERIFY(texts.required().first().size() >= 12);
    QVERIFY(texts.required().first().size() <= 130);
}

void MatchTextsTest::copiesAreCounted()
{
    QCOMPARE(required(text("ab").repeated(1, 1)), QStringLiteral("ab"));
    QCOMPARE(required(text("ab").repeated(3, 3)), QStringLiteral("ababab"));
    QCOMPARE(required(text("z").followedBy(text("a").repeated(2, 2)).followedBy(text("z"))),
             QStringLiteral("zaaz"));
    QVERIFY(required(text("ab").repeated(1000, 1000)).startsWith(QStringLiteral("abababab")));
}

void MatchTextsTest::moreCopiesKeepTheEnds()
{
    const MatchTexts copies = text("ab").repeated(2, -1);
    QCOMPARE(required(text("x").followedBy(copies)), QStringLiteral("xabab"));
    QCOMPARE(required(copies.followedBy(text("xy"))), QStringLiteral("ababxy"));
    QCOMPARE(required(text("x").followedBy(text("a").repeated(1, 2)).followedBy(text("y"))),
             QStringLiteral("xa"));
}

void MatchTextsTest::theLongerTextIsRequired()
{
    const MatchTexts gap = MatchTexts::anything();
    QCOMPARE(required(text("abc").followedBy(gap).followedBy(text("ab"))), QStringLiteral("abc"));
    QCOMPARE(required(text("abc").followedBy(gap).followedBy(text("漢字"))),
             QStringLiteral("漢字"));
}

QTEST_GUILESS_MAIN(MatchTextsTest)
#include "MatchTextsTest.moc"
