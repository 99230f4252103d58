#include "tests/doc/Page.h"

#include "engine/LineMatcher.h"
#include "engine/PatternLimits.h"

#include <QLocale>
#include <QtTest>

namespace {

constexpr int kTabWidth = 4;

Page regExpPage()
{
    QString error;
    return Page::read(QStringLiteral("sarvik_regexp.html"), &error);
}

QVector<Page> rowsOf(const char *tableClass)
{
    QVector<Page> rows;
    for (const Page &table : regExpPage().all("table")) {
        if (!table.hasClass(tableClass))
            continue;
        for (const Page &row : table.all("tr")) {
            if (!row.all("td").isEmpty())
                rows += row;
        }
    }
    return rows;
}

SearchCondition conditionOf(const QString &keyword, const Page &row)
{
    SearchCondition condition;
    condition.keyword1 = keyword;
    condition.flg = SearchCondition::RegExpFlag;
    if (!row.hasClass("sensitive"))
        condition.flg |= SearchCondition::IgnoreCaseFlag;
    if (row.hasClass("word"))
        condition.flg |= SearchCondition::WordFlag;
    return condition;
}

/// The line of an example: the text before the marked part, that part, the rest.
struct Example {
    QString before;
    QString found;
    QString after;
    bool isFound = false;

    QString line() const { return before + found + after; }
};

Example exampleOf(const Page &cell)
{
    Example example;
    const Page shown = cell.all("samp").value(0);
    for (const Page &part : shown.children()) {
        if (part.name() == QLatin1String("mark")) {
            example.found = part.text();
            example.isFound = true;
        } else if (example.isFound) {
            example.after += part.text();
        } else {
            example.before += part.text();
        }
    }
    return example;
}

/// "line number:" and the column of a hit string, without blanks.
QString placeOf(const QString &hit)
{
    return hit.section(QLatin1Char(':'), 0, 1).remove(QLatin1Char(' '));
}

/// As a list of hits has it: full-width characters count two.
int displayColumn(const QString &before)
{
    int column = 0;
    for (const QChar c : before) {
        if (c == QLatin1Char('\t'))
            column += kTabWidth - column % kTabWidth;
        else
            column += c.unicode() < 128 ? 1 : 2;
    }
    return column + 1;
}

} // namespace

class RegExpPageTest : public QObject {
    Q_OBJECT

private slots:
    void everyExampleFindsWhatItMarks_data() { addRows("examples", 60); }
    void everyExampleFindsWhatItMarks();
    void everyRefusedKeywordIsNoPattern_data() { addRows("refused", 12); }
    void everyRefusedKeywordIsNoPattern();
    void theLimitsAreThoseInForce();

private:
    static void addRows(const char *tableClass, int least);
};

void RegExpPageTest::addRows(const char *tableClass, int least)
{
    QTest::addColumn<int>("index");
    const QVector<Page> rows = rowsOf(tableClass);
    if (rows.size() < least)
        qFatal("only %d rows are %s", rows.size(), tableClass);
    for (int i = 0; i < rows.size(); ++i) {
        const QString keyword = rows.at(i).all("td").constFirst().text();
        QTest::newRow(qPrintable(QStringLiteral("%1: %2").arg(i).arg(keyword))) << i;
    }
}

void RegExpPageTest::everyExampleFindsWhatItMarks()
{
    QFETCH(int, index);
    const Page row = rowsOf("examples").at(index);
    const QVector<Page> cells = row.all("td");
    QCOMPARE(cells.size(), 3);
    const SearchCondition condition = conditionOf(cells.at(0).text(), row);
    const Example example = exampleOf(cells.at(1));
    QVERIFY(!example.line().isEmpty());

    QStringList hits = LineMatcher(condition, kTabWidth).matchEveryLine(example.line());
    QCOMPARE(hits.size(), example.isFound ? 1 : 0);
    if (!example.isFound)
        return;
    QCOMPARE(placeOf(hits.constFirst()), QStringLiteral("1:%1").arg(displayColumn(example.before)));
    // How far a match reaches is not in a hit.
    const QRegExp pattern = PatternLimits::compiled(
        LineMatcher::effectiveKeyword1(condition),
        row.hasClass("sensitive") ? Qt::CaseSensitive : Qt::CaseInsensitive);
    QCOMPARE(pattern.indexIn(example.line()), example.before.size());
    QCOMPARE(pattern.cap(0), example.found);
}

void RegExpPageTest::everyRefusedKeywordIsNoPattern()
{
    QFETCH(int, index);
    const QString keyword = rowsOf("refused").at(index).all("td").constFirst().text();
    QVERIFY(!PatternLimits::compiled(keyword, Qt::CaseInsensitive).isValid());
}

void RegExpPageTest::theLimitsAreThoseInForce()
{
    QString limits;
    for (const Page &section : regExpPage().all("section")) {
        if (section.attribute("id") == QLatin1String("limits"))
            limits = section.text();
    }
    const QLocale grouped(QLocale::English);
    for (const int limit : {PatternLimits::kDeepestNesting, PatternLimits::kMostElements,
                            PatternLimits::kMostConnections})
        QVERIFY2(limits.contains(grouped.toString(limit)), qPrintable(QString::number(limit)));

    const auto nested = [](int depth) {
        QString pattern(depth, QLatin1Char('('));
        pattern += QLatin1Char('a');
        return pattern.leftJustified(2 * depth + 1, QLatin1Char(')'));
    };
    QVERIFY(PatternLimits::isReasonable(nested(PatternLimits::kDeepestNesting - 1)));
    QVERIFY(!PatternLimits::isReasonable(nested(PatternLimits::kDeepestNesting)));
}

QTEST_GUILESS_MAIN(RegExpPageTest)
#include "RegExpPageTest.moc"
