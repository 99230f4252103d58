#include "view/HighlightSyntax.h"

#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"
#include "tests/view/ColouredText.h"

#include <QTest>

#include <memory>
#include <random>

/// Letters of the expected colours: b block comment, c line comment, k keyword,
/// r reserved word, v value, f file line, 1 and 2 found, d and s string literals.
class HighlightSyntaxTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    // Choosing a language
    void theResultViewHasFileLinesAndValues();
    void thePreviewWithoutALanguageHasNoRules();
    void anUnknownSuffixLeavesValuesAndBuiltInComments_data();
    void anUnknownSuffixLeavesValuesAndBuiltInComments();
    void anUnknownSuffixIsLogged();
    void noLanguageIsNotLogged();
    void entriesBecomeNumberedRulesWordsFirst();
    void wordsOfTheDefinitionMatchWhole();
    void patternsOfTheDefinitionMatchAsTheyStand();
    void aBrokenPatternCostsNoOtherEntry();
    void aDefinitionReplacesTheBuiltInComment_data();
    void aDefinitionReplacesTheBuiltInComment();
    void theResultViewHasNoCommentRule();
    void blockCommentsNeedBothMarkers_data();
    void blockCommentsNeedBothMarkers();
    void aDefinitionReplacesTheComments();
    void behindBlockCommentsThereIsNoBuiltInComment();
    void aFileOfNoLanguageHasNoCommentsOfAnother_data();
    void aFileOfNoLanguageHasNoCommentsOfAnother();
    void onlyASingleLineCommentDecidesAboutQuotes();
    void theBuiltInCommentDoesNotDecideAboutQuotes();
    void aLanguageDropsWhatWasFound();
    void aSingleQuoteInTheCommentMarkerMeansNoStrings();

    // Colouring a line
    void fileLinesAreColouredInTheResultView();
    void valuesAreColoured_data();
    void valuesAreColoured();
    void reservedWordsCoverKeywords();
    void ruleTenComesBeforeRuleTwo();
    void aLineCommentReachesToTheEndOfItsLine();
    void aLineCommentCoversTheWordsInsideIt();
    void withoutBlockCommentsTheWordsInACommentKeepTheirColours();
    void stringsCoverWords();
    void stringsCoverACommentRule();
    void aQuoteInACommentOpensNoString();
    void blockCommentsCoverAll();
    void aCommentInAStringIsNone();
    void foundTextCoversAll();
    void theSecondFindCoversTheFirst();
    void oneFindLeavesTheSecondInPlace();
    void anEmptyFindIsRemoved();
    void aFindThatChangesNothingSaysSo();
    void theLastCommentIsToldOf();
    void colouredPartsBeginBeforeTheLimit();
    void stringsAreColouredInTheResultView();

    void anyDefinitionIsSurvived_data();
    void anyDefinitionIsSurvived();

private:
    std::unique_ptr<ScratchFolder> m_folder;

    void write(const char *language, const QByteArray &definition) const;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const char *const kC = "[comment]\nsingleLine=//\nmultiLineStart=/\\*\nmultiLineEnd=\\*/\n"
                       "[WordReserve]\nif\n[WordKeywords]\nint\n";
const char *const kShell = "[comment]\nsingleLine=#.*$\nmultiLineStart=\nmultiLineEnd=\n"
                           "[WordReserve]\nif\n[WordKeywords]\nint\n";

HighlightSyntax preview(const char *suffix)
{
    HighlightSyntax syntax(false);
    syntax.setLanguage(text(suffix), QString());
    return syntax;
}

QString coloured(const HighlightSyntax &syntax, const char *lines)
{
    return ColouredText::lettersOf(syntax, text(lines).split(QLatin1Char('\n')))
        .join(QLatin1Char('\n'));
}

void expectLogLine(const char *suffix, const char *language = "")
{
    static QByteArray message;
    message = QByteArray("\"") + suffix + "\" \"" + language + "\" LanguageOption Readfile error";
    QTest::ignoreMessage(QtDebugMsg, message.constData());
}

} // namespace

void HighlightSyntaxTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    AppSettings &settings = AppSettings::instance();
    settings.load(m_folder->path());
    settings.langlist = QStringList{text("lang-c"), text("lang-sh"), text("lang-x")};
    settings.langlistValues = QStringList{text("c"), text("sh"), text("x/bat/ini/sed")};
    write("lang-c", kC);
    write("lang-sh", kShell);
}

