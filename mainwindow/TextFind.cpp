#include "mainwindow/TextFind.h"

#include "engine/PatternLimits.h"

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTextBlock>

/// A place in one line, in UTF-16 code units.
struct TextFind::Match {
    int start = -1;
    int length = 0;
    bool isValid() const { return start >= 0; }
};

namespace {

/// UTF-16 code units to look at between two looks at the clock; a line counts a few
/// more than it has.
constexpr int kUnitsBetweenLooks = 4096;
constexpr int kUnitsOfALine = 32;

QTextCursor selection(const QTextBlock &block, int start, int length)
{
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + start);
    cursor.setPosition(block.position() + start + length, QTextCursor::KeepAnchor);
    return cursor;
}

} // namespace

TextFind::TextFind(QPlainTextEdit *view, const QString &text, const Options &options,
                   Direction direction)
    : m_view(view), m_direction(direction), m_pattern(pattern(text, options))
{
    if (!m_pattern.isValid())
        m_result = Result::InvalidPattern;
    else if (text.isEmpty())
        m_result = Result::NotFound;
    const QTextCursor now = view->textCursor();
    m_anchor = now.anchor();
    m_position = now.position();
    const int from = isForward() ? now.selectionEnd() : now.selectionStart();
    const QTextBlock block = view->document()->findBlock(from);
    m_startBlock = m_block = block.blockNumber();
    m_limit = from - block.position();
}

QRegExp TextFind::pattern(const QString &text, const Options &options)
{
    QString expression = options.regexp ? text : QRegExp::escape(text);
    if (options.word)
        expression = QStringLiteral("\\b(?:%1)\\b").arg(expression);
    const Qt::CaseSensitivity sensitivity =
        options.ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    return options.regexp ? PatternLimits::compiled(expression, sensitivity)
                          : QRegExp(expression, sensitivity);
}

/// Forward the first match that begins at the limit or later, backward the last one
/// that ends there or earlier.
TextFind::Match TextFind::matchIn(const QTextBlock &block)
{
    const QString line = block.text();
    if (isForward()) {
        for (int start = m_limit; (start = m_pattern.indexIn(line, start)) >= 0; ++start) {
            if (m_pattern.matchedLength() > 0)
                return {start, m_pattern.matchedLength()};
        }
        return {};
    }
    for (int start = m_limit; start > 0;) {
        start = m_pattern.lastIndexIn(line, start - 1);
        if (start < 0)
            break;
        const int length = m_pattern.matchedLength();
        if (length > 0 && start + length <= m_limit)
            return {start, length};
    }
    return {};
}

/// Around the text's end once; invalid behind the line where it all began. What a
/// match there reaches beyond the start, the first way through it has passed over.
QTextBlock TextFind::blockAfter(const QTextBlock &block)
{
    if (m_wrapped && block.blockNumber() == m_startBlock)
        return {};
    QTextBlock next = isForward() ? block.next() : block.previous();
    if (!next.isValid() && !m_wrapped) {
        m_wrapped = true;
        next = isForward() ? m_view->document()->firstBlock() : m_view->document()->lastBlock();
    }
    m_limit = isForward() || !next.isValid() ? 0 : next.length() - 1;
    return next;
}

TextFind::Result TextFind::step(int milliseconds)
{
    if (m_result != Result::Searching)
        return m_result;
    QElapsedTimer timer;
    timer.start();
    int units = 0;
    // By its number: a block is not kept while the text may change.
    QTextBlock block = m_view->document()->findBlockByNumber(m_block);
    while (block.isValid()) {
        const Match match = matchIn(block);
        if (match.isValid()) {
            m_place = selection(block, match.start, match.length);
            return m_result = m_wrapped ? Result::FoundAfterWrap : Result::Found;
        }
        units += block.length() + kUnitsOfALine;
        block = blockAfter(block);
        if (units >= kUnitsBetweenLooks && block.isValid()) {
            units = 0;
            if (timer.elapsed() >= milliseconds) {
                m_block = block.blockNumber();
                return m_result;
            }
        }
    }
    return m_result = Result::NotFound;
}

bool TextFind::isCursorUntouched() const
{
    const QTextCursor now = m_view->textCursor();
    return now.anchor() == m_anchor && now.position() == m_position;
}

void TextFind::select() const
{
    m_view->setTextCursor(m_place);
    m_view->ensureCursorVisible();
}
