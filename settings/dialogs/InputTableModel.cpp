#include "settings/dialogs/InputTableModel.h"

#include <numeric>

InputTableModel::InputTableModel(const QStringList &history, QObject *parent)
    : QAbstractTableModel(parent), m_history(history)
{
    showAll();
}

void InputTableModel::setRows(const QVector<qint32> &rows)
{
    beginResetModel();
    m_rows = rows;
    endResetModel();
}

void InputTableModel::showAll()
{
    QVector<qint32> rows(m_history.size());
    std::iota(rows.begin(), rows.end(), 0);
    setRows(rows);
}

int InputTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int InputTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant InputTableModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole || index.column() != 0 || index.row() < 0
        || index.row() >= m_rows.size())
        return QVariant();
    const qint32 entry = m_rows.at(index.row());
    return entry >= 0 && entry < m_history.size() ? QVariant(m_history.at(entry)) : QVariant();
}

bool InputTableModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 1 || count > m_rows.size() - row)
        return false;
    beginRemoveRows(parent, row, row + count - 1);
    m_rows.remove(row, count);
    endRemoveRows();
    return true;
}