void HighlightSyntaxTest::write(const char *language, const QByteArray &definition) const
{
    m_folder->write(text("list/%1.lst").arg(text(language)), definition);
    // The cache of definitions looks at the time of change only.
    static int minutes = 0;
    QFile file(m_folder->filePath(text("list/%1.lst").arg(text(language))));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(60 * ++minutes),
                             QFileDevice::FileModificationTime));
}

void HighlightSyntaxTest::theResultViewHasFileLinesAndValues()
{
    HighlightSyntax syntax(true);
    syntax.setLanguage(QString(), QString());
    QCOMPARE(syntax.rules().names(), (QStringList{text("Grep"), text("Value")}));
    QCOMPARE(syntax.rules().expression(text("Grep")).pattern(), text("^::[^\n]*"));
    QCOMPARE(syntax.rules().expression(text("Value")).pattern(),
             text("\\btrue\\b|\\bfalse\\b|\\b[0-9]+\\b|\\b0x[0-9A-Fa-f]+\\b"));
    QVERIFY(!syntax.hasBlockComments());
}

void HighlightSyntaxTest::thePreviewWithoutALanguageHasNoRules()
{
    QVERIFY(preview("").rules().names().isEmpty());
}

void HighlightSyntaxTest::anUnknownSuffixLeavesValuesAndBuiltInComments_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("comment");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("colours");
    const auto row = [](const char *suffix, const char *comment, const char *line,
                        const char *colours) {
        QTest::newRow(suffix) << text(suffix) << text(comment) << text(line) << text(colours);
    };

    row("ini", ";.*$", "a=1 ;b", "..v.cc");
    row("bat", "^.*(rem|REM|Rem).*$", "a REM b", "ccccccc");
    row("sed", "^#.*$", "#a", "cc");
    row("txt", "", "a 1 #b", "..v...");
}

void HighlightSyntaxTest::anUnknownSuffixLeavesValuesAndBuiltInComments()
{
    QFETCH(QString, suffix);
    QFETCH(QString, comment);
    QFETCH(QString, line);
    QFETCH(QString, colours);
    // lang-x, which lists all but txt, has no file. The rules before are gone.
    HighlightSyntax syntax = preview("sh");
    expectLogLine(suffix.toLatin1().constData());
    syntax.setLanguage(suffix, QString());
    QStringList names{text("Value")};
    if (!comment.isEmpty())
        names.prepend(text("Comment"));
    QCOMPARE(syntax.rules().names(), names);
    QCOMPARE(syntax.rules().expression(text("Comment")).pattern(), comment);
    QCOMPARE(coloured(syntax, line.toUtf8().constData()), colours);
    QCOMPARE(coloured(syntax, "/*a*/ //b"), text("........."));

    HighlightSyntax result(true);
    expectLogLine(suffix.toLatin1().constData());
    result.setLanguage(suffix, QString());
    QCOMPARE(result.rules().names(), (QStringList{text("Grep"), text("Value")}));
}

void HighlightSyntaxTest::anUnknownSuffixIsLogged()
{
    HighlightSyntax syntax(false);
    expectLogLine("abc");
    syntax.setLanguage(text("abc"), QString());
    expectLogLine("c", "missing");
    syntax.setLanguage(text("c"), text("missing"));
}

void HighlightSyntaxTest::noLanguageIsNotLogged()
{
    static bool logged = false;
    logged = false;
    const QtMessageHandler handler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &) { logged = true; });
    preview("");
    preview("c");
    qInstallMessageHandler(handler);
    QVERIFY(!logged);
}

void HighlightSyntaxTest::entriesBecomeNumberedRulesWordsFirst()
{
    write("lang-x",
          "[reserve]\nr.1\nr.2\n[WordReserve]\nw1\nw2\n"
          "[keywords]\nk.1\n[WordKeywords]\nv.1\nv.2\n");
    const HighlightSyntax syntax = preview("x");
    QCOMPARE(
        syntax.rules().names(),
        (QStringList{text("KeyWord_0"), text("KeyWord_1"), text("KeyWord_2"), text("Reserve_0"),
                     text("Reserve_1"), text("Reserve_2"), text("Reserve_3"), text("Value")}));
    QCOMPARE(syntax.rules().expression(text("KeyWord_0")).pattern(), text("\\bv.1\\b"));
    QCOMPARE(syntax.rules().expression(text("KeyWord_1")).pattern(), text("\\bv.2\\b"));
    QCOMPARE(syntax.rules().expression(text("KeyWord_2")).pattern(), text("k.1"));
    QCOMPARE(syntax.rules().expression(text("Reserve_2")).pattern(), text("r.1"));
    QCOMPARE(syntax.rules().expression(text("Reserve_3")).pattern(), text("r.2"));
    QCOMPARE(coloured(syntax, "w1 w2 r_1 k_1 v_1"), text("rr.rr.rrr.kkk.kkk"));
}

