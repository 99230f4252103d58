#include "view/Highlighter.h"

#include "settings/AppSettings.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "view/BlockData.h"

#include <QPlainTextDocumentLayout>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <memory>
#include <random>

using Mode = Highlighter::Mode;

Q_DECLARE_METATYPE(Highlighter::Mode)

/// Letters of the expected colours: c comment, k keyword, r reserved word, v
/// value, f file line, 1 and 2 found, s string literal.
class HighlighterTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    // Every line
    void nothingIsColouredBeforeALanguageIsSet();
    void noLanguageIsALanguageToo();
    void aLanguageColoursTheWholeText();
    void aNewTextIsColoured();
    void changedLinesAreColoured();
    void linesBehindAChangeAreColoured();
    void theStateOfABlockSaysWhetherItEndsInsideAComment();
    void anEmptyLineOutsideACommentHasNoState();
    void aNewLanguageResetsTheStates();
    void aLineRemembersItsComment();
    void everyColouredLineHasValidData();
    void commentBlocksAreCounted();
    void openCommentsAreKnownByTheirLines();
    void nestedCommentsThatChangeColourTheLinesBehind();
    void findsColourTheWholeTextAgain();
    void oneFindLeavesTheSecondInPlace();
    void newColoursAreTakenOver();
    void theHighlighterBelongsToItsDocument();
    void anyChangesGiveTheColoursOfTheText_data();
    void anyChangesGiveTheColoursOfTheText();

    // On demand
    void onlyLinesThatWereAskedForAreColoured();
    void linesBeyondTheTextArePassedOver();
    void nothingIsColouredOnDemandBeforeALanguageIsSet();
    void aLineKeepsItsColoursUntilSomethingChanges();
    void aChangedLineLosesItsColours();
    void aTextThatWasThereBeforeIsColouredOnDemandOnly();
    void colouringIsNoChangeOfTheDocument_data();
    void colouringIsNoChangeOfTheDocument();
    void colouringIsNoStepToUndo();
    void whatChangesColoursElsewhereIsAnnounced();
    void growingResultsAreNotAnnounced();
    void aLongLineIsColouredAsFarAsAskedFor();
    void longLinesKeepTheirColoursApart();
    void aChangedLongLineLosesItsColours();
    void anyLinesHaveTheColoursOfTheWholeText_data();
    void anyLinesHaveTheColoursOfTheWholeText();

private:
    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<QTextDocument> m_document;
    Highlighter *m_highlighter = nullptr;

    void make(const char *content, const char *suffix, Mode mode = Mode::Everything);
    QString colours() const;
    QTextBlock line(int number) const { return m_document->findBlockByNumber(number); }
    void insert(int position, const char *content);
    void erase(int position, int length);
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QChar letterOf(const QTextCharFormat &format)
{
    static const QHash<QString, char> letters = {{text("#000001"), 'c'}, {text("#000002"), 'k'},
                                                 {text("#000003"), 'r'}, {text("#000004"), 'v'},
                                                 {text("#000005"), 'f'}, {text("#000008"), 's'}};
    if (format.background().color() == QColor(0, 0, 6))
        return QLatin1Char('1');
    if (format.background().color() == QColor(0, 0, 7))
        return QLatin1Char('2');
    return QLatin1Char(letters.value(format.foreground().color().name(), '?'));
}

QString coloursOf(const QTextBlock &block)
{
    QString letters(block.length() - 1, QLatin1Char('.'));
    for (const QTextLayout::FormatRange &range : block.layout()->formats())
        letters.replace(range.start, range.length, QString(range.length, letterOf(range.format)));
    return letters;
}

QString coloursOf(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        lines.append(coloursOf(block));
    return lines.join(QLatin1Char('\n'));
}

/// As a text view makes it; a document without a layout tells of no change.
std::unique_ptr<QTextDocument> makeDocument()
{
    auto document = std::make_unique<QTextDocument>();
    document->setDocumentLayout(new QPlainTextDocumentLayout(document.get()));
    return document;
}

