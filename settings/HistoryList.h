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

/// The texts that insert() must have put in front of before to make now of it, newest
/// first; what was dropped at the end does not count. A text that was inserted
/// without a change, being the first already, is none.
QStringList added(const QStringList &before, const QStringList &now);

/// history after insert() of the texts of added, whose first one is the newest.
QStringList merged(QStringList history, const QStringList &added, int limit = kLimit);

} // namespace HistoryList
