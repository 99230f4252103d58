#include "tests/support/OpenWatch.h"

OpenWatch::OpenWatch(const QByteArray &)
{
}

OpenWatch::~OpenWatch() = default;

bool OpenWatch::wasOpened() const
{
    return false;
}