void HighlightSyntaxTest::wordsOfTheDefinitionMatchWhole()
{
    QCOMPARE(coloured(preview("c"), "int print if iff"), text("kkk.......rr...."));
}

void HighlightSyntaxTest::patternsOfTheDefinitionMatchAsTheyStand()
{
    write("lang-x", "[reserve]\n^#[a-z]+\n[keywords]\nab\n\n");
    QCOMPARE(coloured(preview("x"), "#if cabd #if"), text("rrr..kk....."));
}

void HighlightSyntaxTest::aBrokenPatternCostsNoOtherEntry()
{
    write("lang-x", "[reserve]\n(\nab\n[WordReserve]\n[\ncd\n");
    QCOMPARE(coloured(preview("x"), "ab ( cd"), text("rr...rr"));
}

void HighlightSyntaxTest::aDefinitionReplacesTheBuiltInComment_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QByteArray>("singleLine");
    QTest::addColumn<QString>("rule");

    for (const char *before : {"", "c", "sh"}) {
        QTest::addRow("by its own, after '%s'", before)
            << text(before) << QByteArray("!") << text("!");
        QTest::addRow("by none, after '%s'", before) << text(before) << QByteArray() << QString();
    }
}

void HighlightSyntaxTest::aDefinitionReplacesTheBuiltInComment()
{
    // Whether the language before had block comments makes no difference.
    QFETCH(QString, before);
    QFETCH(QByteArray, singleLine);
    QFETCH(QString, rule);
    write("lang-x", "[comment]\nsingleLine=" + singleLine + "\nmultiLineEnd=\n\n\n");
    for (const char *suffix : {"ini", "bat", "sed"}) {
        HighlightSyntax syntax = preview(before.toLatin1().constData());
        syntax.setLanguage(text(suffix), QString());
        QCOMPARE(syntax.rules().expression(text("Comment")).pattern(), rule);
        QCOMPARE(syntax.rules().names().contains(text("Comment")), !rule.isEmpty());
    }
}

void HighlightSyntaxTest::theResultViewHasNoCommentRule()
{
    HighlightSyntax syntax(true);
    syntax.setLanguage(text("sh"), QString());
    QCOMPARE(syntax.rules().names(),
             (QStringList{text("Grep"), text("KeyWord_0"), text("Reserve_0"), text("Value")}));
}

void HighlightSyntaxTest::blockCommentsNeedBothMarkers_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<bool>("both");

    QTest::newRow("both") << QByteArray("<") << QByteArray(">") << true;
    QTest::newRow("start only") << QByteArray("<") << QByteArray() << false;
    QTest::newRow("end only") << QByteArray() << QByteArray(">") << false;
    QTest::newRow("neither") << QByteArray() << QByteArray() << false;
}

void HighlightSyntaxTest::blockCommentsNeedBothMarkers()
{
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, end);
    QFETCH(bool, both);
    write("lang-x",
          "[comment]\nsingleLine=\nmultiLineStart=" + start + "\nmultiLineEnd=" + end + "\n\n");
    const HighlightSyntax syntax = preview("x");
    QCOMPARE(syntax.hasBlockComments(), both);
    QCOMPARE(coloured(syntax, "a<b>c"), both ? text(".bbb.") : text("....."));
}

void HighlightSyntaxTest::aDefinitionReplacesTheComments()
{
    HighlightSyntax syntax = preview("c");
    QVERIFY(syntax.hasBlockComments());
    syntax.setLanguage(text("sh"), QString());
    QVERIFY(!syntax.hasBlockComments());
    QCOMPARE(coloured(syntax, "/*a*/ //b #c"), text("..........cc"));

    write("lang-x", "[comment]\nsingleLine=\nmultiLineEnd=\n\n\n");
    syntax.setLanguage(text("x"), QString());
    QVERIFY(!syntax.rules().names().contains(text("Comment")));
    QCOMPARE(coloured(syntax, "/*a*/ //b #c"), text("............"));
}

