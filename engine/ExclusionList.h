#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <bitset>
#include <vector>

/// What a walk leaves out by name. Made once for a search, then asked on any thread;
/// how many entries there are hardly matters.
class ExclusionList {
public:
    ExclusionList() = default;
    ExclusionList(const QStringList &files, const QStringList &folders);

    /// True when any non-empty entry for files occurs anywhere in fileName,
    /// case-sensitively.
    bool excludesFile(const QString &fileName) const;

    /// True when an entry for folders is the whole of folder, case-sensitively: the
    /// path as given for a folder named at the top, the bare name for one found below.
    bool excludesFolder(const QString &folder) const { return m_folders.contains(folder); }

    /// What WarningMsg says of a file or folder that is left out.
    static QString fileWarning(const QString &name);
    static QString folderWarning(const QString &folder);

private:
    bool beginsWithPart(QStringView text) const;

    /// Sorted, and none begins with another: that one says as much.
    std::vector<QString> m_parts;
    /// The low bytes of the parts' first UTF-16 code units.
    std::bitset<256> m_firstBytes;
    QSet<QString> m_folders;
};
