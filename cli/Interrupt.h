#pragma once

#include <QObject>

/// Ctrl+C as a signal of the event loop. The second Ctrl+C ends the process as
/// if nobody listened, so a program that hangs can still be stopped. One object
/// a process, made on the main thread.
class Interrupt : public QObject {
    Q_OBJECT

public:
    explicit Interrupt(QObject *parent = nullptr);
    ~Interrupt() override;

    /// True from the first Ctrl+C on, before the signal is delivered. Any thread.
    static bool isPending();

signals:
    /// Emitted once, on the main thread.
    void interrupted();
};
