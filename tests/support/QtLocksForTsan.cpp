/// Makes the thread sanitizer understand the toolkit's locks.
///
/// The distribution's toolkit is not built with the sanitizer, which therefore
/// does not see that QMutex and QSemaphore order what threads do, and reports
/// every access that they guard. The functions here stand before the
/// toolkit's own in each test program: they call those and tell the sanitizer.
/// Built into the tests in that configuration only.

#include <QMutex>
#include <QSemaphore>

#include <dlfcn.h>

extern "C" {
void __tsan_acquire(void *address);
void __tsan_release(void *address);
const char *__tsan_default_suppressions();
}

/// What the toolkit does to memory of its own (reference counts that it
/// lowers, the conditions of its threads, the thread of its file dialog) is left out likewise;
/// accesses from the program's own functions stay checked, whoever calls them.
const char *__tsan_default_suppressions()
{
    return "called_from_lib:libQt5Core.so\ncalled_from_lib:libQt5Test.so\n"
           "called_from_lib:libQt5Widgets.so\n";
}

namespace {

/// The toolkit's function of that name, which the one here hides.
template <typename Function> Function toolkits(const char *mangledName)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, mangledName));
}

} // namespace

void QMutex::lock() noexcept
{
    static const auto original = toolkits<void (*)(QMutex *)>("_ZN6QMutex4lockEv");
    original(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout) noexcept
{
    static const auto original = toolkits<bool (*)(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = original(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto original = toolkits<void (*)(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    original(this);
}

void QBasicMutex::lockInternal() noexcept
{
    static const auto original =
        toolkits<void (*)(QBasicMutex *)>("_ZN11QBasicMutex12lockInternalEv");
    original(this);
    __tsan_acquire(this);
}

void QBasicMutex::unlockInternal() noexcept
{
    static const auto original =
        toolkits<void (*)(QBasicMutex *)>("_ZN11QBasicMutex14unlockInternalEv");
    __tsan_release(this);
    original(this);
}

void QSemaphore::acquire(int n)
{
    static const auto original = toolkits<void (*)(QSemaphore *, int)>("_ZN10QSemaphore7acquireEi");
    original(this, n);
    __tsan_acquire(this);
}

bool QSemaphore::tryAcquire(int n)
{
    static const auto original =
        toolkits<bool (*)(QSemaphore *, int)>("_ZN10QSemaphore10tryAcquireEi");
    const bool acquired = original(this, n);
    if (acquired)
        __tsan_acquire(this);
    return acquired;
}

bool QSemaphore::tryAcquire(int n, int timeout)
{
    static const auto original =
        toolkits<bool (*)(QSemaphore *, int, int)>("_ZN10QSemaphore10tryAcquireEii");
    const bool acquired = original(this, n, timeout);
    if (acquired)
        __tsan_acquire(this);
    return acquired;
}

void QSemaphore::release(int n)
{
    static const auto original = toolkits<void (*)(QSemaphore *, int)>("_ZN10QSemaphore7releaseEi");
    __tsan_release(this);
    original(this, n);
}
