#include "engine/CandidateFinder.h"

#include "tests/support/TestLength.h"

#include <QRandomGenerator>
#include <QRegExp>
#include <QTest>

#include <iterator>

class CandidateFinderTest : public QObject {
    Q_OBJECT

private slots:
    void aKeywordIsUsable();
    void withoutALiteralEveryLineMustBeVisited();
    void anInvalidPatternIsNowhere();
    void occurrencesAreFoundInOrder();
    void charactersThatAreTheSameWithoutCaseAreFound_data();
    void charactersThatAreTheSameWithoutCaseAreFound();
    void theNearestAlternativeIsFound();
    void anAlternativeAcrossTwoPiecesIsFound();
    void aKeywordLongerThanTheTextIsNotFound();
    void plainKeywordsAreFoundWhereQStringFindsThem_data();
    void plainKeywordsAreFoundWhereQStringFindsThem();
    void noLineThatAPatternMatchesIsPassedOver_data();
    void noLineThatAPatternMatchesIsPassedOver();
    void onlyALongListIsTriedFromSomewhere();
    void matchesOfALongListBeginWhereItsTextsStand_data();
    void matchesOfALongListBeginWhereItsTextsStand();
};

namespace {

CandidateFinder plain(const QString &keyword, Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    return CandidateFinder(keyword, false, sensitivity);
}

CandidateFinder pattern(const char *keyword, Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    return CandidateFinder(QString::fromUtf8(keyword), true, sensitivity);
}

void addTableRows()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<Qt::CaseSensitivity>("sensitivity");
    for (int index = 0; const auto *const table = SearchKernels::usable(index); ++index) {
        QTest::addRow("%s, case counts", table->name) << index << Qt::CaseSensitive;
        QTest::addRow("%s, case ignored", table->name) << index << Qt::CaseInsensitive;
    }
}

QString randomText(QRandomGenerator *random, int size)
{
    static const QVector<QString> characters = {
        QStringLiteral("a"),          QStringLiteral("b"),          QStringLiteral("k"),
        QStringLiteral("K"),          QStringLiteral("\u212A"),     QStringLiteral("s"),
        QStringLiteral("S"),          QStringLiteral("\u017F"),     QStringLiteral("あ"),
        QStringLiteral("漢"),         QStringLiteral("ω"),          QStringLiteral("Ω"),
        QStringLiteral("\u2126"),     QStringLiteral("θ"),          QStringLiteral("\u03D1"),
        QStringLiteral("\u03F4"),     QStringLiteral("\u0398"),     QStringLiteral("\u0130"),
        QStringLiteral("i"),          QStringLiteral("\u0131"),     QStringLiteral("ß"),
        QStringLiteral("ẞ"),          QStringLiteral("\U00010400"), QStringLiteral("\U00010428"),
        QStringLiteral("\U0001F600"), QStringLiteral("σ"),          QStringLiteral("ς"),
        QStringLiteral("Σ"),          QStringLiteral("\n")};
    const int choice = random->bounded(2) == 0 ? characters.size() : 8;
    QString result;
    for (int i = 0; i < size; ++i)
        result += characters.at(random->bounded(choice));
    return result;
}

} // namespace

void CandidateFinderTest::aKeywordIsUsable()
{
    QVERIFY(plain(QStringLiteral("foo")).usable());
    QVERIFY(plain(QStringLiteral("k"), Qt::CaseInsensitive).usable());
    QVERIFY(pattern("^foo.*").usable());
}

void CandidateFinderTest::withoutALiteralEveryLineMustBeVisited()
{
    QVERIFY(!plain(QString()).usable());
    QVERIFY(!pattern("").usable());
    QVERIFY(!pattern(".*").usable());
    QVERIFY(!pattern("foo|\\d").usable());
}

void CandidateFinderTest::anInvalidPatternIsNowhere()
{
    const CandidateFinder finder = pattern("foo(");
    QVERIFY(finder.usable());
    QCOMPARE(finder.next(QStringLiteral("foo("), 0), -1);
}

void CandidateFinderTest::occurrencesAreFoundInOrder()
{
    const CandidateFinder finder = plain(QStringLiteral("ab"));
    const QString text = QStringLiteral("xab\nyy\nabab");
    QCOMPARE(finder.next(text, 0), 1);
    QCOMPARE(finder.next(text, 1), 1);
    QCOMPARE(finder.next(text, 2), 7);
    QCOMPARE(finder.next(text, 8), 9);
    QCOMPARE(finder.next(text, 10), -1);
    QCOMPARE(finder.next(text, text.size()), -1);
    QCOMPARE(finder.next(QString(), 0), -1);
}

