#include "engine/PatternLimits.h"

#include <QTest>

#include <random>

class PatternLimitsTest : public QObject {
    Q_OBJECT

private slots:
    void aPatternIsCompiledAsItStands();
    void anInvalidPatternIsInvalid();
    void anUnreasonablePatternIsInvalidAndNeverMatches();
    void ordinaryPatternsAreReasonable_data();
    void ordinaryPatternsAreReasonable();
    void hugePatternsAreNotReasonable_data();
    void hugePatternsAreNotReasonable();
    void groupsMayNestUpToTheLimit();
    void aPatternUpToTheLimitIsReasonable();
    void whatMayFollowOneAnotherIsLimited();
    void signsInAClassAreNoSyntax();
    void anyPatternIsSurvived();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString nested(int depth, const char *open = "(", const char *close = ")")
{
    return text(open).repeated(depth) + QLatin1Char('a') + text(close).repeated(depth);
}

QString words(int count)
{
    QStringList words;
    for (int i = 0; i < count; ++i)
        words.append(QStringLiteral("word%1").arg(i));
    return words.join(QLatin1Char('|'));
}

QString kanji(int count)
{
    QString all;
    for (int i = 0; i < count; ++i)
        all += QChar(0x4E00 + i);
    return all;
}

} // namespace

void PatternLimitsTest::aPatternIsCompiledAsItStands()
{
    const QRegExp pattern = PatternLimits::compiled(text("a(b|c)+"), Qt::CaseInsensitive);
    QCOMPARE(pattern, QRegExp(text("a(b|c)+"), Qt::CaseInsensitive));
    QCOMPARE(pattern.indexIn(text("xxABcabcb")), 2);
    QCOMPARE(PatternLimits::compiled(text("a"), Qt::CaseSensitive).indexIn(text("A")), -1);
}

void PatternLimitsTest::anInvalidPatternIsInvalid()
{
    QVERIFY(!PatternLimits::compiled(text("a("), Qt::CaseSensitive).isValid());
    QVERIFY(PatternLimits::isReasonable(text("a(")));
}

void PatternLimitsTest::anUnreasonablePatternIsInvalidAndNeverMatches()
{
    const QRegExp pattern = PatternLimits::compiled(nested(12000), Qt::CaseSensitive);
    QVERIFY(!pattern.isValid());
    QVERIFY(!pattern.isEmpty());
    QCOMPARE(pattern.indexIn(text("a(")), -1);
    QCOMPARE(pattern.indexIn(QString()), -1);
}

void PatternLimitsTest::ordinaryPatternsAreReasonable_data()
{
    QTest::addColumn<QString>("pattern");
    const auto row = [](const char *name, const QString &pattern) {
        QTest::newRow(name) << pattern;
    };

    row("none", QString());
    row("a date", text("\\b\\d{4}-\\d{2}-\\d{2}\\b"));
    row("an address", text("^[A-Za-z0-9._%+-]+@[A-Za-z0-9.-]+\\.[A-Za-z]{2,}$"));
    row("a call", text("(\\w+)\\s*\\(([^()]*)\\)"));
    row("a word twice", text("\\b(\\w+)\\s+\\1\\b"));
    row("lookahead", text("foo(?=bar)(?!baz)"));
    row("Japanese", text("[ぁ-ん]+|[ァ-ヶー]+|検索(する|した)?"));
    row("500 words", words(500));
    row("4,000 words", words(4000));
    row("500 words, whole", text("\\b(") + words(500) + text(")\\b"));
    row("500 words, any number", text("(") + words(500) + text(")+"));
    row("500 words before 500 words",
        text("(") + words(500) + text(")\\s*(") + words(500) + text(")"));
    row("50 groups inside one another", nested(50));
    row("50 repeated groups inside one another", nested(50, "(?:", "b?)*"));
    row("200 groups side by side", nested(1).repeated(200));
    row("counts", text("a{1,100}(bc){1,100}[de]{1,100}"));
    row("a count of counts", text("(\\w{1,100}\\s){1,100}"));
    row("a thousand", text("a{1,1000}"));
    row("counts one after the other", text("a{1000}").repeated(10));
    row("a class with a large count", text("[A-Za-z0-9+/=_.,:; -]{1,1000}"));
    row("a long class", text("[") + kanji(3000) + text("]+"));
    row("a long class with a count", text("[^") + kanji(3000) + text("]{1,20}"));
    row("a long literal", QString(10000, QLatin1Char('x')));
    row("a long literal of escapes", text("\\(").repeated(10000));
    row("500 optional parts", text("a?").repeated(500));
    row("200 gaps", text("a.*").repeated(200));
    row("an escaped brace", text("a\\{100000\\}"));
    row("braces in a class", text("[{]9999,9999[}]"));
}

