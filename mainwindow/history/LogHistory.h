#pragma once

#include "mainwindow/history/ResultLog.h"

#include <QDateTime>
#include <QString>
#include <QVector>

/// The folder of past searches' logs, and the place in it that the user pages
/// through. The log of one search is one file, named by the moment of the
/// search; 0 is the newest. Belongs to one thread.
///
/// Whatever plain files lie in the folder count as logs, but for the temporary ones
/// ("yyyyMMdd-hhmmss.log.saving-" and a number) that logs are written to before they
/// are whole and get their names. Another instance may add and delete logs at any time: the list
/// is as rebuild() found it.
class LogHistory {
public:
    struct Entry {
        QString name; ///< without the folder
        QString label; ///< see ResultLogFile::label()
    };

    /// folder: its absolute path, with or without a "/" at its end. It need not
    /// exist; nothing is read or made here.
    explicit LogHistory(const QString &folder);

    /// "yyyyMMdd-hhmmss.log"; with copy from 2, "yyyyMMdd-hhmmss_02.log", so
    /// that of two searches in one second the second one's name is behind the
    /// first one's.
    static QString fileName(const QDateTime &time, int copy = 1);

    /// Writes log into the folder, which is made when it is missing, under the
    /// first name for that moment which no file has; also against another
    /// instance that saves in the same second. Returns the file's path; empty
    /// when it could not be written, and then nothing of it is left. The list
    /// is not changed: rebuild() does that.
    QString save(const QDateTime &time, const ResultLog &log) const;

    /// Lists the folder's files anew, those changed last first (of the same
    /// time, the greater name first), deletes every one from index limit on,
    /// whether the deletion succeeds or not, and sets the position to 0. A limit of 0 or less
    /// deletes all. A folder that cannot be read is an empty one. A temporary file of a
    /// save is passed over; one that was not changed for an hour is deleted.
    void rebuild(int limit);

    const QVector<Entry> &entries() const { return m_entries; }
    /// Absolute path of the log at index; empty for an index out of range.
    QString path(int index) const;

    int position() const { return m_position; }
    /// There is an older log than the one at the position.
    bool canGoBack() const { return m_position < m_entries.size() - 1; }
    /// The position is not the newest log.
    bool canGoForward() const { return m_position >= 1; }

    /// Moves one log older and returns its path; empty, without a move, when
    /// !canGoBack().
    QString goBack();
    /// Moves one log newer and returns its path; empty, without a move, when
    /// !canGoForward(): the caller then restores the form that it remembers.
    QString goForward();

private:
    QString m_folder; ///< with "/"
    QVector<Entry> m_entries;
    int m_position = 0;
};
