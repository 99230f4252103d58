#include "engine/FileMask.h"
#include "tests/support/TestLength.h"

#include <QRandomGenerator>
#include <QTest>

#include <atomic>
#include <memory>
#include <thread>

class FileMaskTest : public QObject {
    Q_OBJECT

private slots:
    void eachBlankSeparatesTwoPatterns();
    void onlyTheBlankSeparatesPatterns();
    void emptyPartsAreKept();
    void emptyPartsMatchNoName_data();
    void emptyPartsMatchNoName();
    void aMaskThatWasNeverGivenPassesNothing();
    void aNamePassesWhenAnyPatternMatches();
    void aPatternMustMatchTheWholeName();
    void matchingIgnoresCase_data();
    void matchingIgnoresCase();
    void aCaretAnywhereNegates_data();
    void aCaretAnywhereNegates();
    void aCaretAlonePassesEveryName();
    void aNegatedStarPassesNothing();
    void starDotStarPassesNamesWithoutADot();
    void starDotStarStandsForAStarEverywhere_data();
    void starDotStarStandsForAStarEverywhere();
    void starDotStarIsReplacedInEveryPattern();
    void theCaretIsRemovedBeforeStarDotStarIsReplaced();
    void theQuestionMarkMatchesOneCodeUnit();
    void bracketsMatchOneCharacterOfTheSet();
    void anUnclosedBracketMatchesNoName();
    void otherMetaCharactersMatchThemselves_data();
    void otherMetaCharactersMatchThemselves();
    void aStarMatchesAnyTextAtAll();
    void everyMaskAnswersAsTheWildcardPatternDoes();
    void manyPatternsAnswerAsEachDoes();
    void everyUnitIsComparedAsByTheWildcardPattern();
    void copiesAnswerTheSameOnEveryThread();
};

void FileMaskTest::eachBlankSeparatesTwoPatterns()
{
    const FileMask mask(QStringLiteral("*.cpp *.h"));
    QCOMPARE(mask.patterns(), QStringList({QStringLiteral("*.cpp"), QStringLiteral("*.h")}));
    QVERIFY(!mask.isNegation());
    QVERIFY(mask.passes(QStringLiteral("main.cpp")));
    QVERIFY(mask.passes(QStringLiteral("main.h")));
    QVERIFY(!mask.passes(QStringLiteral("main.c")));
    QVERIFY(!mask.passes(QStringLiteral("a.cpp b.h.txt")));
}

void FileMaskTest::onlyTheBlankSeparatesPatterns()
{
    const QString text = QStringLiteral("*.a\t*.b\u3000*.c,*.d;*.e");
    QCOMPARE(FileMask(text).patterns(), QStringList{text});
}

void FileMaskTest::emptyPartsAreKept()
{
    const QString empty = QLatin1String("");
    const QStringList expected{empty, QStringLiteral("*.a"), empty, QStringLiteral("*.b"), empty};
    QCOMPARE(FileMask(QStringLiteral(" *.a  *.b ")).patterns(), expected);
    QCOMPARE(FileMask(empty).patterns(), QStringList{empty});
    QCOMPARE(FileMask(QStringLiteral(" ")).patterns(), QStringList({empty, empty}));
}

void FileMaskTest::emptyPartsMatchNoName_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty text") << QString();
    QTest::newRow("one blank") << QStringLiteral(" ");
    QTest::newRow("blanks") << QStringLiteral("   ");
    QTest::newRow("before a pattern") << QStringLiteral(" *.zip");
    QTest::newRow("after a pattern") << QStringLiteral("*.zip ");
    QTest::newRow("between patterns") << QStringLiteral("*.zip  *.gz");
}

void FileMaskTest::emptyPartsMatchNoName()
{
    QFETCH(QString, text);
    const FileMask mask(text);
    QVERIFY(!mask.passes(QStringLiteral("a.txt")));
    QVERIFY(!mask.passes(QStringLiteral("README")));
    QVERIFY(!mask.passes(QStringLiteral(" ")));
}

void FileMaskTest::aMaskThatWasNeverGivenPassesNothing()
{
    const FileMask mask;
    QVERIFY(mask.patterns().isEmpty());
    QVERIFY(!mask.passes(QStringLiteral("a.txt")));
    QVERIFY(!mask.passes(QString()));
}

