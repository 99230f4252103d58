#pragma once

#include "tests/support/ScratchFolder.h"

#include <QProcess>
#include <QStringList>

/// A session bus of its own for a test, and a sender that is another program.
/// What cannot be started fails the test's process: a test without a bus would
/// mean nothing.
class SessionBus {
public:
    enum class Socket { File, Abstract };

    /// Starts the bus; a socket that is a file is named "bus" in folder().
    explicit SessionBus(Socket socket = Socket::File);
    ~SessionBus();

    QString address() const;
    /// The folder of the socket, as XDG_RUNTIME_DIR names it.
    QString folder() const;

    /// Sends a signal and returns when the bus has it; arguments as dbus-send
    /// takes them ("uint32:7").
    void send(const QString &path, const QString &member, const QStringList &arguments) const;
    /// Ends the bus as if it had crashed.
    void kill();

private:
    const Socket m_socket;
    ScratchFolder m_folder;
    QProcess m_daemon;
};
