#include "mainwindow/PastedLine.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>

#include <algorithm>
#include <iterator>

namespace {

bool isLineEnd(QChar letter)
{
    return letter == QLatin1Char('\n') || letter == QLatin1Char('\r');
}

int lineEndsIn(const QString &text)
{
    return int(std::count_if(text.begin(), text.end(), isLineEnd));
}

} // namespace

PastedLine::PastedLine(QLineEdit *field)
    : QObject(field), m_field(field), m_lineEnds(lineEndsIn(field->text()))
{
    m_field->installEventFilter(this);
    // After the paste: its keys, its menu entry and the middle button have nothing in
    // common that comes before.
    connect(m_field, &QLineEdit::textEdited, this, &PastedLine::correct);
    // A text that was corrected meanwhile is told of late.
    connect(m_field, &QLineEdit::textChanged, this,
            [this] { m_lineEnds = lineEndsIn(m_field->text()); });
}

QString PastedLine::firstLine(const QString &text)
{
    const auto start = std::find_if_not(text.begin(), text.end(), isLineEnd);
    const auto end = std::find_if(start, text.end(), isLineEnd);
    return QString(start, int(end - start));
}

QStringList PastedLine::singleLines(const QStringList &texts)
{
    QStringList lines;
    std::copy_if(texts.begin(), texts.end(), std::back_inserter(lines),
                 [](const QString &text) { return lineEndsIn(text) == 0; });
    return lines;
}

/// Does the paste again, with one line: undoing goes back before it, in one step.
void PastedLine::correct()
{
    if (lineEndsIn(m_field->text()) <= m_lineEnds)
        return;
    for (const QClipboard::Mode mode : {QClipboard::Clipboard, QClipboard::Selection}) {
        const QString pasted = QGuiApplication::clipboard()->text(mode);
        if (!isFreshPaste(pasted))
            continue;
        m_field->undo();
        m_field->insert(firstLine(pasted));
        return;
    }
}

/// Undoing, too, may bring a line end back, one that the program had set.
bool PastedLine::isFreshPaste(const QString &pasted) const
{
    return lineEndsIn(pasted) > 0 && !m_field->isRedoAvailable()
        && m_field->text().leftRef(m_field->cursorPosition()).endsWith(pasted);
}

bool PastedLine::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::Drop)
        return drop(static_cast<QDropEvent &>(*event));
    return QObject::eventFilter(watched, event);
}

/// Before the drop: one that goes on from what was typed is undone together with it.
bool PastedLine::drop(QDropEvent &event)
{
    const QString text = event.mimeData()->text();
    if (lineEndsIn(text) == 0)
        return false;
    QMimeData line;
    line.setText(firstLine(text));
    QDropEvent passed(event.posF(), event.possibleActions(), &line, event.mouseButtons(),
                      event.keyboardModifiers());
    passed.setDropAction(event.dropAction());
    static_cast<QObject *>(m_field)->event(&passed);
    event.setDropAction(passed.dropAction());
    event.setAccepted(passed.isAccepted());
    return true;
}
