#include "view/LanguagePattern.h"

#include <QTest>

class LanguagePatternTest : public QObject {
    Q_OBJECT

private slots:
    void aPatternIsCompiledAsItStands();
    void anInvalidPatternIsNotApplied();
    void anUnreasonablePatternIsNotApplied();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
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

void LanguagePatternTest::anUnreasonablePatternIsNotApplied()
{
    const int groups = 1000000;
    QVERIFY(LanguagePattern::compiled(text("(").repeated(groups) + text(")").repeated(groups))
                .isEmpty());
    QVERIFY(LanguagePattern::compiled(text("(((a{999}){999}){999})")).isEmpty());
}

QTEST_GUILESS_MAIN(LanguagePatternTest)
#include "LanguagePatternTest.moc"