void CandidateFinderTest::charactersThatAreTheSameWithoutCaseAreFound_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QString>("text");
    QTest::newRow("k, Kelvin") << QStringLiteral("desk") << QStringLiteral("DES\u212A");
    QTest::newRow("Kelvin, k") << QStringLiteral("\u212A") << QStringLiteral("k");
    QTest::newRow("s, long s") << QStringLiteral("s") << QStringLiteral("\u017F");
    QTest::newRow("theta, four forms") << QStringLiteral("θ") << QStringLiteral("\u03F4");
    QTest::newRow("Cyrillic te, four forms") << QStringLiteral("т") << QStringLiteral("\u1C84");
    QTest::newRow("iota, four forms") << QStringLiteral("ι") << QStringLiteral("\u1FBE");
    QTest::newRow("full width") << QStringLiteral("ａ") << QStringLiteral("Ａ");
    QTest::newRow("Deseret") << QStringLiteral("\U00010400") << QStringLiteral("\U00010428");
    QTest::newRow("Adlam") << QStringLiteral("\U0001E922") << QStringLiteral("\U0001E900");
}

void CandidateFinderTest::charactersThatAreTheSameWithoutCaseAreFound()
{
    QFETCH(QString, keyword);
    QFETCH(QString, text);
    const QString padded = QStringLiteral("..\n") + text + QStringLiteral("..");
    QCOMPARE(plain(keyword, Qt::CaseInsensitive).next(padded, 0), 3);
    QCOMPARE(plain(keyword, Qt::CaseSensitive).next(padded, 0), -1);
}

void CandidateFinderTest::theNearestAlternativeIsFound()
{
    const CandidateFinder finder = pattern("(never|alpha|漢字)+");
    const QString text = QStringLiteral("x 漢字 y alpha z 漢字");
    QCOMPARE(finder.next(text, 0), 2);
    QCOMPARE(finder.next(text, 3), 7);
    QCOMPARE(finder.next(text, 8), 15);
    QCOMPARE(finder.next(text, 16), -1);
}

void CandidateFinderTest::anAlternativeAcrossTwoPiecesIsFound()
{
    const CandidateFinder finder = pattern("other|needle");
    for (int before = 4088; before < 4100; ++before) {
        const QString text = QString(before, QLatin1Char('.')) + QStringLiteral("needle")
            + QString(9000, QLatin1Char('.')) + QStringLiteral("other");
        QCOMPARE(finder.next(text, 0), before);
        QCOMPARE(finder.next(text, before + 1), before + 9006);
    }
}

void CandidateFinderTest::aKeywordLongerThanTheTextIsNotFound()
{
    QCOMPARE(plain(QStringLiteral("abcd")).next(QStringLiteral("abc"), 0), -1);
    QCOMPARE(pattern("abcd|c").next(QStringLiteral("abc"), 0), 2);
}

void CandidateFinderTest::plainKeywordsAreFoundWhereQStringFindsThem_data()
{
    addTableRows();
}

void CandidateFinderTest::plainKeywordsAreFoundWhereQStringFindsThem()
{
    QFETCH(int, index);
    QFETCH(Qt::CaseSensitivity, sensitivity);
    QRandomGenerator random(11);
    constexpr int Rounds = 30000;
    int found = 0;
    for (int round = 0; round < Rounds; ++round) {
        const QString text = randomText(&random, random.bounded(120));
        const QString keyword = randomText(&random, 1 + random.bounded(4));
        const int from = random.bounded(text.size() + 1);
        const CandidateFinder finder(keyword, false, sensitivity, *SearchKernels::usable(index));
        const int expected = text.indexOf(keyword, from, sensitivity);
        if (finder.next(text, from) != expected)
            QFAIL(qPrintable(
                QStringLiteral("<%1> from %2 in <%3>").arg(keyword).arg(from).arg(text)));
        found += expected >= 0 ? 1 : 0;
    }
    QVERIFY(found > Rounds / 20);
}

void CandidateFinderTest::noLineThatAPatternMatchesIsPassedOver_data()
{
    addTableRows();
}

void CandidateFinderTest::noLineThatAPatternMatchesIsPassedOver()
{
    QFETCH(int, index);
    QFETCH(Qt::CaseSensitivity, sensitivity);
    QRandomGenerator random(12);
    constexpr int Rounds = 8000;
    int matching = 0;
    for (int round = 0; round < Rounds; ++round) {
        static const char *const frames[] = {"%1",     "^%1",       "(%1|%2)",
                                             "%1.*%2", "%1[ab]?%2", "%2+%1"};
        const QString keyword =
            QString(QLatin1String(frames[random.bounded(6)]))
                .arg(randomText(&random, 1 + random.bounded(3)), randomText(&random, 1));
        const CandidateFinder finder(keyword, true, sensitivity, *SearchKernels::usable(index));
        if (!finder.usable())
            continue;
        const QString text = randomText(&random, random.bounded(100));
        const QRegExp expression(keyword, sensitivity);
        int start = 0;
        for (const QString &line : text.split(QLatin1Char('\n'))) {
            if (expression.indexIn(line) >= 0) {
                const qint64 candidate = finder.next(text, start);
                QVERIFY2(candidate >= start && candidate <= start + line.size(),
                         qPrintable(QStringLiteral("<%1> in <%2>").arg(keyword, text)));
                ++matching;
            }
            start += line.size() + 1;
        }
    }
    QVERIFY(matching > Rounds / 20);
}

