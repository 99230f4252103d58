#include "view/LanguagePattern.h"

#include <QTest>

#include <random>

class LanguagePatternTest : public QObject {
    Q_OBJECT

private slots:
    void aPatternIsCompiledAsItStands();
    void anInvalidPatternIsNotApplied();
    void groupsMayNestUpToTheLimit();
    void countedRepetitionsAreMultiplied_data();
    void countedRepetitionsAreMultiplied();
    void aPatternUpToTheLimitIsReasonable();
    void anyPatternIsSurvived();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString nested(int depth)
{
    return QString(depth, QLatin1Char('(')) + QLatin1Char('a') + QString(depth, QLatin1Char(')'));
}

} // namespace

void LanguagePatternTest::aPatternIsCompiledAsItStands()
{
    const QRegExp expression = LanguagePattern::compiled(text("a[bc]+"));
    QCOMPARE(expression.indexIn(text("xxAbcabcb")), 5);
    QCOMPARE(expression.matchedLength(), 4);
}

void LanguagePatternTest::anInvalidPatternIsNotApplied()
{
    QVERIFY(LanguagePattern::compiled(text("a(")).isEmpty());
    QVERIFY(LanguagePattern::compiled(text("[")).isEmpty());
}

void LanguagePatternTest::groupsMayNestUpToTheLimit()
{
    const int deepest = LanguagePattern::kDeepestNesting;
    QVERIFY(LanguagePattern::isReasonable(nested(deepest - 1)));
    QVERIFY(!LanguagePattern::isReasonable(nested(deepest)));
    // Many groups side by side are no nest.
    QVERIFY(LanguagePattern::isReasonable(nested(1).repeated(deepest * 2)));
    QVERIFY(LanguagePattern::compiled(nested(1000000)).isEmpty());
}

void LanguagePatternTest::countedRepetitionsAreMultiplied_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("reasonable");

    QTest::newRow("a date") << text("\\b\\d{4}-\\d{2}-\\d{2}\\b") << true;
    QTest::newRow("a thousand") << text("a{1,1000}") << true;
    QTest::newRow("nested") << text("((a{100}){100}){100}") << false;
    QTest::newRow("one after the other") << text("a{1000}").repeated(10) << true;
    QTest::newRow("a large number") << text("(ab){99999999999999999999}") << false;
    QTest::newRow("an escaped brace") << text("a\\{100000}") << true;
    QTest::newRow("without an end") << text("a{1000") << true;
}

void LanguagePatternTest::countedRepetitionsAreMultiplied()
{
    QFETCH(QString, pattern);
    QFETCH(bool, reasonable);
    QCOMPARE(LanguagePattern::isReasonable(pattern), reasonable);
    LanguagePattern::compiled(pattern);
}

void LanguagePatternTest::aPatternUpToTheLimitIsReasonable()
{
    const int most = LanguagePattern::kMostElements;
    QVERIFY(LanguagePattern::isReasonable(QString(most, QLatin1Char('a'))));
    QVERIFY(!LanguagePattern::isReasonable(QString(most + 1, QLatin1Char('a'))));
}

void LanguagePatternTest::anyPatternIsSurvived()
{
    static const char signs[] = "ab()[]{}|*+?.\\^$,09-";
    std::mt19937 random(7);
    int applied = 0;
    for (int i = 0; i < 5000; ++i) {
        QString pattern;
        for (int length = static_cast<int>(random() % 40); length > 0; --length)
            pattern += QLatin1Char(signs[random() % (sizeof signs - 1)]);
        const QRegExp expression = LanguagePattern::compiled(pattern);
        if (expression.isEmpty())
            continue;
        ++applied;
        expression.indexIn(text("ab(ab)ba"));
    }
    QVERIFY(applied > 100);
}

QTEST_GUILESS_MAIN(LanguagePatternTest)
#include "LanguagePatternTest.moc"
