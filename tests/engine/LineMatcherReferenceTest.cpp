#include "engine/LineMatcher.h"
#include "tests/support/TestLength.h"

#include <QRandomGenerator>
#include <QTest>

#include <limits>

namespace {

/// The rule of what a hit is, written down as plainly as possible: no shortcut,
/// nothing shared with the matcher, every line looked at, patterns made anew
/// for every line.
class PlainMatcher {
public:
    PlainMatcher(const SearchCondition &condition, int tabWidth)
        : m_condition(condition), m_tabWidth(tabWidth)
    {
        if ((condition.flg & 0x11) == 0x11) {
            m_condition.keyword1.prepend(QStringLiteral("\\b"));
            m_condition.keyword1.append(QStringLiteral("\\b"));
        }
    }

    QStringList match(const QString &text) const;
    bool holdsKeyword1(const QString &line) const { return findKeyword1(line) >= 0; }

private:
    bool isSame(QChar a, QChar b) const
    {
        return a == b || ((m_condition.flg & 0x100) != 0 && a.toCaseFolded() == b.toCaseFolded());
    }
    bool standsAt(const QString &keyword, const QString &line, int position) const
    {
        if (position + keyword.size() > line.size())
            return false;
        for (int i = 0; i < keyword.size(); ++i) {
            if (!isSame(keyword.at(i), line.at(position + i)))
                return false;
        }
        return true;
    }
    int find(const QString &keyword, const QString &line) const;
    int findKeyword1(const QString &line) const;
    QString column(const QString &before) const;

    SearchCondition m_condition;
    int m_tabWidth;
};

int PlainMatcher::find(const QString &keyword, const QString &line) const
{
    if ((m_condition.flg & 0x1) != 0) {
        const bool ignoreCase = (m_condition.flg & 0x100) != 0;
        return QRegExp(keyword, ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive).indexIn(line);
    }
    for (int position = 0; position <= line.size(); ++position) {
        if (standsAt(keyword, line, position))
            return position;
    }
    return -1;
}

bool isWordAt(const QString &line, int position)
{
    if (position < 0 || position >= line.size())
        return false;
    const QChar unit = line.at(position);
    return unit.isLetterOrNumber() || unit.isMark() || unit == QLatin1Char('_');
}

QStringList piecesBetweenBoundaries(const QString &line)
{
    QStringList pieces;
    QString piece;
    for (int position = 0; position <= line.size(); ++position) {
        if (isWordAt(line, position - 1) != isWordAt(line, position)) {
            pieces.append(piece);
            piece.clear();
        }
        piece += line.mid(position, 1);
    }
    pieces.append(piece);
    return pieces;
}

int PlainMatcher::findKeyword1(const QString &line) const
{
    const int position = find(m_condition.keyword1, line);
    if (position < 0 || (m_condition.flg & 0x11) != 0x10)
        return position;
    for (const QString &piece : piecesBetweenBoundaries(line)) {
        if (piece.size() == m_condition.keyword1.size() && standsAt(m_condition.keyword1, piece, 0))
            return position;
    }
    return -1;
}

/// Lays the text out cell by cell, as a person would count.
QString PlainMatcher::column(const QString &before) const
{
    QString cells;
    for (const QChar unit : before) {
        cells += QLatin1Char('.');
        if (unit == QLatin1Char('\t')) {
            while (cells.size() % m_tabWidth != 0)
                cells += QLatin1Char('.');
        } else if (unit.unicode() >= 128) {
            cells += QLatin1Char('.');
        }
    }
    return QString::number(cells.size() + 1);
}

QStringList PlainMatcher::match(const QString &text) const
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    QStringList hits;
    int pending = -1;
    QString pendingText;
    int pendingPosition = -1;
    for (int number = 1; number <= lines.size(); ++number) {
        const QString line = lines.at(number - 1);
        const int position = findKeyword1(line);
        if (position >= 0) {
            pending = number;
            pendingText = line;
            pendingPosition = position;
        }
        bool confirmed = pending != -1;
        if (confirmed && !m_condition.keyword2.isEmpty())
            confirmed = find(m_condition.keyword2, line) >= 0
                && number - pending <= qint64(m_condition.plusline);
        if (position >= 0 && !m_condition.keyword3.isEmpty()
            && find(m_condition.keyword3, line) >= 0) {
            pendingText.clear();
            continue;
        }
        if (confirmed && !pendingText.isEmpty()) {
            hits.append(QLatin1String("  ") + QString::number(pending).rightJustified(5)
                        + QLatin1Char(':')
                        + column(pendingText.left(pendingPosition)).rightJustified(5)
                        + QLatin1Char(':') + pendingText);
            pending = -1;
            pendingText.clear();
        }
    }
    return hits;
}

/// Few letters, so that the keywords are found often: both cases, digits,
/// signs, tabs, full-width letters, kana, a character of two code units.
const QString &letters()
{
    static const QString text = QStringLiteral("aabbccdddAB_1 .-\t\rａＡあい𠮷é");
    return text;
}

QString randomText(QRandomGenerator &random, int maxLength)
{
    QString text;
    for (int length = random.bounded(maxLength + 1); length > 0; --length)
        text += letters().at(random.bounded(letters().size()));
    return text;
}

QString randomPattern(QRandomGenerator &random)
{
    static const char *const items[] = {"a",   "b", "A",   ".",     "[ab]", "[^a]", "\\w", "\\b",
                                        "^",   "$", "\\s", "(a|b)", "a*",   "b+",   "c?",  "a{2}",
                                        "\\d", "(", "a|b", "\\t",   "-",    "_",    "1",   "\\B"};
    QString pattern;
    for (int count = 1 + random.bounded(5) / 3; count > 0; --count) {
        if (random.bounded(8) == 0)
            pattern += randomText(random, 1);
        else
            pattern += QLatin1String(items[random.bounded(int(sizeof items / sizeof *items))]);
    }
    return pattern;
}

