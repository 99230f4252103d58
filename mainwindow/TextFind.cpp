#include "mainwindow/TextFind.h"

#include "engine/PatternLimits.h"

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTextBlock>

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
    : m_view(view), m_direction(direction)
{
    const QRegExp expression = pattern(text, options);
    m_finder = LineFinder(expression);
    if (!expression.isValid())
        m_result = Result::InvalidPattern;
    else if (text.isEmpty())
        m_result = Result::NotFound;
    const QTextCursor now = view->textCursor();
    m_anchor = now.anchor();
    m_position = now.position();
    const int from = isForward() ? now.selectionEnd() : now.selectionStart();
    const QTextBlock block = view->document()->findBlock(from);
    m_startBlock = block.blockNumber();
    m_next = {m_startBlock, from - block.position(), from - block.position()};
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
    const int from = isForward() || !next.isValid() ? 0 : next.length() - 1;
    m_next = {next.blockNumber(), from, from};
    return next;
}

/// Forward the first match that begins at the place or later, backward the last one
/// that ends there or earlier.
LineFinder::Match TextFind::look(const QString &line)
{
    const LineFinder::Look look = isForward()
        ? m_finder.lookForward(line, m_next.from)
        : m_finder.lookBackward(line, m_next.from, m_next.end);
    m_next.from = look.next;
    return look.match;
}

bool TextFind::isThrough(const QString &line) const
{
    return isForward() ? m_next.from >= line.size() : m_next.from <= 0;
}

TextFind::Result TextFind::step(int milliseconds)
{
    if (m_result != Result::Searching)
        return m_result;
    QElapsedTimer timer;
    timer.start();
    int units = 0;
    QTextBlock block = m_view->document()->findBlockByNumber(m_next.block);
    QString line = block.text();
    while (block.isValid()) {
        const LineFinder::Match match = look(line);
        if (match.isValid()) {
            m_place = selection(block, match.start, match.length);
            return m_result = m_wrapped ? Result::FoundAfterWrap : Result::Found;
        }
        if (isThrough(line)) {
            units += line.size() + kUnitsOfALine;
            block = blockAfter(block);
            line = block.text();
        } else {
            units = kUnitsBetweenLooks;
        }
        if (units >= kUnitsBetweenLooks && block.isValid()) {
            units = 0;
            if (timer.elapsed() >= milliseconds)
                return m_result;
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
