#pragma once

#include <QString>
#include <QVector>

#include <functional>

/// What makes a folder the same folder whatever path leads to it: device and
/// inode on Unix, volume serial number and file id on Windows. Some network and
/// virtual file systems tell none, or the file number 0 for everything.
struct FolderIdentity {
    quint64 device = 0;
    quint64 file = 0; ///< 0: not known

    bool isKnown() const { return file != 0; }
};

inline bool operator==(const FolderIdentity &a, const FolderIdentity &b)
{
    return a.device == b.device && a.file == b.file;
}

inline uint qHash(const FolderIdentity &identity, uint seed = 0)
{
    return ::qHash(identity.file ^ (identity.device << 40), seed);
}

struct FolderEntry {
    enum Kind {
        File, ///< a regular file, or a link to one
        Folder,
        FolderLink, ///< a link (reparse point) to a folder
        Other ///< FIFO, socket, device, dangling link: never opened
    };

    QString name; ///< bare name, see NativePath for names that are no valid text
    Kind kind = Other;
};

/// Lists folders. Implementations are stateless and used by many threads at once.
class FolderLister {
public:
    /// Asked before the first entry, with an unknown identity where none can be
    /// had; false leaves the folder unlisted.
    using Claim = std::function<bool(const FolderIdentity &)>;
    /// Asked after each entry; false ends the listing with what there is.
    using KeepGoing = std::function<bool()>;

    virtual ~FolderLister() = default;

    /// The entries of folder (a path ending in "/") without "." and "..", in no
    /// particular order. A folder that cannot be read has none; an error in the
    /// middle ends the list there. Never blocks on what the entries are.
    virtual QVector<FolderEntry> list(const QString &folder, const Claim &claim,
                                      const KeepGoing &keepGoing) const = 0;

    /// The identity of the folder at path, links followed; false when there is
    /// no folder or its identity is not known.
    virtual bool identify(const QString &path, FolderIdentity *identity) const = 0;
};

/// Lists through the platform's directory enumeration.
class NativeFolderLister : public FolderLister {
public:
    QVector<FolderEntry> list(const QString &folder, const Claim &claim,
                              const KeepGoing &keepGoing) const override;
    bool identify(const QString &path, FolderIdentity *identity) const override;
};