void HighlightSyntaxTest::behindBlockCommentsThereIsNoBuiltInComment()
{
    // lang-x has no file.
    HighlightSyntax syntax = preview("c");
    expectLogLine("ini");
    syntax.setLanguage(text("ini"), QString());
    QCOMPARE(syntax.rules().names(), QStringList{text("Value")});
    QCOMPARE(coloured(syntax, "a=1 ;b"), text("..v..."));

    syntax.setLanguage(text("sh"), QString());
    expectLogLine("ini");
    syntax.setLanguage(text("ini"), QString());
    QCOMPARE(coloured(syntax, "a=1 ;b"), text("..v.cc"));
}

void HighlightSyntaxTest::aFileOfNoLanguageHasNoCommentsOfAnother_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::newRow("none") << QString();
    QTest::newRow("without a definition") << text("txt");
}

void HighlightSyntaxTest::aFileOfNoLanguageHasNoCommentsOfAnother()
{
    QFETCH(QString, suffix);
    HighlightSyntax syntax = preview("c");
    if (!suffix.isEmpty())
        expectLogLine("txt");
    syntax.setLanguage(suffix, QString());
    QVERIFY(!syntax.hasBlockComments());
    QCOMPARE(coloured(syntax, "if /*a\n*/ int //b"), text("......\n.........."));
}

void HighlightSyntaxTest::onlyASingleLineCommentDecidesAboutQuotes()
{
    write("lang-x", "[comment]\nsingleLine='\nmultiLineEnd=\n\n\n");
    HighlightSyntax syntax = preview("x");
    QVERIFY(syntax.quoteIsComment());
    expectLogLine("txt");
    syntax.setLanguage(text("txt"), QString());
    QVERIFY(!syntax.quoteIsComment());
    syntax.setLanguage(text("x"), QString());
    QVERIFY(syntax.quoteIsComment());
    syntax.setLanguage(QString(), QString());
    QVERIFY(!syntax.quoteIsComment());
    syntax.setLanguage(text("x"), QString());
    write("lang-x", "[comment]\nsingleLine=\nmultiLineEnd=\n\n\n");
    syntax.setLanguage(text("x"), QString());
    QVERIFY(syntax.quoteIsComment());
    QCOMPARE(coloured(syntax, "'a'"), text("..."));
    syntax.setLanguage(text("c"), QString());
    QVERIFY(!syntax.quoteIsComment());
    QCOMPARE(coloured(syntax, "'a'"), text("sss"));
    syntax.setLanguage(text("x"), QString());
    QVERIFY(!syntax.quoteIsComment());
}

void HighlightSyntaxTest::theBuiltInCommentDoesNotDecideAboutQuotes()
{
    write("lang-sh", "[comment]\nsingleLine='\nmultiLineEnd=\n\n\n");
    HighlightSyntax syntax = preview("sh");
    expectLogLine("ini");
    syntax.setLanguage(text("ini"), QString());
    QVERIFY(syntax.rules().names().contains(text("Comment")));
    QVERIFY(!syntax.quoteIsComment());
}

void HighlightSyntaxTest::aLanguageDropsWhatWasFound()
{
    HighlightSyntax syntax = preview("c");
    syntax.setFind(1, QRegExp(text("a")));
    syntax.setFind(2, QRegExp(text("b")));
    syntax.setLanguage(text("c"), QString());
    QCOMPARE(coloured(syntax, "ab"), text(".."));
}

void HighlightSyntaxTest::aSingleQuoteInTheCommentMarkerMeansNoStrings()
{
    write("lang-x", "[comment]\nsingleLine='\nmultiLineStart=$.\nmultiLineEnd=$.\n\n");
    QCOMPARE(coloured(preview("x"), "a \"b'c\" 'd\"e"), text("..ddddd.cccc"));
}

void HighlightSyntaxTest::fileLinesAreColouredInTheResultView()
{
    HighlightSyntax syntax(true);
    syntax.setLanguage(QString(), QString());
    QCOMPARE(coloured(syntax, "::/a/b c\n ::d"), text("ffffffff\n...."));
    // By the order of the rules' names.
    QCOMPARE(coloured(syntax, "::/a/12"), text("fffffvv"));
}

void HighlightSyntaxTest::valuesAreColoured_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("colours");
    const auto row = [](const char *line, const char *colours) {
        QTest::newRow(line) << text(line) << text(colours);
    };

    row("12 a1 1a", "vv......");
    row("3.14", "v.vv");
    row("0x1F 0xG 0x", "vvvv.......");
    row("true false True trues", "vvvv.vvvvv...........");
    row("  12:  3:a", "..vv...v..");
}

