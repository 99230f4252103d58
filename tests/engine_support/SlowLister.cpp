#include "tests/engine_support/SlowLister.h"

#include <QThread>

QVector<FolderEntry> SlowLister::list(const QString &folder, const Claim &claim,
                                      const KeepGoing &keepGoing) const
{
    const QVector<FolderEntry> entries = NativeFolderLister::list(folder, claim, keepGoing);
    QThread::msleep(m_delayMs);
    return entries;
}