void FileMaskTest::aNamePassesWhenAnyPatternMatches()
{
    const FileMask mask(QStringLiteral("a* *b* *c"));
    QVERIFY(mask.passes(QStringLiteral("axx")));
    QVERIFY(mask.passes(QStringLiteral("xbx")));
    QVERIFY(mask.passes(QStringLiteral("xxc")));
    QVERIFY(mask.passes(QStringLiteral("abc")));
    QVERIFY(!mask.passes(QStringLiteral("xax")));
}

void FileMaskTest::aPatternMustMatchTheWholeName()
{
    QVERIFY(!FileMask(QStringLiteral("*.c")).passes(QStringLiteral("main.cpp")));
    QVERIFY(!FileMask(QStringLiteral("make")).passes(QStringLiteral("makefile")));
    QVERIFY(!FileMask(QStringLiteral("file")).passes(QStringLiteral("makefile")));
    QVERIFY(!FileMask(QStringLiteral("m?in.c")).passes(QStringLiteral("amain.c")));
    QVERIFY(FileMask(QStringLiteral("makefile")).passes(QStringLiteral("makefile")));
}

void FileMaskTest::matchingIgnoresCase_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::newRow("suffix, capitals in the name") << "*.cpp"
                                                  << "MAIN.CPP";
    QTest::newRow("suffix, capitals in the mask") << "*.CPP"
                                                  << "main.cpp";
    QTest::newRow("whole name") << "readme"
                                << "README";
    QTest::newRow("set") << "[a-c].txt"
                         << "B.TXT";
    QTest::newRow("suffix of a Japanese name") << "*.TXT" << QStringLiteral("日本語.txt");
    QTest::newRow("full-width letters")
        << QStringLiteral("*.ｔｘｔ") << QStringLiteral("ａ.ＴＸＴ");
    QTest::newRow("full-width in the stem")
        << QStringLiteral("ＡＢＣ*") << QStringLiteral("ａｂｃ.txt");
    QTest::newRow("accented Latin") << QStringLiteral("é*.txt") << QStringLiteral("École.TXT");
    QTest::newRow("Greek") << QStringLiteral("*.αβγ") << QStringLiteral("x.ΑΒΓ");
    QTest::newRow("Cyrillic") << QStringLiteral("Я*") << QStringLiteral("я.txt");
}

void FileMaskTest::matchingIgnoresCase()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QVERIFY(FileMask(text).passes(name));
    QVERIFY(!FileMask(QLatin1Char('^') + text).passes(name));
}

void FileMaskTest::aCaretAnywhereNegates_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("at the front") << "^*.obj *.exe";
    QTest::newRow("at the end") << "*.obj *.exe^";
    QTest::newRow("at the second pattern") << "*.obj ^*.exe";
    QTest::newRow("inside a pattern") << "*.o^bj *.exe";
    QTest::newRow("at each pattern") << "^*.obj ^*.exe";
    QTest::newRow("twice") << "^^*.obj *.exe";
}

void FileMaskTest::aCaretAnywhereNegates()
{
    QFETCH(QString, text);
    const FileMask mask(text);
    QVERIFY(mask.isNegation());
    QCOMPARE(mask.patterns(), QStringList({QStringLiteral("*.obj"), QStringLiteral("*.exe")}));
    QVERIFY(!mask.passes(QStringLiteral("a.obj")));
    QVERIFY(!mask.passes(QStringLiteral("A.EXE")));
    QVERIFY(mask.passes(QStringLiteral("a.cpp")));
    QVERIFY(mask.passes(QStringLiteral("obj")));
    QVERIFY(mask.passes(QStringLiteral("README")));
    QVERIFY(mask.passes(QStringLiteral("日本語.txt")));
}

void FileMaskTest::aCaretAlonePassesEveryName()
{
    const FileMask mask(QStringLiteral("^"));
    QVERIFY(mask.isNegation());
    QCOMPARE(mask.patterns(), QStringList{QLatin1String("")});
    QVERIFY(mask.passes(QStringLiteral("a.txt")));
    QVERIFY(mask.passes(QStringLiteral("README")));
    QVERIFY(mask.passes(QStringLiteral("^")));
}