QStringList freshColours(const QString &content, const char *suffix, const QRegExp &find)
{
    const std::unique_ptr<QTextDocument> owner = makeDocument();
    QTextDocument &document = *owner;
    auto *highlighter = new Highlighter(&document, false);
    highlighter->setLanguage(text(suffix));
    highlighter->setFind(find);
    document.setPlainText(content);
    return coloursOf(document).split(QLatin1Char('\n'));
}

const BlockData *dataOf(const QTextBlock &block)
{
    return static_cast<BlockData *>(block.userData());
}

/// Changes that open, close and nest comments, join and split lines.
class RandomEdit {
public:
    explicit RandomEdit(quint32 seed) : m_random(seed) { }

    void apply(QTextDocument &document)
    {
        static const char *const pieces[] = {"/*", "*/", "\n", "\n\n",     "int",    " ",
                                             "\"", "//", "12", "/*\n/*\n", "*/\n*/", "x"};
        QTextCursor cursor(&document);
        cursor.setPosition(at(document));
        cursor.setPosition(std::min(cursor.position() + static_cast<int>(m_random() % 6),
                                    document.characterCount() - 1),
                           QTextCursor::KeepAnchor);
        if (m_random() % 10 == 0)
            document.undo();
        else if (m_random() % 3 == 0)
            cursor.removeSelectedText();
        else
            cursor.insertText(text(pieces[m_random() % std::size(pieces)]));
    }

    int number(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

private:
    int at(const QTextDocument &document) { return number(document.characterCount()); }

    std::mt19937 m_random;
};

} // namespace

void HighlighterTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    AppSettings &settings = AppSettings::instance();
    settings.load(m_folder->path());
    settings.commentcolor = QColor(0, 0, 1);
    settings.keywordcolor = QColor(0, 0, 2);
    settings.reservecolor = QColor(0, 0, 3);
    settings.valuecolor = QColor(0, 0, 4);
    settings.fnamecolor = QColor(0, 0, 5);
    settings.findcolor1 = QColor(0, 0, 6);
    settings.findcolor2 = QColor(0, 0, 7);
    settings.reteralcolor = QColor(0, 0, 8);
    settings.langlist = QStringList{text("c"), text("sh")};
    settings.langlistValues = settings.langlist;
    m_folder->write(text("list/c.lst"),
                    "[comment]\nsingleLine=//\nmultiLineStart=/\\*\n"
                    "multiLineEnd=\\*/\n[WordReserve]\nif\n"
                    "[WordKeywords]\nint\n");
    m_folder->write(text("list/sh.lst"),
                    "[comment]\nsingleLine=#.*$\nmultiLineEnd=\n"
                    "[WordReserve]\nif\n");
}

void HighlighterTest::cleanup()
{
    m_document.reset();
}

void HighlighterTest::make(const char *content, const char *suffix, Mode mode)
{
    m_document = makeDocument();
    m_highlighter = new Highlighter(m_document.get(), false, mode);
    m_highlighter->setTurn(kPatienceMilliseconds); // what is asked for is coloured at once
    m_highlighter->setLanguage(text(suffix));
    m_document->setPlainText(text(content));
}

QString HighlighterTest::colours() const
{
    return coloursOf(*m_document);
}

void HighlighterTest::insert(int position, const char *content)
{
    QTextCursor cursor(m_document.get());
    cursor.setPosition(position);
    cursor.insertText(text(content));
}

