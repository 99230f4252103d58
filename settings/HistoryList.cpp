#include "settings/HistoryList.h"

void HistoryList::insert(QStringList &history, const QString &text, int limit)
{
    if (text.trimmed().isEmpty())
        return;
    history.prepend(text);
    history.removeDuplicates();
    if (history.size() > limit)
        history.removeLast();
}

QStringList HistoryList::added(const QStringList &before, const QStringList &now)
{
    // What follows the added texts stands in before in the same order.
    int known = before.size();
    int first = now.size();
    while (first > 0 && known > 0) {
        known = before.lastIndexOf(now.at(first - 1), known - 1);
        if (known < 0)
            break;
        --first;
    }
    return now.mid(0, first);
}

QStringList HistoryList::merged(QStringList history, const QStringList &added, int limit)
{
    for (auto text = added.crbegin(); text != added.crend(); ++text)
        insert(history, *text, limit);
    return history;
}
