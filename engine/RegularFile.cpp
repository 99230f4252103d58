#include "engine/RegularFile.h"

qint64 RegularFile::read(char *buffer, qint64 maximum)
{
    qint64 total = 0;
    while (total < maximum) {
        const qint64 got = readSome(buffer + total, maximum - total);
        if (got <= 0)
            break;
        total += got;
    }
    return total;
}
