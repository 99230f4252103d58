#include "cli/OptionParser.h"

#include "cli/OptionTable.h"

#include <QTest>

#include <functional>

using Check = std::function<bool(const Options &)>;

Q_DECLARE_METATYPE(Check)
Q_DECLARE_METATYPE(Options::Mode)

namespace {

QStringList words(const char *line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '));
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class OptionParserTest : public QObject {
    Q_OBJECT

private slots:
    void aSearchNeedsAKeywordAndPaths();
    void withoutOptionsTheDefaultsHold();
    void everyOptionSetsItsMember_data();
    void everyOptionSetsItsMember();
    void theDefaultsMayBeNamed();
    void theFirstOperandIsNoKeywordWithoutASearch_data();
    void theFirstOperandIsNoKeywordWithoutASearch();
    void optionsMayStandBetweenAndAfterOperands();
    void afterTwoDashesEverythingIsAnOperand();
    void aDashAloneIsAnOperand();
    void aValueMayBeginWithADash();
    void aRepeatedOptionCountsOnceWithItsLastValue();
    void repeatedExclusionsAddUp();
    void helpEndsTheReading_data();
    void helpEndsTheReading();
    void aWrongCommandLineIsRefusedWithOneLineThatNamesTheValue_data();
    void aWrongCommandLineIsRefusedWithOneLineThatNamesTheValue();
    void aFixedStringNeedNotBeAPattern();
    void theFirstErrorIsTheOneReported();
    void noNameIsUsedTwice();
};

void OptionParserTest::aSearchNeedsAKeywordAndPaths()
{
    const OptionParser::Result result = OptionParser::parse(words("灯台 src doc/a.txt"));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.options.mode, Options::Mode::Search);
    QCOMPARE(result.options.keyword, text("灯台"));
    QCOMPARE(result.options.paths, words("src doc/a.txt"));
}

void OptionParserTest::withoutOptionsTheDefaultsHold()
{
    const Options options = OptionParser::parse(words("a b")).options;
    QCOMPARE(options.mask, text("*.*"));
    QVERIFY(options.subdirs);
    QVERIFY(!options.ignoreCase);
    QVERIFY(!options.word);
    QVERIFY(!options.fixedStrings);
    QVERIFY(!options.namesWithoutHits);
    QVERIFY(options.nearKeyword.isEmpty());
    QVERIFY(!options.within);
    QVERIFY(options.notKeyword.isEmpty());
    QVERIFY(options.excludedFolders.isEmpty());
    QVERIFY(options.excludedFiles.isEmpty());
    QVERIFY(!options.maxSize);
    QVERIFY(!options.tabWidth);
    QVERIFY(options.useSettings);
    QCOMPARE(options.format, Options::Format::Result);
    QCOMPARE(options.color, Options::Color::Auto);
    QVERIFY(!options.sort);
    QVERIFY(!options.stats);
}

void OptionParserTest::everyOptionSetsItsMember_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<Check>("isSet");
    const auto row = [](const char *given, const Check &isSet) {
        QTest::newRow(given) << words(given) << isSet;
    };
    using O = const Options &;
    row("-m *.cpp", [](O o) { return o.mask == QLatin1String("*.cpp"); });
    row("-m*.cpp", [](O o) { return o.mask == QLatin1String("*.cpp"); });
    row("--mask *.cpp", [](O o) { return o.mask == QLatin1String("*.cpp"); });
    row("--mask=*.cpp", [](O o) { return o.mask == QLatin1String("*.cpp"); });
    row("--mask=a=b", [](O o) { return o.mask == QLatin1String("a=b"); });
    row("--mask ^", [](O o) { return o.mask == QLatin1String("^"); });
    row("-i", [](O o) { return o.ignoreCase; });
    row("--ignore-case", [](O o) { return o.ignoreCase; });
    row("-w", [](O o) { return o.word; });
    row("--word-regexp", [](O o) { return o.word; });
    row("-F", [](O o) { return o.fixedStrings; });
    row("--fixed-strings", [](O o) { return o.fixedStrings; });
    row("-iwF", [](O o) { return o.ignoreCase && o.word && o.fixedStrings; });
    row("-iwm *.h", [](O o) { return o.ignoreCase && o.mask == QLatin1String("*.h"); });
    row("--near x", [](O o) { return o.nearKeyword == QLatin1String("x"); });
    row("--near x --within 0", [](O o) { return o.within == 0; });
    row("--within 3 --near x", [](O o) { return o.within == 3; });
    row("--near x --within 1000000", [](O o) { return o.within == 1000000; });
    row("--not y", [](O o) { return o.notKeyword == QLatin1String("y"); });
    row("--no-subdirs", [](O o) { return !o.subdirs; });
    row("--names-without-hits", [](O o) { return o.namesWithoutHits; });
    row("--exclude-dir .git", [](O o) { return o.excludedFolders == words(".git"); });
    row("--exclude-file .bak", [](O o) { return o.excludedFiles == words(".bak"); });
    row("--max-size 1", [](O o) { return o.maxSize == 1; });
    row("--max-size 1000", [](O o) { return o.maxSize == 1000; });
    row("--tab 1", [](O o) { return o.tabWidth == 1; });
    row("--tab 1000", [](O o) { return o.tabWidth == 1000; });
    row("--format grep", [](O o) { return o.format == Options::Format::Grep; });
    row("--format json", [](O o) { return o.format == Options::Format::Json; });
    row("--sort", [](O o) { return o.sort; });
    row("--stats", [](O o) { return o.stats; });
    row("--color always", [](O o) { return o.color == Options::Color::Always; });
    row("--color=never", [](O o) { return o.color == Options::Color::Never; });
    row("--no-settings", [](O o) { return !o.useSettings; });
}

