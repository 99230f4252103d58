#include "view/TextAppender.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace {

void insertAtEnd(QTextDocument &document, const QString &text)
{
    // Off, it also drops what it holds: memory for every listed line.
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    QTextCursor end(&document);
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    document.setUndoRedoEnabled(undo);
}

/// An insertion at the cursor moves it along, and the end of a selection too.
void insertBehindCursor(QPlainTextEdit &view, const QString &text)
{
    QTextCursor cursor = view.textCursor();
    const int anchor = cursor.anchor();
    const int position = cursor.position();
    {
        const QSignalBlocker unmoved(&view);
        insertAtEnd(*view.document(), text);
        cursor.setPosition(anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        view.setTextCursor(cursor);
    }
    emit view.blockCountChanged(view.blockCount());
    emit view.textChanged();
}

} // namespace

QString TextAppender::joined(const QStringList &lines, bool documentIsEmpty)
{
    QString text;
    int length = lines.size();
    for (const QString &line : lines)
        length += line.size();
    text.reserve(length);
    bool empty = documentIsEmpty;
    for (const QString &line : lines) {
        // Not a line feed: after a carriage return it would be part of that
        // line's end.
        if (!empty)
            text += QChar(QChar::ParagraphSeparator);
        text += line;
        empty = empty && line.isEmpty();
    }
    return text;
}

void TextAppender::append(QPlainTextEdit &view, const QStringList &lines)
{
    QTextDocument &document = *view.document();
    const QString text = joined(lines, document.isEmpty());
    if (text.isEmpty())
        return;
    QScrollBar &rows = *view.verticalScrollBar();
    QScrollBar &columns = *view.horizontalScrollBar();
    const int firstRow = rows.value();
    const int firstColumn = columns.value();
    const bool follow = rows.maximum() > 0 && firstRow == rows.maximum();

    const QTextCursor cursor = view.textCursor();
    const int end = document.characterCount() - 1;
    if (std::max(cursor.anchor(), cursor.position()) == end)
        insertBehindCursor(view, text);
    else
        insertAtEnd(document, text);

    rows.setValue(follow ? rows.maximum() : firstRow);
    columns.setValue(firstColumn);
}
