#pragma once

#include <QLayout>

#include <memory>
#include <vector>

/// Puts its items into rows, as many as fit into each, every item as wide as it
/// wants: where QHBoxLayout would keep a window from becoming narrow, this one makes
/// another row. Right to left where the widget's direction is that.
class FlowLayout : public QLayout {
    Q_OBJECT

public:
    /// Gaps in pixels between items of a row and between rows.
    FlowLayout(int horizontalGap, int verticalGap, QWidget *parent);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    /// Of all items in one row.
    QSize sizeHint() const override;
    /// Of the widest item alone.
    QSize minimumSize() const override;
    void setGeometry(const QRect &rectangle) override;

private:
    enum class Do { Measure, Place };
    int flow(const QRect &rectangle, Do what) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
    const int m_horizontalGap;
    const int m_verticalGap;
};
