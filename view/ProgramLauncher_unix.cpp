#include "view/ProgramLauncher.h"

#include "engine/NativePath.h"

#include <QByteArray>

#include <algorithm>
#include <csignal>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A session of its own, so that a signal to this program's terminal does not
/// reach the started one, and every signal as a fresh program expects it.
class DetachedAttributes {
public:
    DetachedAttributes()
    {
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setflags(
            &m_attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        sigset_t signalSet;
        sigemptyset(&signalSet);
        posix_spawnattr_setsigmask(&m_attributes, &signalSet);
        sigfillset(&signalSet);
        posix_spawnattr_setsigdefault(&m_attributes, &signalSet);
    }
    ~DetachedAttributes() { posix_spawnattr_destroy(&m_attributes); }
    DetachedAttributes(const DetachedAttributes &) = delete;
    DetachedAttributes &operator=(const DetachedAttributes &) = delete;

    const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

/// Not QProcess: it hands arguments over as text in the locale's encoding, and
/// a file name with bytes that are no text would name no file any more.
class UnixLauncher : public ProgramLauncher {
public:
    PathStyle pathStyle() const override { return PathStyle::Unix; }
    bool startDetached(const LaunchCommand &command) override;
    bool open(const LaunchCommand &command) override { return startDetached(command); }

private:
    void forgetEnded();

    /// Programs started and not known to have ended. One that ended stays in
    /// the system's table until it is asked for, which the next start does.
    std::vector<pid_t> m_started;
};

bool UnixLauncher::startDetached(const LaunchCommand &command)
{
    forgetEnded();
    const QByteArray directory = NativePath::toNative(command.directory);
    if (!directory.isEmpty() && chdir(directory.constData()) != 0)
        qDebug("no such directory: %s", directory.constData());

    std::vector<QByteArray> texts{NativePath::toNative(command.program)};
    texts.reserve(static_cast<std::size_t>(command.arguments.size()) + 1);
    for (const QString &argument : command.arguments)
        texts.push_back(NativePath::toNative(argument));
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    const DetachedAttributes attributes;
    pid_t id = 0;
    if (posix_spawnp(&id, pointers.front(), nullptr, attributes.get(), pointers.data(), environ)
        != 0)
        return false;
    m_started.push_back(id);
    return true;
}

void UnixLauncher::forgetEnded()
{
    const auto ended = [](pid_t id) {
        return waitpid(id, nullptr, WNOHANG) != 0;
    };
    m_started.erase(std::remove_if(m_started.begin(), m_started.end(), ended), m_started.end());
}

} // namespace

ProgramLauncher::~ProgramLauncher() = default;

ProgramLauncher &ProgramLauncher::native()
{
    static UnixLauncher launcher;
    return launcher;
}
