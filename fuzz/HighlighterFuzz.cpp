#include "fuzz/FuzzInput.h"
#include "fuzz/FuzzedLanguage.h"
#include "view/BlockData.h"
#include "view/Highlighter.h"

#include <QGuiApplication>
#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <memory>

namespace {

constexpr int kMostEdits = 24;
constexpr int kLongestText = 1024; // UTF-16 code units; a search in it costs about as many looks

/// Never deleted: at the process's end what it needs may be gone before it.
void startApplication()
{
    static int count = 1;
    static char name[] = "fuzzer";
    static char *arguments[] = {name, nullptr};
    static const bool prepared = qputenv("QT_QPA_PLATFORM", "minimal");
    static QGuiApplication *const application = new QGuiApplication(count, arguments);
    Q_UNUSED(prepared)
    Q_UNUSED(application)
}

/// A text in its colours, as a view holds it.
class ColouredDocument {
public:
    explicit ColouredDocument(Highlighter::Mode mode) : m_mode(mode)
    {
        m_document.setDocumentLayout(new QPlainTextDocumentLayout(&m_document));
        m_highlighter = new Highlighter(&m_document, false, mode);
        // No clock has a say in what is coloured.
        m_highlighter->setTurn(1'000'000);
    }
    Q_DISABLE_COPY(ColouredDocument)

    QTextDocument &document() { return m_document; }
    const QTextDocument &document() const { return m_document; }
    Highlighter &highlighter() { return *m_highlighter; }

    /// Every line gets its colours, also those that are put off until the event loop turns.
    void finish()
    {
        QCoreApplication::processEvents();
        if (m_mode == Highlighter::Mode::OnDemand)
            m_highlighter->colourLines(0, m_document.blockCount() - 1);
    }

private:
    const Highlighter::Mode m_mode;
    QTextDocument m_document;
    Highlighter *m_highlighter;
};

/// The format of each UTF-16 code unit.
QVector<QTextCharFormat> coloursOf(const QTextBlock &block)
{
    QVector<QTextCharFormat> colours(block.length());
    for (const QTextLayout::FormatRange &range : block.layout()->formats()) {
        require(range.start >= 0 && range.start + range.length <= block.length(),
                "a colour lies in its line");
        for (int i = range.start; i < range.start + range.length; ++i)
            colours[i] = range.format;
    }
    return colours;
}

/// Letter by letter: the text that a document gives has other blanks and line ends.
void copyText(const QTextDocument &from, QTextDocument &to)
{
    QTextCursor cursor(&to);
    for (QTextBlock block = from.begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0)
            cursor.insertBlock();
        cursor.insertText(block.text());
    }
}

void compare(ColouredDocument &edited, ColouredDocument &fresh)
{
    require(edited.document().blockCount() == fresh.document().blockCount(), "the texts are one");
    require(edited.highlighter().commentBlocks() == fresh.highlighter().commentBlocks(),
            "as many lines end inside a comment");
    QTextBlock other = fresh.document().begin();
    for (QTextBlock block = edited.document().begin(); block.isValid();
         block = block.next(), other = other.next()) {
        require(block.text() == other.text(), "the lines are one");
        require(block.userState() == other.userState(), "a line has the state of its text");
        require(edited.highlighter().openComments(block.blockNumber())
                    == fresh.highlighter().openComments(block.blockNumber()),
                "the comments open behind a line are those of the text");
        require(coloursOf(block) == coloursOf(other), "a line has the colours of its text");
        const auto *data = static_cast<const BlockData *>(block.userData());
        const auto *otherData = static_cast<const BlockData *>(other.userData());
        require(data && otherData && data->openBefore == otherData->openBefore
                    && data->commentStart == otherData->commentStart
                    && data->commentEnd == otherData->commentEnd,
                "what is remembered of a line is that of its text");
    }
}

/// One edit: where, how much goes and what comes; "~" is a line's end.
void edit(QTextDocument &document, FuzzInput &input)
{
    const int length = document.characterCount() - 1;
    const int start = input.number(256) * length / 255;
    const int end = qMin(length, start + input.number(64));
    const QString text = input.textLine().replace(QLatin1Char('~'), QLatin1Char('\n'));
    QTextCursor cursor(&document);
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    if (length - (end - start) + text.size() <= kLongestText)
        cursor.insertText(text);
    else
        cursor.removeSelectedText();
}

/// What happens to a document while it is shown.
void change(ColouredDocument &shown, FuzzInput &input, QRegExp &find)
{
    switch (input.number(16)) {
    case 0:
        shown.document().undo();
        break;
    case 1:
        shown.document().redo();
        break;
    case 2:
        find = find.isEmpty() ? QRegExp(QStringLiteral("[a-f]+|/")) : QRegExp();
        shown.highlighter().setFind(find);
        break;
    case 3: {
        // The lines on screen, of which some are coloured to a part.
        const int first = input.number(32);
        shown.highlighter().colourLines(first, first + input.number(16), 1 + input.number(64));
        break;
    }
    case 4:
        QCoreApplication::processEvents();
        break;
    case 5: {
        const int edits = input.number(4);
        QTextCursor together(&shown.document());
        together.beginEditBlock();
        for (int i = 0; i < edits; ++i)
            edit(shown.document(), input);
        together.endEditBlock();
        break;
    }
    default:
        edit(shown.document(), input);
    }
}

QByteArray takePart(QByteArray &bytes)
{
    static const QByteArray separator("\n%%\n");
    const int end = bytes.indexOf(separator);
    const QByteArray part = bytes.left(end < 0 ? bytes.size() : end + 1);
    bytes = end < 0 ? QByteArray() : bytes.mid(end + separator.size());
    return part;
}

void run(Highlighter::Mode mode, const QString &text, const QByteArray &edits)
{
    ColouredDocument edited(mode);
    edited.highlighter().setLanguage(QStringLiteral("x"), FuzzedLanguage::name());
    QTextCursor(&edited.document()).insertText(text);
    FuzzInput input(reinterpret_cast<const std::uint8_t *>(edits.constData()),
                    static_cast<std::size_t>(edits.size()));
    QRegExp find;
    for (int i = input.number(kMostEdits); i > 0; --i)
        change(edited, input, find);
    edited.finish();

    ColouredDocument fresh(Highlighter::Mode::Everything);
    copyText(edited.document(), fresh.document());
    fresh.highlighter().setLanguage(QStringLiteral("x"), FuzzedLanguage::name());
    fresh.highlighter().setFind(find);
    fresh.finish();
    compare(edited, fresh);
}

} // namespace

/// Any bytes as a language definition, a text in its colours, and edits of it. Lines
/// "%%" stand between the three. Whatever was edited, colours and states are those of
/// the text as it is then.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    startApplication();
    FuzzInput input(data, size);
    QByteArray all = input.rest();
    const QByteArray definition = takePart(all);
    QByteArray text = takePart(all);
    text.truncate(affordableText(definition));
    FuzzedLanguage::define(definition);
    for (const Highlighter::Mode mode :
         {Highlighter::Mode::Everything, Highlighter::Mode::OnDemand})
        run(mode, QString::fromUtf8(text), all);
    return 0;
}
