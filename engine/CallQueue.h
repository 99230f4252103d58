#pragma once

#include <QObject>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// Hands calls from any threads to the thread that it lives on, in their order.
///
/// An event for each call would wake that thread for each: with a hit in nearly
/// every file that took a third of a search's time. The first call comes at
/// once; those that follow within kPauseMs of it come together.
class CallQueue : public QObject {
    Q_OBJECT

public:
    static constexpr int kPauseMs = 2;

    explicit CallQueue(QObject *parent = nullptr);
    /// By any thread once the one that it lives on has ended.
    ~CallQueue() override;

    /// Any thread.
    void add(std::function<void()> call);

private:
    void runAll();

    /// Shared with runAll(), which a call may leave without the object.
    const std::shared_ptr<std::mutex> m_lock = std::make_shared<std::mutex>();
    std::vector<std::function<void()>> m_calls; // guarded by m_lock, as the next
    bool m_awake = false; // runAll() is going to be called
};