void HighlightSyntaxTest::valuesAreColoured()
{
    QFETCH(QString, line);
    QFETCH(QString, colours);
    HighlightSyntax result(true);
    result.setLanguage(QString(), QString());
    QCOMPARE(coloured(result, line.toUtf8().constData()), colours);
    QCOMPARE(coloured(preview("c"), line.toUtf8().constData()), colours);
}

void HighlightSyntaxTest::reservedWordsCoverKeywords()
{
    write("lang-x", "[WordReserve]\na\n[WordKeywords]\na\nb\n");
    QCOMPARE(coloured(preview("x"), "a b"), text("r.k"));
}

void HighlightSyntaxTest::ruleTenComesBeforeRuleTwo()
{
    // Rules 0 to 10; the third covers the eleventh.
    write("lang-x",
          "[reserve]\nn0\nn1\nabc\nn3\nn4\nn5\nn6\nn7\nn8\nn9\nbcd\n"
          "[keywords]\n\n");
    const HighlightSyntax syntax = preview("x");
    QCOMPARE(syntax.rules().names().indexOf(text("Reserve_10")),
             syntax.rules().names().indexOf(text("Reserve_2")) - 1);
    QStringList order;
    syntax.visitColours({text("abcd")}, [&](int start, int, HighlightColour) {
        order.append(QString::number(start));
    });
    QCOMPARE(order, (QStringList{text("1"), text("0")}));
}

void HighlightSyntaxTest::aLineCommentReachesToTheEndOfItsLine()
{
    QCOMPARE(coloured(preview("c"), "a //b c\nd"), text("..ccccc\n."));
}

void HighlightSyntaxTest::aLineCommentCoversTheWordsInsideIt()
{
    QCOMPARE(coloured(preview("c"), "int //int if 12"), text("kkk.ccccccccccc"));
}

void HighlightSyntaxTest::withoutBlockCommentsTheWordsInACommentKeepTheirColours()
{
    QCOMPARE(coloured(preview("sh"), "a #int 12 b"), text("..ckkkcvvcc"));
}

void HighlightSyntaxTest::stringsCoverWords()
{
    QCOMPARE(coloured(preview("c"), "int \"int 12\" 'if' if"), text("kkk.dddddddd.ssss.rr"));
    QCOMPARE(coloured(preview("c"), "a \"int"), text("..dddd"));
    QCOMPARE(coloured(preview("c"), "a \"b /* c\nint"), text("..ddddddd\nkkk"));
}

void HighlightSyntaxTest::stringsCoverACommentRule()
{
    QCOMPARE(coloured(preview("sh"), "\"a #b\" #c \"d\""), text("ddddddccccddd"));
}

void HighlightSyntaxTest::aQuoteInACommentOpensNoString()
{
    QCOMPARE(coloured(preview("c"), "a // \"b\" isn't"), text("..cccccccccccc"));
    QCOMPARE(coloured(preview("c"), "/* don't */ a 'b'"), text("bbbbbbbbbbb...sss"));
}

void HighlightSyntaxTest::blockCommentsCoverAll()
{
    QCOMPARE(coloured(preview("c"), "int /* int \"a\" // 12\nif */ if"),
             text("kkk.bbbbbbbbbbbbbbbb\nbbbbb.rr"));
}

void HighlightSyntaxTest::aCommentInAStringIsNone()
{
    QCOMPARE(coloured(preview("c"), "\"//a\" '/*b' //c"), text("ddddd.sssss.ccc"));
}

void HighlightSyntaxTest::foundTextCoversAll()
{
    HighlightSyntax syntax = preview("c");
    QVERIFY(syntax.setFind(1, QRegExp(text("x"))));
    QCOMPARE(coloured(syntax, "x \"x\" /*x*/ //x"), text("1.d1d.bb1bb.cc1"));
}

void HighlightSyntaxTest::theSecondFindCoversTheFirst()
{
    HighlightSyntax syntax = preview("");
    syntax.setFind(2, QRegExp(text("bc")));
    syntax.setFind(1, QRegExp(text("ab")));
    QCOMPARE(coloured(syntax, "abc"), text("122"));
}

