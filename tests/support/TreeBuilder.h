#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QStringBuilder>

/// Builds what real folders hold besides ordinary files: links of every kind,
/// FIFOs, sockets, devices, entries without permission, names that are no
/// valid text. Names are the platform's own bytes, relative to the root, with
/// "/" between folders; every function makes the folders on the way.
///
/// A function that returns bool answers false where the platform or the user's
/// rights do not allow such an entry: the test then skips. Any other failure
/// ends the test's process with a message.
///
/// The destructor takes away what was built, since a QTemporaryDir cannot
/// remove a name that is no valid text.
class TreeBuilder {
public:
    /// root: the platform's bytes of an existing folder's path, ending in "/".
    explicit TreeBuilder(const QByteArray &root);
    ~TreeBuilder();
    TreeBuilder(const TreeBuilder &) = delete;
    TreeBuilder &operator=(const TreeBuilder &) = delete;

    /// The absolute path of name, as the platform holds it.
    QByteArray path(const QByteArray &name) const { return m_root + name; }

    /// True where a name may be any bytes; false where it is text of which some
    /// is not allowed (control characters, a dot at the end) or means a folder.
    bool takesAnyName() const;

    void folder(const QByteArray &name);
    void file(const QByteArray &name, const QByteArray &bytes = QByteArrayLiteral("text\n"));
    /// A file that says it has size bytes and takes no room on the disk.
    bool sparseFile(const QByteArray &name, qint64 size);
    /// A symbolic link; target as the link is to hold it.
    bool link(const QByteArray &name, const QByteArray &target);
    bool fifo(const QByteArray &name);
    bool socket(const QByteArray &name);
    /// A character device like /dev/zero, which could be read for ever.
    bool device(const QByteArray &name);
    /// Permission bits as in chmod(2); false where they mean nothing.
    bool setMode(const QByteArray &name, unsigned mode);

private:
    void makeParents(const QByteArray &name);

    QByteArray m_root;
    QByteArrayList m_built; ///< names in the root
};
