#include "tests/support/OrdinaryUser.h"

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
    m_inForce = m_switched;
}

OrdinaryUser::~OrdinaryUser()
{
    if (m_switched)
        ::setfsuid(0);
}
