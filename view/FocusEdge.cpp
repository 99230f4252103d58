#include "view/FocusEdge.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>

FocusEdge::FocusEdge(QAbstractScrollArea *area) : QObject(area), m_area(area)
{
    area->installEventFilter(this);
}

bool FocusEdge::eventFilter(QObject *watched, QEvent *event)
{
    // When the focus comes and goes, the toolkit has every widget painted anew.
    if (event->type() == QEvent::Paint && m_area->hasFocus()) {
        // The style's own frame first, which the edge covers.
        watched->event(event);
        paint();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void FocusEdge::paint()
{
    const int width = m_area->frameWidth();
    const QRect outer = m_area->rect();
    const QRegion edge = QRegion(outer) - outer.adjusted(width, width, -width, -width);
    // That of the program: a text view has a palette of its own.
    const QColor colour = m_area->parentWidget()
        ? m_area->parentWidget()->palette().color(QPalette::Highlight)
        : m_area->palette().color(QPalette::Highlight);
    QPainter painter(m_area);
    for (const QRect &side : edge)
        painter.fillRect(side, colour);
}
