#pragma once

#include "tests/support/ScratchFolder.h"
#include "tests/support/TreeBuilder.h"

#include <QByteArrayList>

/// A tree with everything in it that has ever stopped, looped or misled a search,
/// and between all that files which have to be found: each of these holds
/// content(), on whose second line stands keyword().
class HostileTree {
public:
    HostileTree();

    static QString keyword();
    static QByteArray content();
    static int linesOfContent();

    /// The root, ending in "/".
    QString path() const { return m_folder.path(); }
    /// For more of the same; see TreeBuilder.
    TreeBuilder &builder() { return m_builder; }
    /// A file that has to be found.
    void steadyFile(const QByteArray &name);
    /// The same behind a name that leads to it: a link, for one.
    void expect(const QByteArray &name) { m_steady.append(m_builder.path(name)); }

    /// The whole paths of what has to be found, as the platform holds them.
    const QByteArrayList &steady() const { return m_steady; }
    /// "a FIFO", "a socket", "a device": those that could be made, and the system's
    /// devices to which links lead.
    const QByteArrayList &specialFiles() const { return m_specialFiles; }
    /// The whole path of a file that is larger than any disk; empty where there
    /// can be none.
    QByteArray hugeFile() const { return m_hugeFile; }

private:
    void addSpecialFiles();
    void addLinks();
    void addNames();
    void addDepth();

    // The builder takes its entries away before the folder goes.
    ScratchFolder m_folder;
    TreeBuilder m_builder;
    QByteArrayList m_steady;
    QByteArrayList m_specialFiles;
    QByteArray m_hugeFile;
};
