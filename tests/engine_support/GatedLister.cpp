#include "tests/engine_support/GatedLister.h"

#include "tests/support/Patience.h"

#include <chrono>

void GatedLister::open()
{
    const std::lock_guard lock(m_mutex);
    m_open = true;
    m_opened.notify_all();
}

int GatedLister::arrived() const
{
    const std::lock_guard lock(m_mutex);
    return m_arrived;
}

void GatedLister::pass(Gate gate) const
{
    if (gate != m_gate)
        return;
    std::unique_lock lock(m_mutex);
    ++m_arrived;
    m_opened.wait_for(lock, std::chrono::milliseconds(kPatienceMilliseconds),
                      [this] { return m_open; });
}

QVector<FolderEntry> GatedLister::list(const QString &folder, const Claim &claim,
                                       const KeepGoing &keepGoing) const
{
    pass(BeforeListing);
    return NativeFolderLister::list(folder, claim, keepGoing);
}

bool GatedLister::identify(const QString &path, FolderIdentity *identity) const
{
    pass(BeforeIdentifying);
    return NativeFolderLister::identify(path, identity);
}
