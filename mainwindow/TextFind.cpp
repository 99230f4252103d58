#include "mainwindow/TextFind.h"

#include "engine/PatternLimits.h"

#include <QPlainTextEdit>
#include <QTextBlock>

namespace TextFind {

namespace {

/// A place in one line, in UTF-16 code units.
struct Match {
    int start = -1;
    int length = 0;
    bool isValid() const { return start >= 0; }
};

/// The first match that begins at from or later.
Match firstMatch(QRegExp &pattern, const QString &line, int from)
{
    for (int start = from; (start = pattern.indexIn(line, start)) >= 0; ++start) {
        if (pattern.matchedLength() > 0)
            return {start, pattern.matchedLength()};
    }
    return {};
}

/// The last match that ends at end or earlier.
Match lastMatch(QRegExp &pattern, const QString &line, int end)
{
    for (int start = end; start > 0;) {
        start = pattern.lastIndexIn(line, start - 1);
        if (start < 0)
            break;
        const int length = pattern.matchedLength();
        if (length > 0 && start + length <= end)
            return {start, length};
    }
    return {};
}

QTextCursor selection(const QTextBlock &block, const Match &match)
{
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + match.start);
    cursor.setPosition(block.position() + match.start + match.length, QTextCursor::KeepAnchor);
    return cursor;
}

/// From position (of the document) to the end of the document.
QTextCursor findForward(QRegExp &pattern, const QTextDocument &document, int position)
{
    QTextBlock block = document.findBlock(position);
    int from = position - block.position();
    for (; block.isValid(); block = block.next(), from = 0) {
        const Match match = firstMatch(pattern, block.text(), from);
        if (match.isValid())
            return selection(block, match);
    }
    return QTextCursor();
}

/// From position back to the start of the document.
QTextCursor findBackward(QRegExp &pattern, const QTextDocument &document, int position)
{
    QTextBlock block = document.findBlock(position);
    int end = position - block.position();
    while (block.isValid()) {
        const Match match = lastMatch(pattern, block.text(), end);
        if (match.isValid())
            return selection(block, match);
        block = block.previous();
        end = block.isValid() ? block.length() - 1 : 0;
    }
    return QTextCursor();
}

QTextCursor findFrom(QRegExp &pattern, const QTextDocument &document, int position,
                     Direction direction)
{
    return direction == Direction::Forward ? findForward(pattern, document, position)
                                           : findBackward(pattern, document, position);
}

} // namespace

QRegExp pattern(const QString &text, const Options &options)
{
    QString expression = options.regexp ? text : QRegExp::escape(text);
    if (options.word)
        expression = QStringLiteral("\\b(?:%1)\\b").arg(expression);
    const Qt::CaseSensitivity sensitivity =
        options.ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    return options.regexp ? PatternLimits::compiled(expression, sensitivity)
                          : QRegExp(expression, sensitivity);
}

Result find(QPlainTextEdit &view, const QString &text, const Options &options, Direction direction)
{
    QRegExp wanted = pattern(text, options);
    if (!wanted.isValid())
        return Result::InvalidPattern;
    if (text.isEmpty())
        return Result::NotFound;
    const bool forward = direction == Direction::Forward;
    const QTextDocument &document = *view.document();
    const QTextCursor now = view.textCursor();
    Result result = Result::Found;
    QTextCursor place =
        findFrom(wanted, document, forward ? now.selectionEnd() : now.selectionStart(), direction);
    if (place.isNull()) {
        result = Result::FoundAfterWrap;
        place = findFrom(wanted, document, forward ? 0 : document.characterCount() - 1, direction);
    }
    if (place.isNull())
        return Result::NotFound;
    view.setTextCursor(place);
    view.ensureCursorVisible();
    return result;
}

} // namespace TextFind
