#include "tests/support/OrdinaryUser.h"

#include <QByteArray>
#include <QDir>

#include <fcntl.h>
#include <sys/fsuid.h>
#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534;

/// setfsuid tells the value before and no success; asking with an impossible
/// value tells the present one.
uid_t fileUser()
{
    return static_cast<uid_t>(::setfsuid(static_cast<uid_t>(-1)));
}

} // namespace

OrdinaryUser::OrdinaryUser()
{
    if (::geteuid() != 0) {
        m_inForce = true;
        return;
    }
    ::setfsuid(kNobody);
    m_switched = fileUser() == kNobody;
    // Where tests have their files nobody else may come, sometimes.
    const QByteArray folder = QDir::tempPath().toLocal8Bit();
    const int reached = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    m_inForce = m_switched && reached != -1;
    if (reached != -1)
        ::close(reached);
}

OrdinaryUser::~OrdinaryUser()
{
    if (m_switched)
        ::setfsuid(0);
}
