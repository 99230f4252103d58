#include "mainwindow/preview/SaveTurn.h"

#include "engine/NativePath.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

// The lock is the file's, not the name's: who gets it after the file was replaced
// holds the old one's, and finds another under the name.
SaveTurn::SaveTurn(const QString &path)
    : m_descriptor(::open(NativePath::toNative(path).constData(),
                          O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC))
{
    constexpr int kAttempts = 300;
    constexpr useconds_t kPauseMicroseconds = 10000;
    for (int i = 0; i < kAttempts && m_descriptor != -1; ++i) {
        if (::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0
            || (errno != EWOULDBLOCK && errno != EINTR))
            return;
        ::usleep(kPauseMicroseconds);
    }
}

SaveTurn::~SaveTurn()
{
    if (m_descriptor != -1)
        ::close(m_descriptor);
}