void FileMaskTest::aNegatedStarPassesNothing()
{
    QVERIFY(!FileMask(QStringLiteral("^*")).passes(QStringLiteral("a.txt")));
    QVERIFY(!FileMask(QStringLiteral("^*.*")).passes(QStringLiteral("README")));
}

void FileMaskTest::starDotStarPassesNamesWithoutADot()
{
    const FileMask mask(QStringLiteral("*.*"));
    QCOMPARE(mask.patterns(), QStringList{QStringLiteral("*")});
    QVERIFY(mask.passes(QStringLiteral("README")));
    QVERIFY(mask.passes(QStringLiteral("a.txt")));
    QVERIFY(mask.passes(QStringLiteral(".profile")));
    QVERIFY(mask.passes(QStringLiteral("名前")));
}

void FileMaskTest::starDotStarStandsForAStarEverywhere_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("after text") << "make*.*"
                                << "make*";
    QTest::newRow("before text") << "*.*.bak"
                                 << "*.bak";
    QTest::newRow("inside") << "a*.*z"
                            << "a*z";
    QTest::newRow("replaced once, not again in its result") << "*.*.*"
                                                            << "*.*";
    QTest::newRow("twice") << "a*.*b*.*"
                           << "a*b*";
    QTest::newRow("a lone star and dot stay") << "*.a*"
                                              << "*.a*";
    QTest::newRow("any character between is no dot") << "*?*"
                                                     << "*?*";
}

void FileMaskTest::starDotStarStandsForAStarEverywhere()
{
    QFETCH(QString, text);
    QFETCH(QString, pattern);
    QCOMPARE(FileMask(text).patterns(), QStringList{pattern});
}

void FileMaskTest::starDotStarIsReplacedInEveryPattern()
{
    const FileMask mask(QStringLiteral("a*.* *.c b*.*"));
    QCOMPARE(mask.patterns(),
             QStringList({QStringLiteral("a*"), QStringLiteral("*.c"), QStringLiteral("b*")}));
    QVERIFY(mask.passes(QStringLiteral("apple")));
    QVERIFY(mask.passes(QStringLiteral("x.c")));
    QVERIFY(mask.passes(QStringLiteral("berry")));
    QVERIFY(!mask.passes(QStringLiteral("cherry")));
    QVERIFY(FileMask(QStringLiteral("*.h *.*")).passes(QStringLiteral("README")));
}

void FileMaskTest::theCaretIsRemovedBeforeStarDotStarIsReplaced()
{
    const FileMask mask(QStringLiteral("a*.^*"));
    QCOMPARE(mask.patterns(), QStringList{QStringLiteral("a*")});
    QVERIFY(!mask.passes(QStringLiteral("apple")));
    QVERIFY(mask.passes(QStringLiteral("berry")));
}

void FileMaskTest::theQuestionMarkMatchesOneCodeUnit()
{
    const FileMask one(QStringLiteral("?.txt"));
    QVERIFY(one.passes(QStringLiteral("a.txt")));
    QVERIFY(one.passes(QStringLiteral("あ.txt")));
    QVERIFY(one.passes(QStringLiteral("..txt")));
    QVERIFY(!one.passes(QStringLiteral(".txt")));
    QVERIFY(!one.passes(QStringLiteral("ab.txt")));
    // A character outside the basic plane is two code units.
    QVERIFY(!one.passes(QStringLiteral("𠮷.txt")));
    QVERIFY(FileMask(QStringLiteral("??.txt")).passes(QStringLiteral("𠮷.txt")));
}

void FileMaskTest::bracketsMatchOneCharacterOfTheSet()
{
    const FileMask mask(QStringLiteral("[ac-e]?.t[x]t"));
    QVERIFY(mask.passes(QStringLiteral("a1.txt")));
    QVERIFY(mask.passes(QStringLiteral("D1.txt")));
    QVERIFY(!mask.passes(QStringLiteral("b1.txt")));
    QVERIFY(!mask.passes(QStringLiteral("a.txt")));
    QVERIFY(!mask.passes(QStringLiteral("[ac-e]1.t[x]t")));
    QVERIFY(FileMask(QStringLiteral("*.[ch]")).passes(QStringLiteral("main.h")));
    QVERIFY(!FileMask(QStringLiteral("*.[ch]")).passes(QStringLiteral("main.o")));
    // A star in a set is that character; a suffix with a set is no plain text.
    QVERIFY(FileMask(QStringLiteral("[*]")).passes(QStringLiteral("*")));
    QVERIFY(!FileMask(QStringLiteral("[*]")).passes(QStringLiteral("a")));
    QVERIFY(!FileMask(QStringLiteral("*.[ch]")).passes(QStringLiteral("main.[ch]")));
}

