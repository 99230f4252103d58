#pragma once

#include <QByteArray>
#include <QStringBuilder>

/// Builds what real folders hold besides ordinary files: links of every kind,
/// FIFOs, sockets, devices, entries without permission, names that are no
/// valid text. Names are the platform's own bytes, relative to the root, with
/// "/" between folders; every function makes the folders on the way.
///
/// A function that returns bool answers false where the platform or the user's
/// rights do not allow such an entry: the test then skips. Any other failure
/// ends the test's process with a message.
class TreeBuilder {
public:
    /// root: the platform's bytes of an existing folder's path, ending in "/".
    explicit TreeBuilder(const QByteArray &root);

    /// The absolute path of name, as the platform holds it.
    QByteArray path(const QByteArray &name) const { return m_root + name; }

    void folder(const QByteArray &name) const;
    void file(const QByteArray &name, const QByteArray &bytes = QByteArrayLiteral("text\n")) const;
    /// A file that says it has size bytes and takes no room on the disk.
    bool sparseFile(const QByteArray &name, qint64 size) const;
    /// A symbolic link; target as the link is to hold it.
    bool link(const QByteArray &name, const QByteArray &target) const;
    bool fifo(const QByteArray &name) const;
    bool socket(const QByteArray &name) const;
    /// A character device like /dev/zero, which could be read for ever.
    bool device(const QByteArray &name) const;
    /// Permission bits as in chmod(2); false where they mean nothing.
    bool setMode(const QByteArray &name, unsigned mode) const;

private:
    void makeParents(const QByteArray &name) const;

    QByteArray m_root;
};
