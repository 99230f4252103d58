#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <QVector>

/// The entries of a history that are shown, as a table of one column: row r
/// shows the history entry whose index stands at position r of the rows.
class InputTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// The history belongs to the caller and must outlive the model. The caller
    /// calls setRows() after each change of it.
    explicit InputTableModel(const QStringList &history, QObject *parent = nullptr);

    /// Replaces the rows and resets the model. A row whose index lies outside
    /// the history shows nothing.
    void setRows(const QVector<qint32> &rows);
    /// Shows every entry in order.
    void showAll();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /// The entry, for Qt::DisplayRole only.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Hides rows; the history keeps its entries. False, with nothing changed,
    /// when not all of the rows exist.
    bool removeRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;

private:
    const QStringList &m_history;
    QVector<qint32> m_rows;
};
