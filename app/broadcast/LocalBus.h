#pragma once

#include <QString>

#include <atomic>

/// The user's session bus, looked at without the bus library: that one may start
/// a bus where there is none, and waits without end for one that accepts
/// connections and then keeps silent. Unix only.
namespace LocalBus {

/// Where a bus should be: DBUS_SESSION_BUS_ADDRESS, or else "bus" in
/// XDG_RUNTIME_DIR if it is there. Of the addresses in the variable the first
/// that names a local socket (unix:path or unix:abstract); empty without one.
QString address();

/// Whether a bus answers at an address that address() returned. Waits up to
/// five seconds for the answer, and not much longer than until giveUp is set.
bool answers(const QString &address, const std::atomic<bool> &giveUp);

} // namespace LocalBus
