#include "tests/support/OpenWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

OpenWatch::OpenWatch(const QByteArray &path)
    : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (m_descriptor < 0 || ::inotify_add_watch(m_descriptor, path.constData(), IN_OPEN) >= 0)
        return;
    ::close(m_descriptor);
    m_descriptor = -1;
}

OpenWatch::~OpenWatch()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool OpenWatch::wasOpened() const
{
    alignas(inotify_event) char events[4096];
    return ::read(m_descriptor, events, sizeof events) > 0;
}
