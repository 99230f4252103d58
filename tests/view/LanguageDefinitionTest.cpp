#include "view/LanguageDefinition.h"

#include <QTest>

#include <random>

class LanguageDefinitionTest : public QObject {
    Q_OBJECT

private slots:
    void everyKeyGoesToItsField();
    void everySectionGoesToItsList();
    void linesEndWithCrLf();
    void fewerThanFiveCrLfLinesAreReadByLf();
    void fiveCrLfLinesAreReadByCrLf();
    void aCrStaysWhenAShortFileIsReadByLf();
    void aLineThatBeginsWithTwoSlashesIsSkipped();
    void twoSlashesElsewhereMeanNothing();
    void theOptionHeaderMayStandAnywhereInItsLine();
    void theCommentHeaderStandsAtTheStartOfItsLine();
    void aListHeaderStandsAtTheStartOfItsLine();
    void aListHeaderIndentedByABlankIsAnEntry();
    void aListSectionClosesTheOneBefore();
    void optionsAndCommentMarkersLeaveAListOpen();
    void aKeyIsAnEntryOfAnOpenListAsWell();
    void splitextClosesTheOptions();
    void multiLineEndClosesTheCommentMarkers();
    void theOptionsStayOpenBehindOtherHeaders();
    void keysOutsideTheirSectionMeanNothing();
    void aKeyThatDoesNotStartAtColumnZeroIsIgnored();
    void valuesAreTakenAsTheyStand();
    void asterisksOfTheRegexpsAreEscaped();
    void asterisksElsewhereAreNotEscaped();
    void thereIsNoSixthRegexp();
    void aBlankLineIsNoEntry();
    void anEntryKeepsItsBlanks();
    void aSectionThatIsOpenedTwiceGoesOn();
    void oneLineMayBeHeaderOfSeveralKinds();
    void theLastOfTwoEqualKeysCounts();
    void anEmptyTextIsAnEmptyDefinition();
    void aListIsBounded();
    void anyTextIsRead_data();
    void anyTextIsRead();
};

