#include "mainwindow/FreeMemory.h"

#include <algorithm>

bool FreeMemory::isTaken(const Memory &before, const Memory &now)
{
    constexpr qint64 kMebibyte = 1024LL * 1024;
    if (now.total < 0 || now.available < 0 || before.available < 0)
        return false;
    const qint64 least = std::clamp(now.total / 10, 512 * kMebibyte, 2048 * kMebibyte);
    return now.available < least && before.available - now.available >= 256 * kMebibyte;
}