/// A keyword is typed, so it holds no half of a character of two code units;
/// ignoring case, what half of one finds is the toolkit's secret.
QString withWholeCharacters(const QString &text)
{
    const QString whole = QStringLiteral("𠮷");
    QString result;
    for (const QChar unit : text)
        result += unit.isSurrogate() ? whole : QString(unit);
    return result;
}

SearchCondition randomCondition(QRandomGenerator &random)
{
    SearchCondition condition;
    condition.flg = (random.bounded(2) ? 0x1 : 0) | (random.bounded(2) ? 0x10 : 0)
        | (random.bounded(2) ? 0x100 : 0) | (random.bounded(2) ? 0x1000 : 0);
    const auto keyword = [&] {
        if (random.bounded(2))
            return QString(letters().at(random.bounded(9)));
        return withWholeCharacters(condition.regExp() ? randomPattern(random)
                                                      : randomText(random, 2));
    };
    condition.keyword1 = keyword();
    if (random.bounded(3) != 0)
        condition.keyword2 = keyword();
    if (random.bounded(3) == 0)
        condition.keyword3 = keyword();
    const int distances[] = {0, 1, 2, 3, 4, 6, -1, std::numeric_limits<int>::max()};
    condition.plusline = distances[random.bounded(8)];
    return condition;
}

QString randomFile(QRandomGenerator &random)
{
    QStringList lines;
    for (int count = random.bounded(16); count >= 0; --count)
        lines.append(random.bounded(5) == 0 ? QString() : randomText(random, 5));
    return lines.join(QLatin1Char('\n'));
}

QByteArray description(const SearchCondition &condition, const QString &text)
{
    return QStringLiteral("flg %1, plusline %2, keywords \"%3\" \"%4\" \"%5\", text \"%6\"")
        .arg(condition.flg, 0, 16)
        .arg(condition.plusline)
        .arg(condition.keyword1, condition.keyword2, condition.keyword3, text)
        .toUtf8();
}

/// Visits what must be visited and nothing else.
QStringList matchNecessaryLines(LineMatcher &matcher, const PlainMatcher &plain,
                                const QString &text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    matcher.begin();
    for (int number = 1; number <= lines.size(); ++number) {
        const QString &line = lines.at(number - 1);
        if (plain.holdsKeyword1(line) || number <= matcher.lastLineOfInterest())
            matcher.visit(number, line);
    }
    return matcher.takeHits();
}

} // namespace

class LineMatcherReferenceTest : public QObject {
    Q_OBJECT

private slots:
    void generatedTextsGiveTheHitsOfThePlainRule();
    void linesThatCannotMatterMayBeLeftOut();
    void theGeneratorReachesTheCasesThatMatter();
};

void LineMatcherReferenceTest::generatedTextsGiveTheHitsOfThePlainRule()
{
    QRandomGenerator random(20240601);
    for (int i = 0; i < TestLength::rounds(20000, 400000); ++i) {
        const SearchCondition condition = randomCondition(random);
        const QString text = randomFile(random);
        const int tabWidth = 1 + random.bounded(8);
        const QStringList expected = PlainMatcher(condition, tabWidth).match(text);
        const QStringList hits = LineMatcher(condition, tabWidth).matchEveryLine(text);
        if (hits != expected)
            qWarning() << "expected" << expected << "but there are" << hits;
        QVERIFY2(hits == expected, description(condition, text).constData());
    }
}

void LineMatcherReferenceTest::linesThatCannotMatterMayBeLeftOut()
{
    QRandomGenerator random(20240602);
    for (int i = 0; i < TestLength::rounds(20000, 400000); ++i) {
        const SearchCondition condition = randomCondition(random);
        const QString text = randomFile(random);
        const PlainMatcher plain(condition, 4);
        LineMatcher matcher(condition, 4);
        QVERIFY2(matchNecessaryLines(matcher, plain, text) == plain.match(text),
                 description(condition, text).constData());
    }
}

void LineMatcherReferenceTest::theGeneratorReachesTheCasesThatMatter()
{
    QRandomGenerator random(20240601);
    int withHits = 0;
    int severalHits = 0;
    int excluded = 0;
    int confirmedLater = 0;
    const int cases = TestLength::rounds(20000, 400000);
    for (int i = 0; i < cases; ++i) {
        SearchCondition condition = randomCondition(random);
        const QString text = randomFile(random);
        const int tabWidth = 1 + random.bounded(8);
        const QStringList hits = PlainMatcher(condition, tabWidth).match(text);
        withHits += hits.isEmpty() ? 0 : 1;
        severalHits += hits.size() > 1 ? 1 : 0;
        const QString keyword3 = condition.keyword3;
        condition.keyword3.clear();
        excluded += PlainMatcher(condition, tabWidth).match(text) != hits ? 1 : 0;
        condition.keyword3 = keyword3;
        condition.plusline = std::min(condition.plusline, 0);
        confirmedLater += PlainMatcher(condition, tabWidth).match(text) != hits ? 1 : 0;
    }
    const QByteArray counts = QByteArray::number(withHits) + " " + QByteArray::number(severalHits)
        + " " + QByteArray::number(excluded) + " " + QByteArray::number(confirmedLater);
    QVERIFY2(withHits > cases / 10 && withHits < cases / 10 * 9, counts.constData());
    QVERIFY2(severalHits > 1000 && excluded > 500 && confirmedLater > 500, counts.constData());
}

QTEST_GUILESS_MAIN(LineMatcherReferenceTest)
#include "LineMatcherReferenceTest.moc"