void PatternLimitsTest::ordinaryPatternsAreReasonable()
{
    QFETCH(QString, pattern);
    QVERIFY(PatternLimits::isReasonable(pattern));
    QVERIFY(QRegExp(pattern).isValid());
    QVERIFY(PatternLimits::compiled(pattern, Qt::CaseSensitive).isValid());
}

void PatternLimitsTest::hugePatternsAreNotReasonable_data()
{
    QTest::addColumn<QString>("pattern");
    const auto row = [](const char *name, const QString &pattern) {
        QTest::newRow(name) << pattern;
    };

    row("deep groups", nested(12000));
    row("a million deep", nested(1000000));
    row("deep groups without an end", text("(").repeated(12000));
    row("counts of counts", text("(((a{999}){999}){999})"));
    row("smaller counts of counts", text("((a{100}){100}){100}"));
    row("counts of one part", text("a{900}{900}"));
    row("endless counts", text("((a{900,}){900,}){900,}"));
    row("a count of a lookahead", text("(?=(a{900}){900})"));
    row("a large number", text("(ab){99999999999999999999}"));
    row("many optional parts", text("a?").repeated(5000));
    row("a count of optional parts", text("(a?b?c?){999}"));
    row("many gaps", text(".*").repeated(5000));
    row("optional parts around positions", text("a?\\b").repeated(5000));
    row("a long alternation again and again",
        text("(?:") + text("a|").repeated(3000) + text("b)+"));
    row("a long class with a large count", text("[") + kanji(3000) + text("]{1,1000}"));
}

void PatternLimitsTest::hugePatternsAreNotReasonable()
{
    QFETCH(QString, pattern);
    QVERIFY(!PatternLimits::isReasonable(pattern));
    QVERIFY(!PatternLimits::compiled(pattern, Qt::CaseSensitive).isValid());
}

void PatternLimitsTest::groupsMayNestUpToTheLimit()
{
    const int deepest = PatternLimits::kDeepestNesting;
    QVERIFY(PatternLimits::isReasonable(nested(deepest - 1)));
    QVERIFY(!PatternLimits::isReasonable(nested(deepest)));
}

void PatternLimitsTest::aPatternUpToTheLimitIsReasonable()
{
    // Each character is an element, and so is each pair of neighbours connected.
    const int most = PatternLimits::kMostElements;
    QVERIFY(PatternLimits::isReasonable(QString(most, QLatin1Char('a'))));
    QVERIFY(!PatternLimits::isReasonable(QString(most + 1, QLatin1Char('a'))));
}

void PatternLimitsTest::whatMayFollowOneAnotherIsLimited()
{
    // Any of these may follow any other.
    const auto loop = [](int alternatives) -> QString {
        return text("(a") + text("|a").repeated(alternatives - 1) + text(")+");
    };
    QCOMPARE(PatternLimits::kMostConnections, 500000);
    QVERIFY(PatternLimits::isReasonable(loop(707)));
    QVERIFY(!PatternLimits::isReasonable(loop(708)));
}

void PatternLimitsTest::signsInAClassAreNoSyntax()
{
    QVERIFY(PatternLimits::isReasonable(text("[(]").repeated(500)));
    QVERIFY(PatternLimits::isReasonable(text("[](]").repeated(500)));
    QVERIFY(PatternLimits::isReasonable(text("[^](]").repeated(500)));
    QVERIFY(PatternLimits::isReasonable(text("[\\](]").repeated(500)));
    // The class ends where it does for the expression.
    QVERIFY(!PatternLimits::isReasonable(text("[a](").repeated(500)));
}

void PatternLimitsTest::anyPatternIsSurvived()
{
    static const char signs[] = "ab()[]{}|*+?.\\^$,09-";
    std::mt19937 random(7);
    int valid = 0;
    for (int i = 0; i < 5000; ++i) {
        QString pattern;
        for (int length = static_cast<int>(random() % 40); length > 0; --length)
            pattern += QLatin1Char(signs[random() % (sizeof signs - 1)]);
        const QRegExp expression = PatternLimits::compiled(pattern, Qt::CaseSensitive);
        if (!expression.isValid())
            continue;
        ++valid;
        expression.indexIn(text("ab(ab)ba"));
    }
    QVERIFY(valid > 100);
}

QTEST_GUILESS_MAIN(PatternLimitsTest)
#include "PatternLimitsTest.moc"
