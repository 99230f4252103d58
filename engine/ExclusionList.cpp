#include "engine/ExclusionList.h"

#include <algorithm>
#include <iterator>

namespace {

std::size_t lowByte(QChar unit)
{
    return unit.unicode() & 0xFFU;
}

} // namespace

ExclusionList::ExclusionList(const QStringList &files, const QStringList &folders)
    : m_folders(folders.cbegin(), folders.cend())
{
    QStringList sorted = files;
    std::sort(sorted.begin(), sorted.end());
    for (const QString &part : qAsConst(sorted)) {
        if (part.isEmpty() || (!m_parts.empty() && part.startsWith(m_parts.back())))
            continue;
        m_parts.push_back(part);
        m_firstBytes.set(lowByte(part.front()));
    }
}

bool ExclusionList::excludesFile(const QString &fileName) const
{
    for (int place = 0; place < fileName.size(); ++place) {
        if (m_firstBytes.test(lowByte(fileName.at(place)))
            && beginsWithPart(QStringView(fileName).mid(place)))
            return true;
    }
    return false;
}

/// Between a part and a text that begins with it only texts that begin with it are
/// sorted, so that no other part stands there.
bool ExclusionList::beginsWithPart(QStringView text) const
{
    const auto next = std::upper_bound(
        m_parts.cbegin(), m_parts.cend(), text,
        [](QStringView value, const QString &part) { return value < QStringView(part); });
    return next != m_parts.cbegin() && text.startsWith(*std::prev(next));
}

QString ExclusionList::fileWarning(const QString &name)
{
    return QStringLiteral("Warning exclution file:") + name;
}

QString ExclusionList::folderWarning(const QString &folder)
{
    return QStringLiteral("Warning exclution folder:") + folder;
}