void OptionParserTest::everyOptionSetsItsMember()
{
    QFETCH(QStringList, given);
    QFETCH(Check, isSet);
    const OptionParser::Result result = OptionParser::parse(given + words("keyword path"));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.options.keyword, text("keyword"));
    QCOMPARE(result.options.paths, words("path"));
    QVERIFY(isSet(result.options));
    QVERIFY2(!isSet(OptionParser::parse(words("keyword path")).options),
             "the default passes the check, which then proves nothing");
}

void OptionParserTest::theDefaultsMayBeNamed()
{
    const OptionParser::Result result = OptionParser::parse(
        words("--format grep --format result --color always --color auto keyword path"));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.options.format, Options::Format::Result);
    QCOMPARE(result.options.color, Options::Color::Auto);
}

void OptionParserTest::theFirstOperandIsNoKeywordWithoutASearch_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<Options::Mode>("mode");
    QTest::newRow("line count") << text("--line-count") << Options::Mode::LineCount;
    QTest::newRow("encodings") << text("--encodings") << Options::Mode::Encodings;
}

void OptionParserTest::theFirstOperandIsNoKeywordWithoutASearch()
{
    QFETCH(QString, option);
    QFETCH(Options::Mode, mode);
    const OptionParser::Result result = OptionParser::parse({text("a"), option, text("b")});
    QCOMPARE(result.error, QString());
    QCOMPARE(result.options.mode, mode);
    QCOMPARE(result.options.paths, words("a b"));
    QVERIFY(result.options.keyword.isEmpty());
}

void OptionParserTest::optionsMayStandBetweenAndAfterOperands()
{
    const OptionParser::Result result = OptionParser::parse(words("key -i path --sort other"));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.options.keyword, text("key"));
    QCOMPARE(result.options.paths, words("path other"));
    QVERIFY(result.options.ignoreCase);
    QVERIFY(result.options.sort);
}

void OptionParserTest::afterTwoDashesEverythingIsAnOperand()
{
    const OptionParser::Result result = OptionParser::parse(words("-i -- --sort -- -w"));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.options.keyword, text("--sort"));
    QCOMPARE(result.options.paths, words("-- -w"));
    QVERIFY(!result.options.sort);
    QVERIFY(!result.options.word);
}

void OptionParserTest::aDashAloneIsAnOperand()
{
    QCOMPARE(OptionParser::parse(words("- -")).options.keyword, text("-"));
}

void OptionParserTest::aValueMayBeginWithADash()
{
    const OptionParser::Result result = OptionParser::parse(words("--not -i --near --sort k p"));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.options.notKeyword, text("-i"));
    QCOMPARE(result.options.nearKeyword, text("--sort"));
}

