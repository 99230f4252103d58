#pragma once

#include <QTableView>

/// A table view that tells of each change of its current index by a signal of
/// its own, which stays silent while the view's signals are blocked; the
/// selection model's does not.
class TableView : public QTableView {
    Q_OBJECT

signals:
    void CurrentChanged(const QModelIndex &current, const QModelIndex &previous);

public:
    using QTableView::QTableView;

protected slots:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
};
