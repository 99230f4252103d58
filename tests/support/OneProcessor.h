#pragma once

#include <sched.h>

/// While it lives, this thread and those that it starts share one processor. A program
/// that asks how many the machine has is told of all of them all the same. Linux only.
class OneProcessor {
public:
    /// Does nothing unless it is wanted.
    explicit OneProcessor(bool wanted) : m_restricted(wanted)
    {
        ::sched_getaffinity(0, sizeof m_former, &m_former);
        if (!wanted)
            return;
        cpu_set_t one;
        CPU_ZERO(&one);
        for (int processor = 0; processor < CPU_SETSIZE; ++processor) {
            if (CPU_ISSET(processor, &m_former)) {
                CPU_SET(processor, &one);
                break;
            }
        }
        ::sched_setaffinity(0, sizeof one, &one);
    }
    ~OneProcessor()
    {
        if (m_restricted)
            ::sched_setaffinity(0, sizeof m_former, &m_former);
    }
    OneProcessor(const OneProcessor &) = delete;
    OneProcessor &operator=(const OneProcessor &) = delete;

private:
    cpu_set_t m_former;
    const bool m_restricted;
};
