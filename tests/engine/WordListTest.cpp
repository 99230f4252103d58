#include "engine/CodeSet.h"
#include "engine/MatchTexts.h"
#include "engine/PatternLimits.h"
#include "engine/SearchPlan.h"
#include "tests/engine_support/SearchCaseGenerator.h"

#include <QTest>
#include <QTextCodec>

#include <algorithm>

/// Patterns of many words, as people paste them. That no line is missed and no place told
/// that is not the match's is compared with the plain path; that the words are looked for
/// at all, and not the pattern tried on each line, is seen by the plan.
class WordListTest : public QObject {
    Q_OBJECT

private slots:
    void theHitsAreThoseOfThePlainPath_data();
    void theHitsAreThoseOfThePlainPath();
    void linesWithoutAWordAreRuledOut_data();
    void linesWithoutAWordAreRuledOut();
    void anEmptyWordMatchesEverywhere();
    void aHostileListEndsSoon_data();
    void aHostileListEndsSoon();
};

namespace {

/// Different words of two to four syllables.
QStringList words(int count)
{
    static const char *const syllables[] = {"ka", "re", "sik", "to", "sun", "vor", "il", "kesk"};
    QStringList all;
    for (int i = 0; i < count; ++i) {
        QString word;
        for (int rest = i + 64; rest > 0; rest /= 8)
            word += QLatin1String(syllables[rest % 8]);
        all.append(word);
    }
    return all;
}

/// Different words of two or three characters that every Japanese code set has.
QStringList japaneseWords(int count)
{
    static const QString characters =
        QStringLiteral("漢字表示能力検索文書日本語東京大阪学校機械電気");
    const int size = characters.size();
    QStringList all;
    for (int i = 0; i < count; ++i) {
        QString word;
        for (int rest = i + size; rest > 0; rest /= size)
            word += characters.at(rest % size);
        all.append(word);
    }
    return all;
}

QString alternatives(const QStringList &list)
{
    return list.join(QLatin1Char('|'));
}

QString text(const QStringList &list)
{
    QString lines = QStringLiteral("no word of it\n");
    const int step = std::max(list.size() / 12, 1); // the plain path takes long for many
    for (int i = 0; i < list.size(); i += step) {
        lines += QStringLiteral("x ") + list.at(i) + QStringLiteral(" y\n");
        lines +=
            QStringLiteral("nothing, or no more than ") + list.at(i).left(1) + QLatin1Char('\n');
        lines += list.at(i).toUpper() + list.at(list.size() - 1 - i) + QStringLiteral("\r\n");
        lines += QStringLiteral("  ") + list.at(i).chopped(1) + QStringLiteral("\u017F\u212A\n");
    }
    return lines;
}

SearchCase search(const QString &pattern, int flags, const QString &text, int codeSet)
{
    SearchCase made;
    made.condition.keyword1 = pattern;
    made.condition.flg = SearchCondition::RegExpFlag | flags;
    made.codeSet = codeSet;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    made.content = CodeSet::codec(codeSet)->fromUnicode(text.constData(), text.size(), &state);
    return made;
}

bool mayMatch(const SearchPlan &plan, const QByteArray &bytes, int codeSet)
{
    return plan.prefilter().mayMatch(bytes.constData(), bytes.size(), codeSet);
}

} // namespace

void WordListTest::theHitsAreThoseOfThePlainPath_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("content");
    const auto add = [](const char *name, const QString &pattern, const QString &content) {
        QTest::newRow(name) << pattern << content;
    };
    const QString latin = text(words(1000));
    const QString all = alternatives(words(200));
    for (const int count : {16, 17, 61, 200, 1000}) {
        QTest::addRow("%d words", count) << alternatives(words(count)) << latin;
        QTest::addRow("%d Japanese words", count)
            << alternatives(japaneseWords(count)) << text(japaneseWords(1000));
    }
    const QStringList two = words(60) + japaneseWords(60);
    add("words of two scripts", alternatives(two), text(two));
    add("in a group between boundaries", QStringLiteral("\\b(") + all + QStringLiteral(")\\b"),
        latin);
    add("behind a common beginning", QStringLiteral("x (?:") + all + QLatin1Char(')'), latin);
    add("before a common end", QLatin1Char('(') + all + QStringLiteral(") y"), latin);
    add("anchored", QStringLiteral("^(") + all + QStringLiteral(")"), latin);
    add("anchored at the end", QStringLiteral("(") + all + QStringLiteral(")$"), latin);
    add("anchors of some", QStringLiteral("^x|y$|") + all, latin);
    add("not before something", QLatin1Char('(') + all + QStringLiteral(")(?! y)"), latin);
    add("only before something", QStringLiteral("(?=[a-s])(") + all + QLatin1Char(')'), latin);
    add("repeated", QLatin1Char('(') + all + QStringLiteral("){2}"), latin);
    add("perhaps", QLatin1Char('(') + all + QStringLiteral(")?y"), latin);
    add("and its plural", QLatin1Char('(') + all + QStringLiteral(")(s|es)?"), latin);
    add("classes in words",
        alternatives(words(61)).replace(QLatin1Char('a'), QLatin1String("[ae]")), latin);
    add("any character in words",
        alternatives(words(61)).replace(QLatin1String("re"), QLatin1String("r.")), latin);
    add("a word of one letter", all + QStringLiteral("|q"), latin);
    add("a word that is any", all + QStringLiteral("|\\w+x"), latin);
    QStringList begun = words(100);
    for (const QString &word : words(100))
        begun << word.left(3) << word + QStringLiteral("to");
    add("words that begin others", alternatives(begun), latin);
    begun.sort();
    add("words that begin others, these behind", alternatives(begun), latin);
    QStringList alike;
    for (const QString &word : words(300))
        alike.append(QStringLiteral("x kasunvorilre") + word);
    add("words that begin alike", alternatives(alike), text(alike));
    QStringList longOnes;
    for (const QString &word : words(40))
        longOnes.append(QString(70, QLatin1Char('k')) + word);
    add("words longer than are compared", alternatives(longOnes), text(longOnes));
}

