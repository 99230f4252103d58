#include "settings/dialogs/TableView.h"

void TableView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    emit CurrentChanged(current, previous);
}
