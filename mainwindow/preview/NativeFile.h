#pragma once

#include <QByteArray>
#include <QString>

/// What the platform does with one file. Names are as NativePath shows them, so
/// that those which are no valid text work too. Nothing here opens a FIFO or a
/// device. Any thread.
namespace NativeFile {

/// What tells a file from a later one under its name.
struct Stamp {
    bool exists = false;
    bool regular = false; ///< a file that can be read and replaced
    qint64 size = 0; ///< bytes
    qint64 changed = 0; ///< time of the last change, in the platform's finest unit
    quint64 id = 0; ///< inode; 0 where the platform has none at hand

    bool operator==(const Stamp &other) const
    {
        return exists == other.exists && regular == other.regular && size == other.size
            && changed == other.changed && id == other.id;
    }
    bool operator!=(const Stamp &other) const { return !(*this == other); }
};

/// Of what a symbolic link names.
Stamp stampOf(const QString &path);

/// The attribute word on Windows; elsewhere the nine permission bits, as in
/// chmod(2).
constexpr quint32 kNoAttributes = 0xFFFFFFFF;
quint32 attributesOf(const QString &path);
/// False when they could not be set; kNoAttributes sets none.
bool setAttributes(const QString &path, quint32 attributes);
/// attributes, which are those of the file like, as the file path may have them in its
/// place: a group that could not be kept gets no more rights than everybody.
quint32 attributesFor(const QString &path, quint32 attributes, const QString &like);
/// Takes away what keeps a file from being deleted.
void clearAttributes(const QString &path);

enum class Written { Yes, Taken, NotCreated, Failed };

/// Makes the file path, which only its owner may read, with content, and
/// returns when it is safe on the disk. The owner is that of the file like,
/// where there is one and the user's rights allow it. Taken when something has the
/// name already, NotCreated when no file can be made; after Failed none is left.
Written writeNew(const QString &path, const QByteArray &content, const QString &like);

bool remove(const QString &path);

/// Makes the file name, which nothing has yet, with the content, the attributes, the time
/// of the last change and, where the user's rights allow it, the owner of the file path;
/// it is safe on the disk then. False leaves none. Also false for a file that
/// another program holds, so that it could not be replaced.
bool copy(const QString &path, const QString &name);

/// Anything has the name, be it a link that leads nowhere.
bool isTaken(const QString &path);

/// Gives the file a second name, which nothing has yet. False also where the
/// file system cannot, or where the two names would share what they must not.
bool link(const QString &path, const QString &name);

/// In place of what has that name already, in one step.
bool rename(const QString &path, const QString &name);

/// The file that a symbolic link ends at; path for any other file, also for one
/// that is not there.
QString targetOf(const QString &path);

} // namespace NativeFile