void HighlightSyntaxTest::oneFindLeavesTheSecondInPlace()
{
    HighlightSyntax syntax = preview("");
    syntax.setFind(1, QRegExp(text("a")));
    syntax.setFind(2, QRegExp(text("b")));
    syntax.setFind(1, QRegExp(text("c")));
    QCOMPARE(coloured(syntax, "abc"), text(".21"));
}

void HighlightSyntaxTest::anEmptyFindIsRemoved()
{
    HighlightSyntax syntax = preview("");
    syntax.setFind(1, QRegExp(text("a")));
    QVERIFY(syntax.setFind(1, QRegExp(QString())));
    QVERIFY(syntax.rules().names().isEmpty());
}

void HighlightSyntaxTest::aFindThatChangesNothingSaysSo()
{
    HighlightSyntax syntax = preview("");
    QVERIFY(!syntax.setFind(1, QRegExp()));
    QVERIFY(syntax.setFind(1, QRegExp(text("a"))));
    QVERIFY(!syntax.setFind(1, QRegExp(text("a"))));
    QVERIFY(syntax.setFind(1, QRegExp(text("a"), Qt::CaseInsensitive)));
}

void HighlightSyntaxTest::theLastCommentIsToldOf()
{
    const HighlightSyntax syntax = preview("c");
    const auto commentOf = [&syntax](const char *line) {
        return syntax.visitColours({text(line)}, [](int, int, HighlightColour) {});
    };
    QCOMPARE(commentOf("a b"), (TextSpan{-1, -1}));
    QCOMPARE(commentOf("a //b"), (TextSpan{2, 5}));
    QCOMPARE(commentOf("a /*b*/ /**/ c"), (TextSpan{8, 12}));
    QCOMPARE(commentOf("a /*b*/ //c"), (TextSpan{2, 7}));
}

void HighlightSyntaxTest::colouredPartsBeginBeforeTheLimit()
{
    HighlightSyntax syntax = preview("c");
    syntax.setFind(1, QRegExp(text("x")));
    const QString line = text("int \"a\" int \"b\" x x").repeated(2);
    const QString all = ColouredText::lettersOf(syntax, {line}).constFirst();
    for (int limit = 0; limit <= line.size(); ++limit) {
        QString letters(line.size(), QLatin1Char('.'));
        syntax.visitColours({line, 0, limit}, [&](int start, int length, HighlightColour part) {
            QVERIFY(start < limit);
            letters.replace(start, length, QString(length, ColouredText::letterOf(part)));
        });
        QCOMPARE(letters.left(limit), all.left(limit));
    }
}

void HighlightSyntaxTest::stringsAreColouredInTheResultView()
{
    HighlightSyntax syntax(true);
    syntax.setLanguage(QString(), QString());
    QCOMPARE(coloured(syntax, "  1: 1:a \"b\" 'c'"), text("..v..v...ddd.sss"));
}

void HighlightSyntaxTest::anyDefinitionIsSurvived_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 60; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void HighlightSyntaxTest::anyDefinitionIsSurvived()
{
    QFETCH(quint32, seed);
    static const char *const pieces[] = {"[reserve]\n",
                                         "[keywords]\n",
                                         "[WordReserve]\n",
                                         "[WordKeywords]\n",
                                         "[comment]\n",
                                         "singleLine=",
                                         "multiLineStart=",
                                         "multiLineEnd=",
                                         "\n",
                                         "\n",
                                         "(",
                                         ")",
                                         "[",
                                         "]",
                                         "{2,3}",
                                         "*",
                                         "+",
                                         "?",
                                         "\\",
                                         "\\b",
                                         "^",
                                         "$",
                                         "|",
                                         "a",
                                         "ab",
                                         "'",
                                         "\"",
                                         ".",
                                         " "};
    std::mt19937 random(seed);
    QByteArray definition;
    for (int i = 0; i < 400; ++i)
        definition += pieces[random() % std::size(pieces)];
    write("lang-x", definition);
    HighlightSyntax syntax = preview("x");
    syntax.setFind(1, QRegExp(text("a|\\b|")));
    QStringList lines;
    for (int i = 0; i < 50; ++i) {
        QString line;
        for (int length = static_cast<int>(random() % 30); length > 0; --length)
            line += text(pieces[10 + random() % (std::size(pieces) - 10)]);
        lines.append(line);
    }
    QCOMPARE(ColouredText::lettersOf(syntax, lines).size(), lines.size());
}

QTEST_GUILESS_MAIN(HighlightSyntaxTest)
#include "HighlightSyntaxTest.moc"