void WordListTest::theHitsAreThoseOfThePlainPath()
{
    QFETCH(QString, pattern);
    QFETCH(QString, content);
    for (const int codeSet : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Iso2022Jp, CodeSet::Utf8,
                              CodeSet::Utf16Be, CodeSet::Utf16Le, CodeSet::Utf32Be}) {
        for (const int flags : {0, int(SearchCondition::IgnoreCaseFlag)}) {
            const SearchCase made = search(pattern, flags, content, codeSet);
            QCOMPARE(made.hits(), made.plainHits());
        }
    }
}

void WordListTest::linesWithoutAWordAreRuledOut_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("flags");
    const int ignoreCase = SearchCondition::IgnoreCaseFlag;
    for (const int count : {61, 200, 1000}) {
        const QString latin = alternatives(words(count));
        QTest::addRow("%d words", count) << latin << 0;
        QTest::addRow("%d words, case ignored", count) << latin << ignoreCase;
        QTest::addRow("%d words between boundaries", count)
            << QStringLiteral("\\b(") + latin + QStringLiteral(")\\b") << ignoreCase;
        QTest::addRow("%d words behind a beginning", count)
            << QStringLiteral("pre(") + latin + QLatin1Char(')') << 0;
        QTest::addRow("%d words with their plurals", count)
            << QLatin1Char('(') + latin + QStringLiteral(")(s|es)?") << 0;
        QTest::addRow("%d words before any others", count)
            << QLatin1Char('(') + latin + QStringLiteral(")\\s+\\w+") << 0;
        QTest::addRow("%d Japanese words", count) << alternatives(japaneseWords(count)) << 0;
    }
}

void WordListTest::linesWithoutAWordAreRuledOut()
{
    QFETCH(QString, pattern);
    QFETCH(int, flags);
    const QString none = QStringLiteral("a line without any: 漢と字、kar ret\n");
    for (const int codeSet : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Iso2022Jp, CodeSet::Utf8,
                              CodeSet::Utf16Be, CodeSet::Utf16Le}) {
        const SearchCase made = search(pattern, flags, none, codeSet);
        const SearchPlan plan(made.condition, EngineOptions());
        QVERIFY(!mayMatch(plan, made.content, codeSet));
        QVERIFY(plan.finder().usable());
        QCOMPARE(plan.finder().next(none, 0), qint64(-1));
    }
}

void WordListTest::anEmptyWordMatchesEverywhere()
{
    for (const char *const empty : {"|", "||ka|", "|ka|()"}) {
        const QString pattern = alternatives(words(61)) + QLatin1String(empty);
        const SearchCase made = search(pattern, 0, QStringLiteral("one\n\nthree\n"), CodeSet::Utf8);
        QCOMPARE(made.hits().size(), 2); // an empty line is no hit
        QCOMPARE(made.hits(), made.plainHits());
    }
}

void WordListTest::aHostileListEndsSoon_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isTried");
    const QString many = alternatives(words(4000));
    QTest::newRow("100,000 words") << alternatives(words(100000)) << false;
    QTest::newRow("200,000 words of nothing") << QString(200000, QLatin1Char('|')) << false;
    QTest::newRow("4,000 words") << many << true;
    QTest::newRow("1,000 groups in one another")
        << QString(1000, QLatin1Char('(')) + QStringLiteral("ka") + QString(1000, QLatin1Char(')'))
        << false;
    QString nested = QString(99, QLatin1Char('(')) + many;
    for (int i = 0; i < 99; ++i)
        nested += QStringLiteral("|karesun)");
    QTest::newRow("a list in a list, and so on") << nested << true;
    QTest::newRow("boundaries before it")
        << QStringLiteral("\\b").repeated(20000) + QLatin1Char('(') + many + QLatin1Char(')')
        << true;
    QTest::newRow("any characters behind it")
        << QLatin1Char('(') + many + QLatin1Char(')') + QStringLiteral("\\w").repeated(20000)
        << true;
    QTest::newRow("characters behind it")
        << QLatin1Char('(') + many + QLatin1Char(')') + QStringLiteral("ka").repeated(10000)
        << true;
    const QString few = QLatin1Char('(') + alternatives(words(17)) + QLatin1Char(')');
    QTest::newRow("lists behind lists") << few.repeated(300) << true;
}

/// What is known of a pattern is bounded, whatever the pattern.
void WordListTest::aHostileListEndsSoon()
{
    QFETCH(QString, pattern);
    QFETCH(bool, isTried);
    QCOMPARE(PatternLimits::isReasonable(pattern), isTried);
    const RequiredLiteral required(pattern, true, Qt::CaseSensitive);
    QCOMPARE(required.neverMatches(), !isTried);
    QVERIFY(required.alternatives().size() <= MatchTexts::kMaxListed);
    for (const QString &text : required.alternatives())
        QVERIFY(text.size() <= 128);
    const SearchCase made = search(pattern, 0, QStringLiteral("here is\nnothing\n"), CodeSet::Utf8);
    QCOMPARE(made.hits(), QStringList());
}

int main(int argc, char *argv[])
{
    // As the programs do before they use a codec.
    qputenv("UNICODEMAP_JP", "cp932");
    QCoreApplication application(argc, argv);
    WordListTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "WordListTest.moc"
