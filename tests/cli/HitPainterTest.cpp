#include "cli/HitPainter.h"

#include <QTest>

class HitPainterTest : public QObject {
    Q_OBJECT

private slots:
    void everyMatchIsPainted_data();
    void everyMatchIsPainted();
    void aLongLineIsPaintedSoon();
    void withoutColourTheTextStays();
};

namespace {

HitPainter painterOf(const QString &keyword, int flags)
{
    SearchCondition condition;
    condition.keyword1 = keyword;
    condition.flg = flags;
    return HitPainter(condition);
}

/// With "[" and "]" in the place of the colours.
QString painted(const HitPainter &painter, const QString &text)
{
    return QString::fromUtf8(painter.text(text))
        .replace(QStringLiteral("\x1b[1;31m"), QStringLiteral("["))
        .replace(QStringLiteral("\x1b[m"), QStringLiteral("]"));
}

} // namespace

void HitPainterTest::everyMatchIsPainted_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const int pattern = SearchCondition::RegExpFlag;
    const auto row = [](const char *name, const char *keyword, int flags, const char *text,
                        const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(keyword) << flags << QString::fromUtf8(text)
                            << QString::fromUtf8(expected);
    };
    row("text", "ab", 0, "abcab", "[ab]c[ab]");
    row("Japanese", "図書", 0, "図書館の図書", "[図書]館の[図書]");
    row("with the case ignored", "AB", SearchCondition::IgnoreCaseFlag, "xabAb", "x[ab][Ab]");
    row("a pattern", "b+", pattern, "abbcb", "a[bb]c[b]");
    row("empty matches", "b*", pattern, "abb", "a[bb]");
    row("a whole word", "a", SearchCondition::WordFlag, "a ab a", "[a] ab [a]");
    row("a boundary", "\\ba", pattern, "aa a", "[a]a [a]");
    row("nothing", "x", pattern, "abc", "abc");
}

void HitPainterTest::everyMatchIsPainted()
{
    QFETCH(QString, keyword);
    QFETCH(int, flags);
    QFETCH(QString, text);
    QTEST(painted(painterOf(keyword, flags), text), "expected");
    // The same far behind in a long line.
    QFETCH(QString, expected);
    const QString before = QStringLiteral("- ").repeated(5000);
    QCOMPARE(painted(painterOf(keyword, flags), before + text), before + expected);
}

/// The search itself has looked for one match only. For the next the pattern would try
/// each of the places with all that is behind it.
void HitPainterTest::aLongLineIsPaintedSoon()
{
    const HitPainter painter =
        painterOf(QStringLiteral("[a-z]+ ?[0-9]"), SearchCondition::RegExpFlag);
    const QString rest = QString(2000000, QLatin1Char('a'));
    QCOMPARE(painted(painter, QStringLiteral("id 1 ") + rest), QStringLiteral("[id 1] ") + rest);
}

void HitPainterTest::withoutColourTheTextStays()
{
    QCOMPARE(HitPainter().text(QStringLiteral("図書")), QByteArray("図書"));
}

QTEST_GUILESS_MAIN(HitPainterTest)
#include "HitPainterTest.moc"