void OptionParserTest::aRepeatedOptionCountsOnceWithItsLastValue()
{
    const Options options =
        OptionParser::parse(words("-m a -m b --tab 2 --tab 8 keyword path")).options;
    QCOMPARE(options.mask, text("b"));
    QCOMPARE(*options.tabWidth, 8);
}

void OptionParserTest::repeatedExclusionsAddUp()
{
    const Options options = OptionParser::parse(words("--exclude-dir a --exclude-dir b "
                                                      "--exclude-file c --exclude-file d k p"))
                                .options;
    QCOMPARE(options.excludedFolders, words("a b"));
    QCOMPARE(options.excludedFiles, words("c d"));
}

void OptionParserTest::helpEndsTheReading_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<Options::Mode>("mode");
    QTest::newRow("-h alone") << words("-h") << Options::Mode::Help;
    QTest::newRow("--help, then nonsense") << words("--help --nonsense") << Options::Mode::Help;
    QTest::newRow("joined") << words("-ih") << Options::Mode::Help;
    QTest::newRow("-V") << words("-V") << Options::Mode::Version;
    QTest::newRow("--version, then -h") << words("--version -h") << Options::Mode::Version;
    QTest::newRow("in another mode") << words("--line-count -h") << Options::Mode::Help;
}

void OptionParserTest::helpEndsTheReading()
{
    QFETCH(QStringList, given);
    const OptionParser::Result result = OptionParser::parse(given);
    QCOMPARE(result.error, QString());
    QTEST(result.options.mode, "mode");
}

