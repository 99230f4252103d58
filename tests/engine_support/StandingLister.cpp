#include "tests/engine_support/StandingLister.h"

#include "tests/support/Patience.h"

#include <QDeadlineTimer>
#include <QThread>

QVector<FolderEntry> StandingLister::list(const QString &folder, const Claim &claim,
                                          const KeepGoing &keepGoing) const
{
    const QVector<FolderEntry> entries = NativeFolderLister::list(folder, claim, keepGoing);
    const bool below = folder.startsWith(m_top) && folder.size() > m_top.size();
    const QDeadlineTimer deadline(kPatienceMilliseconds);
    while (below && keepGoing() && !deadline.hasExpired())
        QThread::msleep(1);
    return entries;
}
