#include "view/FindPattern.h"

#include <QtTest>

class FindPatternTest : public QObject {
    Q_OBJECT

private slots:
    void anEmptyKeywordIsAnEmptyCaseSensitivePattern();
    void thePatternIsMadeFromTheKeyword_data();
    void thePatternIsMadeFromTheKeyword();
    void caseCountsUnlessIgnored();
    void alternativesAreNotMarked();
    void aPatternBeyondTheLimitsMarksNothing();
};

namespace {

FindPattern::Options options(bool regexp, bool word, bool ignoreCase)
{
    FindPattern::Options options;
    options.regexp = regexp;
    options.word = word;
    options.ignoreCase = ignoreCase;
    return options;
}

} // namespace

void FindPatternTest::anEmptyKeywordIsAnEmptyCaseSensitivePattern()
{
    const QRegExp pattern = FindPattern::forKeyword(QString(), options(true, true, true));
    QCOMPARE(pattern.pattern(), QString());
    QCOMPARE(pattern.caseSensitivity(), Qt::CaseSensitive);
}

void FindPatternTest::thePatternIsMadeFromTheKeyword_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<bool>("regexp");
    QTest::addColumn<bool>("word");
    QTest::addColumn<QString>("pattern");
    const auto row = [](const char *name, const char *keyword, bool regexp, bool word,
                        const char *pattern) {
        QTest::newRow(name) << QString::fromLatin1(keyword) << regexp << word
                            << QString::fromLatin1(pattern);
    };
    row("plain", "a.b(c)", false, false, "a\\.b\\(c\\)");
    row("plain bar", "a|b", false, false, "a\\|b");
    row("plain word", "a+", false, true, "\\ba\\+\\b");
    row("plain keeps a typed backslash", "\\d", false, false, "\\d");
    row("pattern", "a.b(c)", true, false, "a.b(c)");
    row("pattern with a bar", "a|b|c", true, false, "a\\|b\\|c");
    row("pattern with an escaped bar", "a\\|b", true, false, "a\\\\|b");
    row("pattern as a word", "a.b", true, true, "\\ba.b\\b");
}

void FindPatternTest::thePatternIsMadeFromTheKeyword()
{
    QFETCH(QString, keyword);
    QFETCH(bool, regexp);
    QFETCH(bool, word);
    const QRegExp pattern = FindPattern::forKeyword(keyword, options(regexp, word, false));
    QTEST(pattern.pattern(), "pattern");
    QCOMPARE(pattern.patternSyntax(), QRegExp::RegExp);
}

void FindPatternTest::caseCountsUnlessIgnored()
{
    const QString keyword = QStringLiteral("foo");
    const QString text = QStringLiteral("a FOO");
    QCOMPARE(FindPattern::forKeyword(keyword, options(false, false, false)).indexIn(text), -1);
    QCOMPARE(FindPattern::forKeyword(keyword, options(false, false, true)).indexIn(text), 2);
}

void FindPatternTest::alternativesAreNotMarked()
{
    const QRegExp pattern =
        FindPattern::forKeyword(QStringLiteral("foo|bar"), options(true, false, false));
    QCOMPARE(pattern.indexIn(QStringLiteral("foo bar")), -1);
    QCOMPARE(pattern.indexIn(QStringLiteral("a foo|bar")), 2);
}

void FindPatternTest::aPatternBeyondTheLimitsMarksNothing()
{
    const QString deep = QString(12000, QLatin1Char('(')) + QString(12000, QLatin1Char(')'));
    const QString counts = QStringLiteral("(((a{999}){999}){999})");
    for (const QString &keyword : {deep, counts}) {
        QVERIFY(FindPattern::forKeyword(keyword, options(true, false, false)).isEmpty());
        QVERIFY(FindPattern::forKeyword(keyword, options(true, true, true)).isEmpty());
        // As text it is no pattern.
        const QRegExp plain = FindPattern::forKeyword(keyword, options(false, false, false));
        QCOMPARE(plain.indexIn(QLatin1Char('x') + keyword), 1);
    }
}

QTEST_GUILESS_MAIN(FindPatternTest)

#include "FindPatternTest.moc"
