#pragma once

#include <QStringList>
#include <QVector>

/// The rules of the input dialog's history, which is a list of texts, newest
/// first.
namespace InputHistory {

struct Filter {
    /// An entry matches when it has the key anywhere, not only at its start.
    bool anywhere = false;
    bool ignoreCase = false;
};

/// Indices of the entries that match key, in order. An empty key matches all.
QVector<qint32> matchingRows(const QStringList &history, const QString &key, const Filter &filter);

/// The history after text was used: text as it is, then the old entries trimmed,
/// without blank ones and duplicates, until there are max entries (one at
/// least). A blank text leaves the history as it is.
QStringList learned(const QStringList &history, const QString &text, int max);

/// Swaps the entry at index with the one before it. False, with nothing changed,
/// when there is none.
bool moveUp(QStringList &history, int index);

/// Swaps the entry at index with the one after it. False, with nothing changed,
/// for the last two entries: the last one keeps its place.
bool moveDown(QStringList &history, int index);

} // namespace InputHistory
