#include "tests/support/TreeBuilder.h"

#include <QtGlobal>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <ftw.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

[[noreturn]] void fail(const char *what, const QByteArray &path)
{
    qFatal("cannot make the %s %s: %s", what, path.constData(), std::strerror(errno));
}

int createFile(const QByteArray &path)
{
    const int descriptor =
        ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0644);
    if (descriptor < 0)
        fail("file", path);
    return descriptor;
}

int removeEntry(const char *path, const struct stat *, int, FTW *)
{
    ::remove(path);
    return 0;
}

} // namespace

TreeBuilder::TreeBuilder(const QByteArray &root) : m_root(root)
{
}

TreeBuilder::~TreeBuilder()
{
    constexpr int kOpenFolders = 16;
    for (const QByteArray &name : qAsConst(m_built))
        ::nftw(path(name).constData(), removeEntry, kOpenFolders, FTW_DEPTH | FTW_PHYS);
}

void TreeBuilder::makeParents(const QByteArray &name)
{
    const QByteArray top = name.split('/').constFirst();
    if (!top.isEmpty() && !m_built.contains(top))
        m_built.append(top);
    for (int slash = name.indexOf('/'); slash >= 0; slash = name.indexOf('/', slash + 1)) {
        const QByteArray parent = path(name.left(slash));
        if (::mkdir(parent.constData(), 0755) != 0 && errno != EEXIST)
            fail("folder", parent);
    }
}

bool TreeBuilder::takesAnyName() const
{
    return true;
}

void TreeBuilder::folder(const QByteArray &name)
{
    makeParents(name + '/');
}

void TreeBuilder::file(const QByteArray &name, const QByteArray &bytes)
{
    makeParents(name);
    const int descriptor = createFile(path(name));
    if (::write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
        fail("file", path(name));
    ::close(descriptor);
}

bool TreeBuilder::sparseFile(const QByteArray &name, qint64 size)
{
    makeParents(name);
    const int descriptor = createFile(path(name));
    const bool resized = ::ftruncate(descriptor, size) == 0;
    ::close(descriptor);
    return resized;
}

bool TreeBuilder::link(const QByteArray &name, const QByteArray &target)
{
    makeParents(name);
    if (::symlink(target.constData(), path(name).constData()) != 0)
        fail("link", path(name));
    return true;
}

bool TreeBuilder::fifo(const QByteArray &name)
{
    makeParents(name);
    if (::mkfifo(path(name).constData(), 0644) != 0)
        fail("FIFO", path(name));
    return true;
}

bool TreeBuilder::socket(const QByteArray &name)
{
    makeParents(name);
    const QByteArray full = path(name);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (full.size() >= static_cast<int>(sizeof address.sun_path))
        return false;
    std::memcpy(address.sun_path, full.constData(), static_cast<size_t>(full.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return false;
    // The entry stays when the socket that made it is closed.
    const bool bound =
        ::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    ::close(descriptor);
    return bound;
}

bool TreeBuilder::device(const QByteArray &name)
{
    makeParents(name);
    return ::mknod(path(name).constData(), S_IFCHR | 0644, makedev(1, 5)) == 0;
}

bool TreeBuilder::setMode(const QByteArray &name, unsigned mode)
{
    if (::chmod(path(name).constData(), mode) != 0)
        fail("permissions of", path(name));
    return true;
}