void HighlighterTest::erase(int position, int length)
{
    QTextCursor cursor(m_document.get());
    cursor.setPosition(position);
    cursor.setPosition(position + length, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void HighlighterTest::nothingIsColouredBeforeALanguageIsSet()
{
    const std::unique_ptr<QTextDocument> owner = makeDocument();
    QTextDocument &document = *owner;
    auto *highlighter = new Highlighter(&document, true);
    document.setPlainText(text("::/a\n12"));
    QCOMPARE(coloursOf(document), text("....\n.."));
    highlighter->setFind(QRegExp(text("a")));
    QCOMPARE(coloursOf(document), text("....\n.."));
    QCOMPARE(highlighter->commentBlocks(), 0);
}

void HighlighterTest::noLanguageIsALanguageToo()
{
    const std::unique_ptr<QTextDocument> owner = makeDocument();
    QTextDocument &document = *owner;
    auto *highlighter = new Highlighter(&document, true);
    document.setPlainText(text("::/a\n12"));
    highlighter->setLanguage(QString());
    QCOMPARE(coloursOf(document), text("ffff\nvv"));
}

void HighlighterTest::aLanguageColoursTheWholeText()
{
    make("int a\n12 #b", "c");
    QCOMPARE(colours(), text("kkk..\nvv..."));
    m_highlighter->setLanguage(text("sh"));
    QCOMPARE(colours(), text(".....\nvv.cc"));
    m_highlighter->setLanguage(QString(), text("c"));
    QCOMPARE(colours(), text("kkk..\nvv..."));
    m_highlighter->setLanguage(QString());
    QCOMPARE(colours(), text(".....\n....."));
}

void HighlighterTest::aNewTextIsColoured()
{
    make("int", "c");
    m_document->setPlainText(text("a /*\nb */ if"));
    QCOMPARE(colours(), text("..cc\ncccc.rr"));
}

void HighlighterTest::changedLinesAreColoured()
{
    make("int a\nint b", "c");
    insert(2, "x");
    QCOMPARE(colours(), text("......\nkkk.."));
    erase(2, 1);
    QCOMPARE(colours(), text("kkk..\nkkk.."));
    insert(3, "\n12");
    QCOMPARE(colours(), text("kkk\nvv..\nkkk.."));
}

void HighlighterTest::linesBehindAChangeAreColoured()
{
    make("a\nint\n\nint */ int", "c");
    insert(1, " /*");
    QCOMPARE(colours(), text("..cc\nccc\n\ncccccc.kkk"));
    erase(2, 2);
    QCOMPARE(colours(), text("..\nkkk\n\nkkk....kkk"));
}

void HighlighterTest::theStateOfABlockSaysWhetherItEndsInsideAComment()
{
    make("a\n/*\n\nb\n*/\n/*c*/", "c");
    const int expected[] = {-1, 1, 1, 1, -1, -1};
    for (int number = 0; number < 6; ++number)
        QCOMPARE(line(number).userState(), expected[number]);
}

void HighlighterTest::anEmptyLineOutsideACommentHasNoState()
{
    make("/*\n\n*/\n", "c");
    QCOMPARE(line(1).userState(), 1);
    QCOMPARE(line(3).userState(), -1);
    erase(0, 2);
    QCOMPARE(line(1).userState(), -1);
    QCOMPARE(line(0).userState(), -1);
}

void HighlighterTest::aNewLanguageResetsTheStates()
{
    make("/*\na", "c");
    QCOMPARE(line(1).userState(), 1);
    m_highlighter->setLanguage(text("sh"));
    QCOMPARE(line(0).userState(), -1);
    QCOMPARE(line(1).userState(), -1);
}

void HighlighterTest::aLineRemembersItsComment()
{
    make("a //b\nc\n/*d*/ /*e\n f*/ g", "c");
    QCOMPARE(dataOf(line(0))->commentStart, 2);
    QCOMPARE(dataOf(line(0))->commentEnd, 5);
    QCOMPARE(dataOf(line(1))->commentStart, -1);
    QCOMPARE(dataOf(line(1))->commentEnd, -1);
    QCOMPARE(dataOf(line(2))->commentStart, 6);
    QCOMPARE(dataOf(line(2))->commentEnd, 9);
    QCOMPARE(dataOf(line(3))->commentStart, 0);
    QCOMPARE(dataOf(line(3))->commentEnd, 4);
    erase(2, 3);
    QCOMPARE(dataOf(line(0))->commentStart, -1);
}

void HighlighterTest::everyColouredLineHasValidData()
{
    QVERIFY(BlockData().valid);
    make("a\n/*\n", "c");
    for (int number = 0; number < 3; ++number)
        QVERIFY(dataOf(line(number)) && dataOf(line(number))->valid);
}

void HighlighterTest::commentBlocksAreCounted()
{
    make("a\n/*\n\nb\n*/\n/*c*/\n/*", "c");
    QCOMPARE(m_highlighter->commentBlocks(), 4);
    erase(line(2).position(), 1);
    QCOMPARE(m_highlighter->commentBlocks(), 3);
    erase(line(1).position(), 2);
    QCOMPARE(m_highlighter->commentBlocks(), 1);
    m_highlighter->setFind(QRegExp(text("a")));
    QCOMPARE(m_highlighter->commentBlocks(), 1);
    m_highlighter->setLanguage(text("c"));
    QCOMPARE(m_highlighter->commentBlocks(), 1);
    m_highlighter->setLanguage(text("sh"));
    QCOMPARE(m_highlighter->commentBlocks(), 0);
}

void HighlighterTest::openCommentsAreKnownByTheirLines()
{
    make("a\n/*\n/*\n*/", "c");
    QCOMPARE(m_highlighter->openComments(0), QVector<int>());
    QCOMPARE(m_highlighter->openComments(2), (QVector<int>{2, 3}));
    QCOMPARE(m_highlighter->openComments(3), QVector<int>{2});
    QCOMPARE(m_highlighter->openComments(99), QVector<int>{2});
    QCOMPARE(m_highlighter->openComments(-1), QVector<int>());
    insert(0, "\n");
    QCOMPARE(m_highlighter->openComments(3), (QVector<int>{3, 4}));
}

void HighlighterTest::nestedCommentsThatChangeColourTheLinesBehind()
{
    // The states of the second and third line stay 1 while the depth changes.
    make("/*\na\nb\n*/\nint", "c");
    QCOMPARE(colours(), text("cc\nc\nc\ncc\nkkk"));
    insert(line(1).position(), "/*");
    QTRY_COMPARE_WITH_TIMEOUT(colours(), text("cc\nccc\nc\ncc\nccc"), kPatienceMilliseconds);
    erase(line(1).position(), 2);
    QTRY_COMPARE_WITH_TIMEOUT(colours(), text("cc\nc\nc\ncc\nkkk"), kPatienceMilliseconds);
}

void HighlighterTest::findsColourTheWholeTextAgain()
{
    make("a int\nab", "c");
    m_highlighter->setFind(QRegExp(text("a")));
    QCOMPARE(colours(), text("1.kkk\n1."));
    m_highlighter->setFind(QRegExp(text("b")), QRegExp(text("nt")));
    QCOMPARE(colours(), text("..k22\n.1"));
    m_highlighter->setFind(QRegExp(), QRegExp());
    QCOMPARE(colours(), text("..kkk\n.."));
}

void HighlighterTest::oneFindLeavesTheSecondInPlace()
{
    make("a b c", "");
    m_highlighter->setFind(QRegExp(text("a")), QRegExp(text("b")));
    QCOMPARE(colours(), text("1.2.."));
    m_highlighter->setFind(QRegExp(text("c")));
    QCOMPARE(colours(), text("..2.1"));
    m_highlighter->setFind(QRegExp());
    QCOMPARE(colours(), text("..2.."));
}

void HighlighterTest::newColoursAreTakenOver()
{
    make("12", "c");
    AppSettings::instance().valuecolor = QColor(0, 0, 3);
    QCOMPARE(colours(), text("vv"));
    m_highlighter->reloadColours();
    QCOMPARE(colours(), text("rr"));
}

void HighlighterTest::theHighlighterBelongsToItsDocument()
{
    std::unique_ptr<QTextDocument> document = makeDocument();
    const QPointer<Highlighter> highlighter = new Highlighter(document.get(), false);
    QCOMPARE(highlighter->document(), document.get());
    document.reset();
    QVERIFY(!highlighter);
}

void HighlighterTest::anyChangesGiveTheColoursOfTheText_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 12; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void HighlighterTest::anyChangesGiveTheColoursOfTheText()
{
    QFETCH(quint32, seed);
    make("int a\n/* b\nc\n*/ if\n// d\n\"e\"\n/* f */\n", "c");
    m_highlighter->setFind(QRegExp(text("x")));
    RandomEdit edit(seed);
    for (int i = 0; i < 150; ++i) {
        edit.apply(*m_document);
        QCoreApplication::processEvents();
        const QString content = m_document->toPlainText();
        QCOMPARE(colours(), freshColours(content, "c", QRegExp(text("x"))).join(QLatin1Char('\n')));
    }
}

void HighlighterTest::onlyLinesThatWereAskedForAreColoured()
{
    make("/*\na\n*/ int\nint\nint", "c", Mode::OnDemand);
    QCOMPARE(colours(), text("..\n.\n......\n...\n..."));
    m_highlighter->colourLines(1, 3);
    QCOMPARE(colours(), text("..\nc\ncc.kkk\nkkk\n..."));
    QVERIFY(!line(4).userData());
}

void HighlighterTest::linesBeyondTheTextArePassedOver()
{
    make("1\n2", "c", Mode::OnDemand);
    m_highlighter->colourLines(-5, 0);
    QCOMPARE(colours(), text("v\n."));
    m_highlighter->colourLines(1, 1000);
    QCOMPARE(colours(), text("v\nv"));
    m_highlighter->colourLines(5, 9);
    m_highlighter->colourLines(1, 0);
    m_document->clear();
    m_highlighter->colourLines(0, 0);
}

void HighlighterTest::nothingIsColouredOnDemandBeforeALanguageIsSet()
{
    const std::unique_ptr<QTextDocument> owner = makeDocument();
    QTextDocument &document = *owner;
    auto *highlighter = new Highlighter(&document, true, Mode::OnDemand);
    document.setPlainText(text("12"));
    highlighter->colourLines(0, 0);
    QCOMPARE(coloursOf(document), text(".."));
}

void HighlighterTest::aLineKeepsItsColoursUntilSomethingChanges()
{
    make("1\n2\n3", "c", Mode::OnDemand);
    m_highlighter->colourLines(0, 2);
    insert(0, "a ");
    m_highlighter->setFind(QRegExp(text("9")));
    m_highlighter->colourLines(2, 2);
    QCOMPARE(colours(), text("...\nv\nv"));
    m_highlighter->setFind(QRegExp(text("2")));
    m_highlighter->colourLines(0, 2);
    QCOMPARE(colours(), text("..v\n1\nv"));
}

void HighlighterTest::aChangedLineLosesItsColours()
{
    make("12 12\n34", "c", Mode::OnDemand);
    m_highlighter->colourLines(0, 1);
    insert(2, "\n5");
    QCOMPARE(colours(), text("..\n....\nvv"));
    m_highlighter->colourLines(0, 2);
    QCOMPARE(colours(), text("vv\nv.vv\nvv"));
    erase(1, 3);
    QCOMPARE(colours(), text("....\nvv"));
}

void HighlighterTest::aTextThatWasThereBeforeIsColouredOnDemandOnly()
{
    const std::unique_ptr<QTextDocument> owner = makeDocument();
    QTextDocument &document = *owner;
    document.setPlainText(text("1\n2"));
    auto *highlighter = new Highlighter(&document, false, Mode::OnDemand);
    highlighter->setLanguage(text("c"));
    highlighter->colourLines(0, 0);
    QCOMPARE(coloursOf(document), text("v\n."));
    // The platform's own pass over all lines, which it puts off until now.
    QCoreApplication::processEvents();
    highlighter->colourLines(0, 0);
    QCOMPARE(coloursOf(document), text("v\n."));
    highlighter->rehighlight();
    QCOMPARE(coloursOf(document), text(".\n."));
    highlighter->colourLines(1, 1);
    QCOMPARE(coloursOf(document), text(".\nv"));
}

void HighlighterTest::colouringIsNoChangeOfTheDocument_data()
{
    QTest::addColumn<bool>("undo");
    QTest::newRow("with undo") << true;
    QTest::newRow("without undo") << false;
}

void HighlighterTest::colouringIsNoChangeOfTheDocument()
{
    QFETCH(bool, undo);
    make("int a\n/*\n", "c", Mode::OnDemand);
    m_document->setUndoRedoEnabled(undo);
    for (bool modified : {false, true}) {
        m_document->setModified(modified);
        QSignalSpy changed(m_document.get(), &QTextDocument::contentsChanged);
        QSignalSpy change(m_document.get(), &QTextDocument::contentsChange);
        QSignalSpy modification(m_document.get(), &QTextDocument::modificationChanged);
        m_highlighter->setFind(QRegExp(modified ? text("a") : text("i")));
        m_highlighter->colourLines(0, 2);
        QCOMPARE(changed.count() + change.count() + modification.count(), 0);
        QCOMPARE(m_document->isModified(), modified);
    }
}

void HighlighterTest::colouringIsNoStepToUndo()
{
    make("", "c", Mode::OnDemand);
    for (const char *letter : {"i", "n", "t"}) {
        insert(m_document->characterCount() - 1, letter);
        m_highlighter->colourLines(0, 0);
    }
    QCOMPARE(colours(), text("kkk"));
    m_document->undo();
    QCOMPARE(m_document->toPlainText(), QString());
    QVERIFY(!m_document->isUndoAvailable());
    m_document->redo();
    m_highlighter->colourLines(0, 0);
    QCOMPARE(colours(), text("kkk"));
}

void HighlighterTest::whatChangesColoursElsewhereIsAnnounced()
{
    make("a\nb", "c", Mode::OnDemand);
    QSignalSpy outdated(m_highlighter, &Highlighter::coloursOutdated);
    insert(0, "/*");
    QCOMPARE(outdated.count(), 1);
    m_highlighter->setFind(QRegExp(text("a")));
    QCOMPARE(outdated.count(), 2);
    m_highlighter->setFind(QRegExp(text("a")));
    QCOMPARE(outdated.count(), 2);
    m_highlighter->setLanguage(text("sh"));
    QCOMPARE(outdated.count(), 3);
    m_highlighter->reloadColours();
    QCOMPARE(outdated.count(), 4);
    m_highlighter->colourLines(0, 1);
    insert(0, "#");
    QCOMPARE(outdated.count(), 4);
}

void HighlighterTest::growingResultsAreNotAnnounced()
{
    const std::unique_ptr<QTextDocument> owner = makeDocument();
    QTextDocument &document = *owner;
    auto *highlighter = new Highlighter(&document, true, Mode::OnDemand);
    highlighter->setLanguage(QString());
    QSignalSpy outdated(highlighter, &Highlighter::coloursOutdated);
    QTextCursor cursor(&document);
    for (int i = 0; i < 100; ++i)
        cursor.insertText(text("::/a\n    1:   1:b\n"));
    QCOMPARE(outdated.count(), 0);
    highlighter->colourLines(0, 1);
    QCOMPARE(coloursOf(document.begin()), text("ffff"));
    QCOMPARE(coloursOf(document.findBlockByNumber(1)), text("....v....v.."));
    QCOMPARE(coloursOf(document.findBlockByNumber(2)), text("...."));
}

void HighlighterTest::aLongLineIsColouredAsFarAsAskedFor()
{
    make("12 34 56 78\n9", "c", Mode::OnDemand);
    m_highlighter->colourLines(0, 1, 4);
    QCOMPARE(colours(), text("vv.vv......\nv"));
    m_highlighter->colourLines(0, 1, 3);
    QCOMPARE(colours(), text("vv.vv......\nv"));
    m_highlighter->colourLines(0, 1, 9);
    QCOMPARE(colours(), text("vv.vv.vv...\nv"));
    m_highlighter->colourLines(0, 1);
    QCOMPARE(colours(), text("vv.vv.vv.vv\nv"));
}

void HighlighterTest::longLinesKeepTheirColoursApart()
{
    make("", "c", Mode::OnDemand);
    m_highlighter->keepLongLinesApart();
    m_document->setPlainText(text("12 ").repeated(Highlighter::kLongLine / 3 + 1) + text("\n12"));
    m_highlighter->colourLines(0, 1, 5);
    QVERIFY(line(0).layout()->formats().isEmpty());
    const QVector<QTextLayout::FormatRange> ranges = dataOf(line(0))->colours;
    QCOMPARE(ranges.size(), 2);
    QCOMPARE(ranges.at(1).start, 3);
    QCOMPARE(ranges.at(1).length, 2);
    QCOMPARE(letterOf(ranges.at(1).format), QLatin1Char('v'));
    // Others as ever.
    QCOMPARE(coloursOf(line(1)), text("vv"));
    QVERIFY(dataOf(line(1))->colours.isEmpty());

    m_highlighter->setFind(QRegExp(text("2")));
    m_highlighter->colourLines(0, 1, 3);
    QCOMPARE(dataOf(line(0))->colours.size(), 2);
    QCOMPARE(letterOf(dataOf(line(0))->colours.at(1).format), QLatin1Char('1'));

    erase(0, Highlighter::kLongLine - 6);
    m_highlighter->colourLines(0, 0);
    QVERIFY(dataOf(line(0))->colours.isEmpty());
    QVERIFY(!line(0).layout()->formats().isEmpty());
}

void HighlighterTest::aChangedLongLineLosesItsColours()
{
    make("", "c", Mode::OnDemand);
    m_highlighter->keepLongLinesApart();
    m_document->setPlainText(text("12 ").repeated(Highlighter::kLongLine));
    m_highlighter->colourLines(0, 0, 100);
    QVERIFY(!dataOf(line(0))->colours.isEmpty());
    insert(0, "x");
    QVERIFY(dataOf(line(0))->colours.isEmpty());
    m_highlighter->colourLines(0, 0, 5);
    QCOMPARE(dataOf(line(0))->colours.size(), 1);
    QCOMPARE(dataOf(line(0))->colours.at(0).start, 4);
}

void HighlighterTest::anyLinesHaveTheColoursOfTheWholeText_data()
{
    anyChangesGiveTheColoursOfTheText_data();
}

void HighlighterTest::anyLinesHaveTheColoursOfTheWholeText()
{
    QFETCH(quint32, seed);
    make("int a\n/* b\nc\n*/ if\n// d\n\"e\"\n/* f */\n", "c", Mode::OnDemand);
    m_highlighter->setFind(QRegExp(text("x")));
    RandomEdit edit(seed);
    for (int i = 0; i < 300; ++i) {
        edit.apply(*m_document);
        if (edit.number(3) == 0)
            continue;
        const int first = edit.number(m_document->blockCount());
        const int last = std::min(first + edit.number(6), m_document->blockCount() - 1);
        m_highlighter->colourLines(first, last);
        const QStringList fresh = freshColours(m_document->toPlainText(), "c", QRegExp(text("x")));
        for (int number = first; number <= last; ++number)
            QCOMPARE(coloursOf(line(number)), fresh.at(number));
    }
}

QTEST_MAIN(HighlighterTest)
#include "HighlighterTest.moc"
