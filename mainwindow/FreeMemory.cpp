#include "mainwindow/FreeMemory.h"

#include <algorithm>

bool FreeMemory::isShort(const Memory &memory)
{
    constexpr qint64 kLeastBytes = Q_INT64_C(512) * 1024 * 1024;
    if (memory.total < 0 || memory.available < 0)
        return false;
    return memory.available < std::max(memory.total / 10, kLeastBytes);
}
