#include "engine/FolderQueue.h"

void FolderQueue::holdOpen()
{
    const std::lock_guard lock(m_mutex);
    ++m_unfinished;
}

void FolderQueue::append(const QString &folder)
{
    append(QStringList{folder});
}

void FolderQueue::append(const QStringList &folders)
{
    const std::lock_guard lock(m_mutex);
    m_unfinished += folders.size();
    m_queue.append(folders);
}

void FolderQueue::appendLink(const QString &folder)
{
    const std::lock_guard lock(m_mutex);
    m_links.insert(folder, true);
}

bool FolderQueue::beginListing(QString *folder, int *length)
{
    return m_queue.takeFirst(folder, length);
}

bool FolderQueue::finishListing()
{
    const std::lock_guard lock(m_mutex);
    if (--m_unfinished > 0)
        return false;
    if (m_links.isEmpty())
        return true;
    const QString link = m_links.firstKey();
    m_links.erase(m_links.begin());
    m_followsLinks = true;
    ++m_unfinished;
    m_queue.append({link});
    return false;
}

bool FolderQueue::hasWork() const
{
    const std::lock_guard lock(m_mutex);
    return m_unfinished > 0 || !m_links.isEmpty();
}

bool FolderQueue::followsLinks() const
{
    const std::lock_guard lock(m_mutex);
    return m_followsLinks;
}

void FolderQueue::clear()
{
    const std::lock_guard lock(m_mutex);
    m_queue.clear();
    m_unfinished = 0;
    m_followsLinks = false;
    m_links.clear();
}
