#pragma once

#include <QStringList>

namespace HistoryList {

/// Entries kept in the histories of masks, second keywords and find texts.
constexpr int kLimit = 50;

/// Puts text at the front of history, removes its later duplicates (exact,
/// case-sensitive comparison) and, when the list is then longer than limit,
/// drops the last entry: one entry only, so a list that was made longer by hand
/// shrinks no further. The text is stored as given, not trimmed; one that is
/// empty or holds only white space leaves history unchanged.
void insert(QStringList &history, const QString &text, int limit = kLimit);

} // namespace HistoryList
