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
