#include "mainwindow/PathEdit.h"

#include "settings/SearchPaths.h"
#include "view/DocumentText.h"
#include "view/FocusEdge.h"
#include "view/TextDrag.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QMimeData>
#include <QSet>
#include <QTextBlock>
#include <QUrl>

#include <algorithm>

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

/// Blanks that are no part of a path as others write it; a no-break one names another
/// folder.
QString trimmed(const QString &line)
{
    const auto isBlank = [](QChar c) {
        return c == QLatin1Char(' ') || c == QLatin1Char('\t');
    };
    int start = 0;
    int end = line.size();
    while (start < end && isBlank(line.at(start)))
        ++start;
    while (end > start && isBlank(line.at(end - 1)))
        --end;
    return line.mid(start, end - start);
}

/// The search path that a pasted line means: file managers quote paths or write them as
/// addresses.
QString pathIn(const QString &line)
{
    QString path = trimmed(line);
    const QLatin1Char quote('"');
    if (path.size() >= 2 && path.startsWith(quote) && path.endsWith(quote))
        path = path.mid(1, path.size() - 2);
    if (path.startsWith(QLatin1String("file://"), Qt::CaseInsensitive)) {
        const QString local = QUrl(path).toLocalFile();
        if (!local.isEmpty())
            path = local;
    }
    const QFileInfo entry(path);
    return entry.isAbsolute() && entry.isFile() ? SearchPaths::withSlash(entry.path()) : path;
}

/// What is pasted into a path that stands there stays as it is.
QString pathsIn(QString text, const QTextCursor &place)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QStringList lines = text.split(QLatin1Char('\n'));
    const QTextBlock first = place.document()->findBlock(place.selectionStart());
    const QTextBlock last = place.document()->findBlock(place.selectionEnd());
    const bool beginsLine = place.selectionStart() == first.position();
    const bool endsLine = place.selectionEnd() == last.position() + last.length() - 1;
    for (int i = 0; i < lines.size(); ++i) {
        if ((i > 0 || beginsLine) && (i + 1 < lines.size() || endsLine))
            lines[i] = pathIn(lines.at(i));
    }
    return lines.join(QLatin1Char('\n'));
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

/// Asked at every move of a drag; the file system is not.
bool PathEdit::holdsFolders(const QMimeData &source)
{
    const QList<QUrl> urls = source.urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); });
}

void PathEdit::addFolders(const QMimeData &source)
{
    const QStringList lines = SearchPaths::fromText(text());
    const QSet<QString> listed(lines.begin(), lines.end());
    QStringList added;
    const QStringList folders = foldersIn(source);
    for (const QString &folder : folders) {
        if (!listed.contains(folder))
            added += folder;
    }
    if (!added.isEmpty())
        addLine(added.join(QLatin1Char('\n')));
}

QMimeData *PathEdit::createMimeDataFromSelection() const
{
    return DocumentText::copied(textCursor());
}

bool PathEdit::canInsertFromMimeData(const QMimeData *source) const
{
    return holdsFolders(*source) || QPlainTextEdit::canInsertFromMimeData(source);
}

void PathEdit::insertFromMimeData(const QMimeData *source)
{
    if (holdsFolders(*source)) {
        addFolders(*source);
    } else if (source->hasText()) {
        QMimeData paths;
        paths.setText(pathsIn(source->text(), textCursor()));
        QPlainTextEdit::insertFromMimeData(&paths);
    } else {
        QPlainTextEdit::insertFromMimeData(source);
    }
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