void CandidateFinderTest::onlyALongListIsTriedFromSomewhere()
{
    const QString few = QStringLiteral("aa|bb|cc|dd|ee|ff|gg|hh|ii|jj|kk|ll|mm|nn|oo|pp");
    const auto finder = [](const QString &list) {
        return CandidateFinder(list, true, Qt::CaseSensitive);
    };
    QVERIFY(!finder(few).isList());
    const CandidateFinder list = finder(few + QStringLiteral("|漢"));
    QVERIFY(list.isList());
    QCOMPARE(list.nextStart(QStringLiteral("x漢 aa"), 0), qint64(1));
    QCOMPARE(list.nextStart(QStringLiteral("x漢 aa"), 2), qint64(3));
    QCOMPARE(list.nextStart(QStringLiteral("x漢 aa"), 4), qint64(-1));
    QCOMPARE(list.nextStart(QStringLiteral("x a"), 0), qint64(-1));
    QCOMPARE(list.nextStart(QStringLiteral(""), 0), qint64(-1));
    QVERIFY(!list.mayMatchAnywhere(QStringLiteral("x漢 aa\u212A")));
    const CandidateFinder caseless(few + QStringLiteral("|kelvin"), true, Qt::CaseInsensitive);
    QVERIFY(caseless.mayMatchAnywhere(QStringLiteral("x\u212Aelvin")));
    QVERIFY(caseless.mayMatchAnywhere(QStringLiteral("x\u0130")));
    QVERIFY(!caseless.mayMatchAnywhere(QStringLiteral("KELVIN kelvin")));
    QCOMPARE(caseless.nextStart(QStringLiteral("x KELVIN"), 0), qint64(2));
    QCOMPARE(list.next(QStringLiteral("aa b\nx漢\n"), 0), qint64(0));
    QCOMPARE(list.next(QStringLiteral("aa b\nx漢\n"), 5), qint64(6));
    QCOMPARE(list.next(QStringLiteral("aa b\nx漢\n"), 8), qint64(-1));
}

void CandidateFinderTest::matchesOfALongListBeginWhereItsTextsStand_data()
{
    QTest::addColumn<Qt::CaseSensitivity>("sensitivity");
    QTest::newRow("case counts") << Qt::CaseSensitive;
    QTest::newRow("case ignored") << Qt::CaseInsensitive;
}

void CandidateFinderTest::matchesOfALongListBeginWhereItsTextsStand()
{
    QFETCH(Qt::CaseSensitivity, sensitivity);
    static const char *const forms[] = {"%1", "\\b(%1)", "(%1)\\b", "^(%1)", "a(%1)", "(%1)(?!a)"};
    QRandomGenerator random(11);
    int matches = 0;
    int later = 0;
    for (int round = 0; round < TestLength::rounds(400, 20000); ++round) {
        const auto piece = [&random, round](int size) {
            if (round % 2 == 0)
                return randomText(&random, size);
            QString text;
            while (text.size() < size) // nothing that is the same without case only
                text += QStringLiteral("abcdABCD 漢字")[random.bounded(11)];
            return text;
        };
        QStringList words;
        while (words.size() < 40)
            words.append(piece(2 + random.bounded(5)));
        const QString form = QLatin1String(forms[random.bounded(int(std::size(forms)))]);
        const QString keyword = form.arg(words.join(QLatin1Char('|')));
        const CandidateFinder finder(keyword, true, sensitivity);
        const QRegExp expression(keyword, sensitivity);
        if (!finder.isList())
            continue;
        for (int i = 0; i < 20; ++i) {
            const QString line = piece(random.bounded(20)) + words.at(random.bounded(words.size()))
                + piece(random.bounded(20));
            const int expected = expression.indexIn(line);
            if (expected < 0 || finder.mayMatchAnywhere(line))
                continue;
            QCOMPARE(finder.nextStart(line, expected), qint64(expected));
            ++matches;
            later += expected > 0 ? 1 : 0;
        }
    }
    QVERIFY2(matches > 500 && later > 500,
             qPrintable(QStringLiteral("%1, %2").arg(matches).arg(later)));
}

QTEST_GUILESS_MAIN(CandidateFinderTest)
#include "CandidateFinderTest.moc"