void FileMaskTest::anUnclosedBracketMatchesNoName()
{
    const FileMask mask(QStringLiteral("[ab *.c"));
    QVERIFY(!mask.passes(QStringLiteral("a")));
    QVERIFY(!mask.passes(QStringLiteral("[ab")));
    QVERIFY(mask.passes(QStringLiteral("x.c")));
    QVERIFY(FileMask(QStringLiteral("^[ab")).passes(QStringLiteral("a")));
}

void FileMaskTest::otherMetaCharactersMatchThemselves_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("other");
    QTest::newRow("dot") << "a.b"
                         << "axb";
    QTest::newRow("plus") << "a+"
                          << "aa";
    QTest::newRow("parentheses") << "copy (1)"
                                 << "copy 1";
    QTest::newRow("braces") << "a{2}"
                            << "aa";
    QTest::newRow("bar") << "a|b"
                         << "a";
    QTest::newRow("dollar") << "a$"
                            << "a";
}

void FileMaskTest::otherMetaCharactersMatchThemselves()
{
    QFETCH(QString, name);
    QFETCH(QString, other);
    const QString text = QString(name).replace(QLatin1Char(' '), QLatin1Char('?'));
    QVERIFY(FileMask(text).passes(name));
    QVERIFY(!FileMask(text).passes(other));
    QVERIFY(FileMask(QLatin1Char('*') + text).passes(QLatin1Char('x') + name));
    QVERIFY(!FileMask(QLatin1Char('*') + text).passes(QLatin1Char('x') + other));
}

void FileMaskTest::aStarMatchesAnyTextAtAll()
{
    const FileMask mask(QStringLiteral("a*z"));
    QVERIFY(mask.passes(QStringLiteral("az")));
    QVERIFY(mask.passes(QStringLiteral("a line\nand\r\tanother z")));
    QVERIFY(mask.passes(QStringLiteral("a") + QString(300, QChar(0x3042)) + QLatin1Char('z')));
    QVERIFY(mask.passes(QStringLiteral("a") + QChar(0xDC80) + QLatin1Char('z')));
    QVERIFY(FileMask(QStringLiteral("*")).passes(QStringLiteral("\n")));
    QVERIFY(FileMask(QStringLiteral("*.txt")).passes(QStringLiteral("a\n.txt")));
    QVERIFY(FileMask(QStringLiteral("*.txt")).passes(QStringLiteral(".txt")));
}

/// The plain rule: one wildcard pattern after another, made afresh.
static bool passesByTheRule(const QString &text, const QString &name)
{
    QString patterns = text;
    patterns.remove(QLatin1Char('^'));
    patterns.replace(QLatin1String("*.*"), QLatin1String("*"));
    bool any = false;
    for (const QString &pattern : patterns.split(QLatin1Char(' ')))
        any = any || QRegExp(pattern, Qt::CaseInsensitive, QRegExp::Wildcard).exactMatch(name);
    return any != text.contains(QLatin1Char('^'));
}

static QString randomText(QRandomGenerator &random, const QString &alphabet, int maxLength)
{
    QString text;
    for (int length = random.bounded(maxLength + 1); length > 0; --length)
        text += alphabet.at(random.bounded(alphabet.size()));
    return text;
}

/// A mask that was made from the name, so that it has a chance to match.
static QString randomMask(QRandomGenerator &random, const QString &name, const QString &alphabet)
{
    QString mask;
    for (const QChar unit : name) {
        switch (random.bounded(10)) {
        case 0:
            mask += QLatin1Char('*');
            break;
        case 1:
            mask += QLatin1Char('?');
            break;
        case 2:
            mask += alphabet.at(random.bounded(alphabet.size()));
            break;
        case 3:
            mask += QLatin1Char('[') + QString(unit) + QLatin1Char(']');
            break;
        case 4:
            mask += QLatin1Char('\\') + QString(unit);
            break;
        default:
            mask += random.bounded(2) ? unit.toUpper() : unit.toLower();
        }
    }
    return random.bounded(3) ? mask : QLatin1Char('*') + mask.mid(mask.size() / 2);
}

