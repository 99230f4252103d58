#include "mainwindow/FlowLayout.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

FlowLayout::FlowLayout(int horizontalGap, int verticalGap, QWidget *parent)
    : QLayout(parent), m_horizontalGap(horizontalGap), m_verticalGap(verticalGap)
{
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem *item)
{
    m_items.emplace_back(item);
}

int FlowLayout::count() const
{
    return static_cast<int>(m_items.size());
}

QLayoutItem *FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem *FlowLayout::takeAt(int index)
{
    if (index < 0 || index >= count())
        return nullptr;
    const auto place = m_items.begin() + index;
    QLayoutItem *item = place->release();
    m_items.erase(place);
    return item;
}

int FlowLayout::heightForWidth(int width) const
{
    return flow(QRect(0, 0, width, 0), Do::Measure);
}

QSize FlowLayout::sizeHint() const
{
    QSize size(0, 0);
    for (const auto &item : m_items) {
        const QSize wanted = item->sizeHint();
        const int gap = size.width() > 0 ? m_horizontalGap : 0;
        size = QSize(size.width() + gap + wanted.width(), std::max(size.height(), wanted.height()));
    }
    return size;
}

QSize FlowLayout::minimumSize() const
{
    QSize size(0, 0);
    for (const auto &item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect &rectangle)
{
    QLayout::setGeometry(rectangle);
    const int height = flow(rectangle, Do::Place);
    // A window does not ask for the height that goes with a width when it is told how
    // small it may be: the rows would be taken from the fields around them.
    if (parentWidget()->minimumHeight() != height)
        parentWidget()->setMinimumHeight(height);
}

/// Returns the height of all rows.
int FlowLayout::flow(const QRect &rectangle, Do what) const
{
    const Qt::LayoutDirection direction =
        parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    int left = rectangle.left();
    int top = rectangle.top();
    int rowHeight = 0;
    for (const auto &item : m_items) {
        const QSize size = item->sizeHint();
        const bool isFirst = left == rectangle.left();
        if (!isFirst && left + size.width() > rectangle.right() + 1) {
            left = rectangle.left();
            top += rowHeight + m_verticalGap;
            rowHeight = 0;
        }
        if (what == Do::Place)
            item->setGeometry(
                QStyle::visualRect(direction, rectangle, QRect(QPoint(left, top), size)));
        left += size.width() + m_horizontalGap;
        rowHeight = std::max(rowHeight, size.height());
    }
    return top + rowHeight - rectangle.top();
}
