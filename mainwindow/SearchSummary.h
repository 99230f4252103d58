#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// What the result view says at the end of a search, and the table of the
/// threads' work. Numbers marked as grouped follow the default locale.
namespace SearchSummary {

/// One search as it ended.
struct Outcome {
    bool aborted = false;
    /// Whether the form's conditions hold now, at the end.
    bool usesKeyword2 = false;
    QString keyword2;
    int lineDistance = 0;
    bool excludesKeyword3 = false;
    QString keyword3;
    int matchedFiles = 0;
    int totalFiles = 0;
    int matchedLines = 0;
    qint64 elapsedMilliseconds = 0;
};

/// The lines of the block that closes the hits, from the separator to the empty
/// line at its end.
QStringList lines(const Outcome &outcome);

/// "/////// … ///////", which stands in place of the separator after an abort.
QString abortBanner();

/// Why a run ended that took too much memory.
QString shortOfMemory();
/// The same of a search; hitsLeftOut: lines found, not listed.
QString shortOfMemory(int hitsLeftOut);

/// Seconds with two decimals up to one minute and exactly that, whole minutes
/// and seconds beyond.
QString elapsedText(qint64 milliseconds);

/// The headed list of what was skipped, or of what could not be read; nothing
/// when the list is empty.
QStringList warningSection(const QStringList &skipped);
QStringList errorSection(const QStringList &unreadable);

/// Work done by each thread: its number and how many folders and files it took.
QString threadTable(const QMap<int, int> &counts);

} // namespace SearchSummary