void OptionParserTest::aWrongCommandLineIsRefusedWithOneLineThatNamesTheValue_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const QStringList &given, const char *error) {
        QTest::newRow(name) << given << QString::fromUtf8(error);
    };
    const QStringList operands = words("k p");

    row("nothing", {}, "KEYWORD and PATH are missing (-h shows the options)");
    row("no path", words("灯台"), "PATH is missing after KEYWORD '灯台'");
    row("no path for a line count", words("--line-count"),
        "PATH is missing (-h shows the options)");
    row("empty keyword", {QString(), text("p")}, "KEYWORD is empty: ''");
    row("unknown long option", words("--nonsense") + operands, "unknown option '--nonsense'");
    row("unknown long option with value", words("--no=1") + operands, "unknown option '--no=1'");
    row("abbreviated option", words("--ignore") + operands, "unknown option '--ignore'");
    row("unknown short option", words("-ix") + operands, "unknown option '-x'");
    row("switch with a value", words("--sort=1") + operands, "option takes no value: '--sort=1'");
    row("no value, long", operands + words("--mask"), "option needs a value: '--mask'");
    row("no value, short", operands + words("-m"), "option needs a value: '-m'");
    row("empty mask", QStringList({text("-m"), QString()}) + operands, "--mask is blank: ''");
    row("blank mask", QStringList({text("-m"), text(" \t\u3000")}) + operands,
        "--mask is blank: ' \\x09\u3000'");
    row("empty near", words("--near=") + operands, "--near is empty: ''");
    row("empty not", words("--not=") + operands, "--not is empty: ''");
    row("empty folder exclusion", words("--exclude-dir=") + operands, "--exclude-dir is empty: ''");
    row("empty file exclusion", words("--exclude-file=") + operands, "--exclude-file is empty: ''");

    row("within without near", words("--within 3") + operands, "--within 3 needs --near");
    row("negative within", words("--near x --within -1") + operands,
        "--within takes a number from 0 to 1000000: '-1'");
    row("absurd within", words("--near x --within 1000001") + operands,
        "--within takes a number from 0 to 1000000: '1000001'");
    row("within past 32 bits", words("--near x --within 4294967297") + operands,
        "--within takes a number from 0 to 1000000: '4294967297'");
    row("within no number", words("--near x --within 3x") + operands,
        "--within takes a number from 0 to 1000000: '3x'");
    row("within signed", words("--near x --within +3") + operands,
        "--within takes a number from 0 to 1000000: '+3'");
    row("within in full-width digits", words("--near x --within ３") + operands,
        "--within takes a number from 0 to 1000000: '３'");
    row("within with a blank", QStringList({text("--within"), text(" 3")}) + operands,
        "--within takes a number from 0 to 1000000: ' 3'");
    row("within empty", words("--within=") + operands,
        "--within takes a number from 0 to 1000000: ''");
    row("size zero", words("--max-size 0") + operands,
        "--max-size takes a number from 1 to 1000: '0'");
    row("size negative", words("--max-size=-5") + operands,
        "--max-size takes a number from 1 to 1000: '-5'");
    row("size absurd", words("--max-size 1001") + operands,
        "--max-size takes a number from 1 to 1000: '1001'");
    row("tab zero", words("--tab 0") + operands, "--tab takes a number from 1 to 1000: '0'");
    row("tab absurd", words("--tab 1001") + operands,
        "--tab takes a number from 1 to 1000: '1001'");
    row("unknown format", words("--format xml") + operands,
        "--format is result, grep or json: 'xml'");
    row("unknown colour", words("--color sometimes") + operands,
        "--color is auto, always or never: 'sometimes'");

    row("pattern with an open bracket", words("[a p"),
        "KEYWORD is not a valid pattern: '[a' (unexpected end)");
    row("pattern with an open group", words("(a p"),
        "KEYWORD is not a valid pattern: '(a' (unexpected end)");
    row("whole word with an open group", words("-w (a p"),
        "KEYWORD is not a valid pattern: '(a' (unexpected end)");
    row("whole word with a backslash at the end", words("-w a\\ p"),
        "KEYWORD is not a valid pattern: 'a\\\\' (unexpected end)");
    row("invalid near", words("--near [b k p"),
        "--near is not a valid pattern: '[b' (unexpected end)");
    row("invalid not", words("--not (c k p"),
        "--not is not a valid pattern: '(c' (unexpected end)");
    const QString brokenByte = QString(QChar(0xDC81));
    QTest::newRow("keyword of broken UTF-8")
        << QStringList{brokenByte, text("p")}
        << text("KEYWORD is not valid UTF-8: '") + brokenByte + QLatin1Char('\'');
    row("line feed in a value", {text("--format"), text("a\nb")},
        "--format is result, grep or json: 'a\\x0ab'");

    row("two modes", words("--line-count --encodings p"),
        "--line-count and --encodings exclude each other");
    row("two modes, the other way round", words("--encodings --line-count p"),
        "--line-count and --encodings exclude each other");
    for (const OptionTable::Option &option : OptionTable::all()) {
        if (!option.searchOnly)
            continue;
        const bool number =
            qstrcmp(option.longName, "within") == 0 || qstrcmp(option.longName, "tab") == 0;
        QStringList given{option.longForm(), text("--line-count"), text("p")};
        if (option.takesValue())
            given.insert(1, number ? text("1") : text("grep"));
        const QString error =
            option.longForm() + QStringLiteral(" has no meaning with --line-count and --encodings");
        QTest::newRow(qPrintable(option.longForm() + QLatin1String(" for a line count")))
            << given << error;
    }
}

void OptionParserTest::aWrongCommandLineIsRefusedWithOneLineThatNamesTheValue()
{
    QFETCH(QStringList, given);
    QFETCH(QString, error);
    const OptionParser::Result result = OptionParser::parse(given);
    QCOMPARE(result.error, error);
    QVERIFY(!result.ok());
    QVERIFY(!result.error.contains(QLatin1Char('\n')));
}

void OptionParserTest::aFixedStringNeedNotBeAPattern()
{
    const OptionParser::Result result = OptionParser::parse(words("-wF --near [b --not (c [a p"));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.options.keyword, text("[a"));
}

void OptionParserTest::theFirstErrorIsTheOneReported()
{
    QCOMPARE(OptionParser::parse(words("--tab 0 --nonsense k p")).error,
             text("--tab takes a number from 1 to 1000: '0'"));
    QCOMPARE(OptionParser::parse(words("--nonsense --tab 0 k p")).error,
             text("unknown option '--nonsense'"));
}

void OptionParserTest::noNameIsUsedTwice()
{
    for (const OptionTable::Option &option : OptionTable::all()) {
        QCOMPARE(OptionTable::findLong(QLatin1String(option.longName)), &option);
        if (option.shortName != 0)
            QCOMPARE(OptionTable::findShort(QLatin1Char(option.shortName)), &option);
    }
}

QTEST_GUILESS_MAIN(OptionParserTest)
#include "OptionParserTest.moc"