namespace {

LanguageDefinition parsed(const char *text)
{
    return LanguageFile::parse(QString::fromUtf8(text));
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList list(std::initializer_list<const char *> entries)
{
    QStringList result;
    for (const char *entry : entries)
        result.append(QString::fromUtf8(entry));
    return result;
}

} // namespace

void LanguageDefinitionTest::everyKeyGoesToItsField()
{
    const LanguageDefinition definition = parsed("[langoption]\n"
                                                 "suffix=abc\n"
                                                 "regexp1=r1\n"
                                                 "regexp2=r2\n"
                                                 "regexp3=r3\n"
                                                 "regexp4=r4\n"
                                                 "regexp5=r5\n"
                                                 "splitext=s\n"
                                                 "[comment]\n"
                                                 "singleLine=#\n"
                                                 "multiLineStart=<\n"
                                                 "multiLineEnd=>\n");
    QCOMPARE(definition.suffix, text("abc"));
    QCOMPARE(definition.regexps[0], text("r1"));
    QCOMPARE(definition.regexps[1], text("r2"));
    QCOMPARE(definition.regexps[2], text("r3"));
    QCOMPARE(definition.regexps[3], text("r4"));
    QCOMPARE(definition.regexps[4], text("r5"));
    QCOMPARE(definition.splitext, text("s"));
    QCOMPARE(definition.singleLine, text("#"));
    QCOMPARE(definition.multiLineStart, text("<"));
    QCOMPARE(definition.multiLineEnd, text(">"));
}

void LanguageDefinitionTest::everySectionGoesToItsList()
{
    const LanguageDefinition definition = parsed("[reserve]\nr\n"
                                                 "[keywords]\nk\n"
                                                 "[WordReserve]\nwr\n"
                                                 "[WordKeywords]\nwk1\nwk2\n");
    QCOMPARE(definition.reserve, list({"r"}));
    QCOMPARE(definition.keywords, list({"k"}));
    QCOMPARE(definition.wordReserve, list({"wr"}));
    QCOMPARE(definition.wordKeywords, list({"wk1", "wk2"}));
}

void LanguageDefinitionTest::linesEndWithCrLf()
{
    const LanguageDefinition definition =
        parsed("[comment]\r\nsingleLine=#\r\nmultiLineStart=\r\nmultiLineEnd=\r\n"
               "[reserve]\r\na\r\nb\nc\r\n");
    QCOMPARE(definition.singleLine, text("#"));
    // A bare LF is no line end in such a file.
    QCOMPARE(definition.reserve, list({"a", "b\nc"}));
}

void LanguageDefinitionTest::fewerThanFiveCrLfLinesAreReadByLf()
{
    const LanguageDefinition definition = parsed("[reserve]\na\nb\nc\nd\ne\nf\n");
    QCOMPARE(definition.reserve, list({"a", "b", "c", "d", "e", "f"}));
    // Three ends make four lines.
    QCOMPARE(parsed("[reserve]\r\na\r\nb\nc\r\nd").reserve, list({"a\r", "b", "c\r", "d"}));
}

void LanguageDefinitionTest::fiveCrLfLinesAreReadByCrLf()
{
    // Four ends make five lines, the last of which may be empty.
    QCOMPARE(parsed("[reserve]\r\na\r\nb\nc\r\nd\r\n").reserve, list({"a", "b\nc", "d"}));
}

void LanguageDefinitionTest::aCrStaysWhenAShortFileIsReadByLf()
{
    QCOMPARE(parsed("[reserve]\r\na\r\n").reserve, list({"a\r"}));
}

void LanguageDefinitionTest::aLineThatBeginsWithTwoSlashesIsSkipped()
{
    const LanguageDefinition definition =
        parsed("//[reserve]\n[keywords]\na\n// b\n//[langoption]\nsuffix=x\nc\n");
    QCOMPARE(definition.keywords, list({"a", "suffix=x", "c"}));
    QVERIFY(definition.reserve.isEmpty());
    QVERIFY(definition.suffix.isEmpty());
}

void LanguageDefinitionTest::twoSlashesElsewhereMeanNothing()
{
    const LanguageDefinition definition =
        parsed("[comment]\nsingleLine=//.*$\nmultiLineEnd=\n[reserve]\na//b\n //c\n/ /d\n");
    QCOMPARE(definition.singleLine, text("//.*$"));
    QCOMPARE(definition.reserve, list({"a//b", " //c", "/ /d"}));
}

void LanguageDefinitionTest::theOptionHeaderMayStandAnywhereInItsLine()
{
    QCOMPARE(parsed("; the [langoption] follow\nsuffix=a\n\n\n\n").suffix, text("a"));
}

void LanguageDefinitionTest::theCommentHeaderStandsAtTheStartOfItsLine()
{
    QCOMPARE(parsed("[comment] markers\nsingleLine=#\n").singleLine, text("#"));
    QVERIFY(parsed(" [comment]\nsingleLine=#\n").singleLine.isEmpty());
}

void LanguageDefinitionTest::aListHeaderStandsAtTheStartOfItsLine()
{
    QCOMPARE(parsed("[WordReserve] of the language\na\n").wordReserve, list({"a"}));
    QVERIFY(parsed("x[WordReserve]\na\n").wordReserve.isEmpty());
}

void LanguageDefinitionTest::aListHeaderIndentedByABlankIsAnEntry()
{
    const LanguageDefinition definition = parsed("[keywords]\n [reserve]\na\n");
    QCOMPARE(definition.keywords, list({" [reserve]", "a"}));
    QVERIFY(definition.reserve.isEmpty());
}

void LanguageDefinitionTest::aListSectionClosesTheOneBefore()
{
    const LanguageDefinition definition =
        parsed("[reserve]\na\n[WordKeywords]\nb\n[keywords]\nc\n[WordReserve]\nd\n");
    QCOMPARE(definition.reserve, list({"a"}));
    QCOMPARE(definition.wordKeywords, list({"b"}));
    QCOMPARE(definition.keywords, list({"c"}));
    QCOMPARE(definition.wordReserve, list({"d"}));
}

void LanguageDefinitionTest::optionsAndCommentMarkersLeaveAListOpen()
{
    const LanguageDefinition definition =
        parsed("[reserve]\na\n[langoption]\nb\nsplitext=\n[comment]\nc\nmultiLineEnd=\nd\n");
    QCOMPARE(definition.reserve, list({"a", "b", "splitext=", "c", "multiLineEnd=", "d"}));
}

void LanguageDefinitionTest::aKeyIsAnEntryOfAnOpenListAsWell()
{
    const LanguageDefinition definition = parsed("[reserve]\n[comment]\nsingleLine=#\n");
    QCOMPARE(definition.singleLine, text("#"));
    QCOMPARE(definition.reserve, list({"singleLine=#"}));
}

void LanguageDefinitionTest::splitextClosesTheOptions()
{
    const LanguageDefinition definition =
        parsed("[langoption]\nsplitext=a\nsuffix=b\nregexp1=c\nsplitext=d\n");
    QCOMPARE(definition.splitext, text("a"));
    QVERIFY(definition.suffix.isEmpty());
    QVERIFY(definition.regexps[0].isEmpty());
}

void LanguageDefinitionTest::multiLineEndClosesTheCommentMarkers()
{
    const LanguageDefinition definition =
        parsed("[comment]\nmultiLineEnd=a\nmultiLineStart=b\nsingleLine=c\n");
    QCOMPARE(definition.multiLineEnd, text("a"));
    QVERIFY(definition.multiLineStart.isEmpty());
    QVERIFY(definition.singleLine.isEmpty());
}

void LanguageDefinitionTest::theOptionsStayOpenBehindOtherHeaders()
{
    const LanguageDefinition definition =
        parsed("[langoption]\n[comment]\n[reserve]\nsuffix=a\nsingleLine=#\n");
    QCOMPARE(definition.suffix, text("a"));
    QCOMPARE(definition.singleLine, text("#"));
}

void LanguageDefinitionTest::keysOutsideTheirSectionMeanNothing()
{
    const LanguageDefinition definition =
        parsed("suffix=a\nsingleLine=b\n[langoption]\nsingleLine=c\nsplitext=\n"
               "[comment]\nsuffix=d\n");
    QVERIFY(definition.suffix.isEmpty());
    QVERIFY(definition.singleLine.isEmpty());
}

void LanguageDefinitionTest::aKeyThatDoesNotStartAtColumnZeroIsIgnored()
{
    const LanguageDefinition definition = parsed(
        "[langoption]\n suffix=a\n\tregexp1=b\n[comment]\n singleLine=c\nx multiLineEnd=d\n");
    QVERIFY(definition.suffix.isEmpty());
    QVERIFY(definition.regexps[0].isEmpty());
    QVERIFY(definition.singleLine.isEmpty());
    QVERIFY(definition.multiLineEnd.isEmpty());
}

void LanguageDefinitionTest::valuesAreTakenAsTheyStand()
{
    const LanguageDefinition definition =
        parsed("[langoption]\nsuffix= a = b \n[comment]\nsingleLine=\t#\nmultiLineStart= x \n");
    QCOMPARE(definition.suffix, text(" a = b "));
    QCOMPARE(definition.singleLine, text("\t#"));
    QCOMPARE(definition.multiLineStart, text(" x "));
}

void LanguageDefinitionTest::asterisksOfTheRegexpsAreEscaped()
{
    const LanguageDefinition definition = parsed("[langoption]\nregexp1=*a**\nregexp5=\\*\n\n\n\n");
    QCOMPARE(definition.regexps[0], text("\\*a\\*\\*"));
    QCOMPARE(definition.regexps[4], text("\\\\*"));
}

void LanguageDefinitionTest::asterisksElsewhereAreNotEscaped()
{
    const LanguageDefinition definition =
        parsed("[langoption]\nsuffix=*\nsplitext=*\n[comment]\nsingleLine=*\n[reserve]\na*\n");
    QCOMPARE(definition.suffix, text("*"));
    QCOMPARE(definition.splitext, text("*"));
    QCOMPARE(definition.singleLine, text("*"));
    QCOMPARE(definition.reserve, list({"a*"}));
}

void LanguageDefinitionTest::thereIsNoSixthRegexp()
{
    const LanguageDefinition definition =
        parsed("[langoption]\nregexp0=a\nregexp6=b\nregexp11=c\n\n\n");
    for (const QString &regexp : definition.regexps)
        QVERIFY(regexp.isEmpty());
}

void LanguageDefinitionTest::aBlankLineIsNoEntry()
{
    QCOMPARE(parsed("[reserve]\n\na\n \t \n\nb\n\n").reserve, list({"a", "b"}));
}

void LanguageDefinitionTest::anEntryKeepsItsBlanks()
{
    QCOMPARE(parsed("[reserve]\n a \n\tb\n\n\n").reserve, list({" a ", "\tb"}));
}

void LanguageDefinitionTest::aSectionThatIsOpenedTwiceGoesOn()
{
    QCOMPARE(parsed("[reserve]\na\n[keywords]\nb\n[reserve]\nc\n").reserve, list({"a", "c"}));
}

void LanguageDefinitionTest::oneLineMayBeHeaderOfSeveralKinds()
{
    const LanguageDefinition definition = parsed("[reserve][langoption]\nsuffix=a\n\n\n\n");
    QCOMPARE(definition.suffix, text("a"));
    QCOMPARE(definition.reserve, list({"suffix=a"}));
}

void LanguageDefinitionTest::theLastOfTwoEqualKeysCounts()
{
    QCOMPARE(parsed("[langoption]\nsuffix=a\nsuffix=b\n\n\n").suffix, text("b"));
}

void LanguageDefinitionTest::anEmptyTextIsAnEmptyDefinition()
{
    const LanguageDefinition definition = LanguageFile::parse(QString());
    QVERIFY(definition.suffix.isNull());
    QVERIFY(definition.reserve.isEmpty());
}

void LanguageDefinitionTest::aListIsBounded()
{
    const QString many = QStringLiteral("[reserve]\n")
        + QStringLiteral("x\n").repeated(LanguageFile::kMostEntries + 5);
    QCOMPARE(LanguageFile::parse(many).reserve.size(), LanguageFile::kMostEntries);
}

void LanguageDefinitionTest::anyTextIsRead_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void LanguageDefinitionTest::anyTextIsRead()
{
    QFETCH(quint32, seed);
    static const char *const pieces[] = {"[langoption]",
                                         "[comment]",
                                         "[reserve]",
                                         "[keywords]",
                                         "[WordReserve]",
                                         "suffix=",
                                         "splitext=",
                                         "regexp3=",
                                         "singleLine=",
                                         "multiLineEnd=",
                                         "//",
                                         "\r\n",
                                         "\n",
                                         "\r",
                                         " ",
                                         "*",
                                         "\xe3\x81\x82",
                                         "[WordKeywords]",
                                         "multiLineStart="};
    std::mt19937 random(seed);
    QString input;
    for (int i = 0; i < 3000; ++i) {
        const std::size_t choice = random() % (std::size(pieces) + 3);
        if (choice < std::size(pieces))
            input += QString::fromUtf8(pieces[choice]);
        else
            input += QChar(static_cast<ushort>(random() % 0x10000));
    }
    const LanguageDefinition definition = LanguageFile::parse(input);
    const int entries = definition.reserve.size() + definition.keywords.size()
        + definition.wordReserve.size() + definition.wordKeywords.size();
    QVERIFY(entries <= input.count(QLatin1Char('\n')) + 1);
    QVERIFY(definition.suffix.size() <= input.size());
}

QTEST_GUILESS_MAIN(LanguageDefinitionTest)
#include "LanguageDefinitionTest.moc"