void FileMaskTest::everyMaskAnswersAsTheWildcardPatternDoes()
{
    QRandomGenerator random(20240511);
    // Letters outside ASCII that some foldings take for letters of ASCII: the
    // Kelvin sign, the long s, the two Turkish letters i.
    const QString letters = QStringLiteral("..[]\\aAkKsSiI\u212A\u017Fßéａ Ａİıあ");
    const QString masks = letters + QStringLiteral("***?^ .");
    int passed = 0;
    const int cases = TestLength::rounds(30000, 1000000);
    for (int i = 0; i < cases; ++i) {
        const QString name = randomText(random, letters, 4) + QLatin1Char('k');
        const QString text =
            i % 3 == 0 ? randomText(random, masks, 6) : randomMask(random, name, masks);
        const bool expected = passesByTheRule(text, name);
        passed += expected ? 1 : 0;
        if (FileMask(text).passes(name) != expected)
            QFAIL(qPrintable(QStringLiteral("mask \"%1\", name \"%2\"").arg(text, name)));
    }
    QVERIFY2(passed > cases / 6 && passed < cases / 6 * 5, qPrintable(QString::number(passed)));
}

void FileMaskTest::manyPatternsAnswerAsEachDoes()
{
    QRandomGenerator random(20240513);
    const QString letters = QStringLiteral("..aAkK\u212A\u017F\u30C6\u3042");
    int passed = 0;
    const int cases = TestLength::rounds(3000, 100000);
    for (int i = 0; i < cases; ++i) {
        QStringList patterns;
        for (int pattern = random.bounded(30); pattern >= 0; --pattern) {
            const QString text = randomText(random, letters, 5);
            patterns += random.bounded(3) ? QLatin1Char('*') + text : text;
            if (random.bounded(20) == 0)
                patterns.back().insert(random.bounded(text.size() + 1), QLatin1Char('?'));
        }
        const QString text = patterns.join(QLatin1Char(' '));
        const QString name = randomText(random, letters, 5);
        const bool expected = passesByTheRule(text, name);
        passed += expected ? 1 : 0;
        if (FileMask(text).passes(name) != expected)
            QFAIL(qPrintable(QStringLiteral("mask \"%1\", name \"%2\"").arg(text, name)));
    }
    QVERIFY2(passed > cases / 6 && passed < cases / 6 * 5, qPrintable(QString::number(passed)));
}

void FileMaskTest::everyUnitIsComparedAsByTheWildcardPattern()
{
    for (const char letter : {'a', 'i', 'k', 's', 'z', '1', '.'}) {
        const QString end = QString(QLatin1Char(letter)).toUpper();
        const FileMask ends(QLatin1Char('*') + end);
        const FileMask names(QLatin1Char('x') + end);
        const QRegExp rule(names.patterns().front(), Qt::CaseInsensitive, QRegExp::Wildcard);
        for (int unit = 0; unit <= 0xFFFF; ++unit) {
            const QString name = QLatin1Char('x') + QString(QChar(unit));
            const bool expected = rule.exactMatch(name);
            if (ends.passes(name) != expected || names.passes(name) != expected)
                QFAIL(qPrintable(QStringLiteral("%1, U+%2").arg(end).arg(unit, 4, 16)));
        }
    }
}

void FileMaskTest::copiesAnswerTheSameOnEveryThread()
{
    const FileMask mask(QStringLiteral("*b[0-9]?.tx* *.cpp あ*い?"));
    std::atomic<int> wrong{0};
    const auto ask = [&wrong](const FileMask &own) {
        for (int i = 0; i < 3000; ++i) {
            const QString number = QString::number(i % 10);
            const bool right = own.passes(QLatin1String("ab") + number + QLatin1String("x.txt"))
                && !own.passes(QLatin1String("ab") + number + QLatin1String(".txt"))
                && own.passes(number + QLatin1String(".CPP"))
                && own.passes(QStringLiteral("あ") + number + QStringLiteral("い!"))
                && !own.passes(QStringLiteral("あ") + number + QStringLiteral("い"));
            wrong += right ? 0 : 1;
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(ask, mask);
    ask(FileMask(mask));
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_GUILESS_MAIN(FileMaskTest)
#include "FileMaskTest.moc"
