#include "view/AssistTextEdit.h"

#include "settings/AppSettings.h"
#include "settings/ShownFont.h"

#include <QMouseEvent>
#include <QScrollBar>

AssistTextEdit::AssistTextEdit(QWidget *parent) : QTextEdit(parent)
{
    setFont(ShownFont::bounded(AppSettings::instance().assistFont));
    setReadOnly(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Not the caret: the mouse selects nothing here.
    viewport()->setCursor(Qt::ArrowCursor);
}

void AssistTextEdit::setLines(const QStringList &lines)
{
    setHtml(QStringLiteral("<p style=\"line-height:130%\">") + lines.join(QString())
            + QStringLiteral("</p>"));
}

void AssistTextEdit::setColours(const QColor &back, const QColor &text, const QColor &border)
{
    setStyleSheet(
        QStringLiteral("QWidget{background-color: %1;color: %2; font:bold;border-width: 0px;}")
            .arg(back.name(), text.name()));
    // Otherwise the parts of the scroll bar get borders of a note each. At its ends
    // stays room for the close button and the size grip.
    verticalScrollBar()->setStyleSheet(
        QStringLiteral("QScrollBar:vertical{background-color: %1;border: none;width: 8px;"
                       "margin: 18px 0px 14px 0px;}"
                       "QScrollBar::handle:vertical{background-color: %2;border: none;"
                       "border-radius: 3px;min-height: 16px;}"
                       "QScrollBar::add-line:vertical,QScrollBar::sub-line:vertical{height: 0px;}"
                       "QScrollBar::add-page:vertical,QScrollBar::sub-page:vertical"
                       "{background-color: %1;border: none;}")
            .arg(back.name(), border.name()));
}

void AssistTextEdit::mousePressEvent(QMouseEvent *event)
{
    event->ignore();
}

void AssistTextEdit::mouseMoveEvent(QMouseEvent *event)
{
    event->ignore();
}

void AssistTextEdit::mouseReleaseEvent(QMouseEvent *event)
{
    event->ignore();
}

void AssistTextEdit::mouseDoubleClickEvent(QMouseEvent *event)
{
    event->ignore();
}

void AssistTextEdit::contextMenuEvent(QContextMenuEvent *event)
{
    event->ignore();
}
