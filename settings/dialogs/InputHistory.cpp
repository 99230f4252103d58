#include "settings/dialogs/InputHistory.h"

#include <QSet>

namespace InputHistory {

QVector<qint32> matchingRows(const QStringList &history, const QString &key, const Filter &filter)
{
    const Qt::CaseSensitivity sensitivity =
        filter.ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    QVector<qint32> rows;
    for (int i = 0; i < history.size(); ++i) {
        const QString &entry = history.at(i);
        if (filter.anywhere ? entry.contains(key, sensitivity) : entry.startsWith(key, sensitivity))
            rows.append(i);
    }
    return rows;
}

QStringList learned(const QStringList &history, const QString &text, int max)
{
    if (text.trimmed().isEmpty())
        return history;
    QStringList result{text};
    QSet<QString> held{text};
    for (const QString &entry : history) {
        if (result.size() >= max)
            break;
        const QString trimmed = entry.trimmed();
        if (trimmed.isEmpty() || held.contains(trimmed))
            continue;
        held.insert(trimmed);
        result.append(trimmed);
    }
    return result;
}

bool moveUp(QStringList &history, int index)
{
    if (index <= 0 || index >= history.size())
        return false;
    history.swapItemsAt(index, index - 1);
    return true;
}

bool moveDown(QStringList &history, int index)
{
    if (index < 0 || index >= history.size() - 2)
        return false;
    history.swapItemsAt(index, index + 1);
    return true;
}

} // namespace InputHistory
