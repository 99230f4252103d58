#pragma once

#include <QObject>

/// Ctrl+C as a signal of the event loop. The second Ctrl+C ends the process as
/// if nobody listened, so a program that hangs can still be stopped. Where the
/// process was started with Ctrl+C ignored, it stays ignored. One object a
/// process, made on the main thread.
class Interrupt : public QObject {
    Q_OBJECT

public:
    explicit Interrupt(QObject *parent = nullptr);
    ~Interrupt() override;

    /// True from the first Ctrl+C on, before the signal is delivered. Any thread.
    static bool isPending();

    /// What is written to the standard error before the process is ended from
    /// outside (SIGTERM, SIGHUP), so that no half line stays on a terminal; null:
    /// nothing. Zero-terminated and of static lifetime. Any thread; no effect on
    /// Windows, where a console that closes takes its text along.
    static void setFarewell(const char *bytes);

signals:
    /// Emitted once, on the main thread.
    void interrupted();
};
