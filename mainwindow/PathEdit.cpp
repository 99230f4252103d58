#include "mainwindow/PathEdit.h"

#include "mainwindow/DocumentText.h"
#include "settings/SearchPaths.h"
#include "view/FocusEdge.h"
#include "view/TextDrag.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>

namespace {

QStringList foldersIn(const QMimeData &data)
{
    QStringList folders;
    const QList<QUrl> urls = data.urls();
    for (const QUrl &url : urls) {
        if (!url.isLocalFile())
            continue;
        const QFileInfo entry(url.toLocalFile());
        folders += SearchPaths::withSlash(entry.isDir() ? entry.filePath() : entry.path());
    }
    folders.removeDuplicates();
    return folders;
}

} // namespace

PathEdit::PathEdit(QWidget *parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    new FocusEdge(this);
    new TextDrag(this, [this] { return createMimeDataFromSelection(); });
}

QString PathEdit::text() const
{
    return DocumentText::rows(*document());
}

void PathEdit::setLines(const QStringList &lines)
{
    setPlainText(lines.join(QLatin1Char('\n')));
    moveCursor(QTextCursor::Start);
}

void PathEdit::addLine(const QString &path)
{
    const QString before = text();
    if (before.isEmpty() || before.endsWith(QLatin1Char('\n'))) {
        moveCursor(QTextCursor::End);
        insertPlainText(path);
    } else {
        appendPlainText(path);
    }
    moveCursor(QTextCursor::End);
    moveCursor(QTextCursor::Left);
}

bool PathEdit::holdsFolders(const QMimeData &source)
{
    return !foldersIn(source).isEmpty();
}

void PathEdit::addFolders(const QMimeData &source)
{
    const QStringList listed = SearchPaths::fromText(text());
    const QStringList folders = foldersIn(source);
    for (const QString &folder : folders) {
        if (!listed.contains(folder))
            addLine(folder);
    }
}

QMimeData *PathEdit::createMimeDataFromSelection() const
{
    auto *copied = new QMimeData;
    copied->setText(DocumentText::rows(textCursor()));
    return copied;
}

bool PathEdit::canInsertFromMimeData(const QMimeData *source) const
{
    return holdsFolders(*source) || QPlainTextEdit::canInsertFromMimeData(source);
}

void PathEdit::insertFromMimeData(const QMimeData *source)
{
    if (holdsFolders(*source))
        addFolders(*source);
    else
        QPlainTextEdit::insertFromMimeData(source);
}

void PathEdit::keyPressEvent(QKeyEvent *event)
{
    // With Shift the base class inserts a line separator, which looks like a new
    // line and is not one; with Ctrl it does nothing.
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier))) {
        insertPlainText(QStringLiteral("\n"));
        event->accept();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}
