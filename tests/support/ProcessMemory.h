#pragma once

#include <QFile>

#include <malloc.h>

/// What the system gives the process.
namespace ProcessMemory {

/// Bytes that only this process has, in memory or swapped out, after what is free went
/// back. The pages of files, which come and go with what the machine needs, are none of
/// them. Linux with the GNU C library only.
inline qint64 ownBytes()
{
    ::malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    qint64 kilobytes = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        // "RssAnon:	   12345 kB"
        if (line.startsWith("RssAnon:") || line.startsWith("VmSwap:"))
            kilobytes += line.mid(line.indexOf(':') + 1).chopped(2).trimmed().toLongLong();
    }
    return kilobytes * 1024;
}

} // namespace ProcessMemory
