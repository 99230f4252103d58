#include "mainwindow/FreeMemory.h"

#include <QByteArray>
#include <QFile>

namespace {

/// "MemTotal:       24669068 kB"
qint64 bytesOf(const QByteArray &line)
{
    bool isNumber = false;
    const qint64 kibibytes = line.simplified().split(' ').value(1).toLongLong(&isNumber);
    return isNumber ? kibibytes * 1024 : -1;
}

} // namespace

FreeMemory::Memory FreeMemory::now()
{
    Memory memory;
    QFile file(QStringLiteral("/proc/meminfo"));
    if (!file.open(QIODevice::ReadOnly))
        return memory;
    // It tells no size, so its end cannot be asked for.
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        if (line.startsWith("MemTotal:"))
            memory.total = bytesOf(line);
        else if (line.startsWith("MemAvailable:"))
            memory.available = bytesOf(line);
    }
    return memory;
}
