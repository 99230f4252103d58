#pragma once

#include "settings/IniDocument.h"

#include <QString>

#include <functional>
#include <optional>

/// An ini file that other instances and other programs may read and write too.
///
/// At every moment the path names the old file or the new one, whole: the new
/// content is written to a temporary file in the same folder and renamed over
/// the old one. A full disk, a folder that cannot be written or a kill between
/// two steps leaves the old file (and, after a kill, the temporary one, whose
/// name is the file's and six letters). A symbolic link stays a link; the file
/// that it names is replaced.
///
/// Reading, changing and replacing happen under a lock (the file's name +
/// ".lock", the one that QSettings takes), so that of two changes at a time
/// neither is lost. The lock of a process that is gone, or that keeps it for
/// longer than a save ever takes, is taken over, and nobody waits for it longer
/// than kLongestWaitMilliseconds: then the file is replaced all the same,
/// whole, and only the backups are left alone.
class IniFile {
public:
    enum class Backup {
        None,
        /// See DailyBackup; made when the new content is safe on the disk and
        /// the old file not yet replaced, so that a failed save moves none.
        Daily
    };
    using Edit = std::function<void(IniDocument &)>;

    static constexpr int kLongestWaitMilliseconds = 4000;
    /// For tests, in which a busy machine may keep a holder longer than that from going
    /// on. Not to be called while a file is saved.
    static void setLongestWait(int milliseconds);

    IniFile(const QString &path, IniDocument::Form form);

    /// A larger file is none that can be read: its content would take all memory.
    static constexpr qint64 kLargestFileBytes = Q_INT64_C(256) * 1024 * 1024;

    /// The file's content; an empty document when there is no file; nothing
    /// when it cannot be read, is too large or not a regular file. Who then goes on with
    /// defaults must not save them over what could not be read.
    std::optional<IniDocument> tryRead() const;

    /// The same for a reader that will not write: an empty document instead of
    /// nothing.
    IniDocument read() const;

    /// Applies edit to the content and replaces the file. False when the file
    /// was not replaced: when it exists and cannot be read (what it holds is
    /// not to be lost), or when the new one cannot be written or put in place.
    bool update(const Edit &edit, Backup backup = Backup::None) const;

private:
    enum class Replacement { Done, NotWritten, NotReplaced };

    Replacement replace(const QString &target, const QByteArray &content, bool withBackup) const;

    QString m_path;
    IniDocument::Form m_form;
};
