#include "engine/FolderClaims.h"

void FolderClaims::clear()
{
    const std::lock_guard lock(m_mutex);
    m_owners.clear();
}

bool FolderClaims::reserve(const FolderIdentity &identity, const QString &path)
{
    const std::lock_guard lock(m_mutex);
    if (m_owners.contains(identity))
        return false;
    m_owners.insert(identity, {path, false});
    return true;
}

bool FolderClaims::claim(const FolderIdentity &identity, const QString &path)
{
    const std::lock_guard lock(m_mutex);
    const auto owner = m_owners.find(identity);
    if (owner == m_owners.end()) {
        m_owners.insert(identity, {path, true});
        return true;
    }
    if (owner->listed || owner->path != path)
        return false;
    owner->listed = true;
    return true;
}
