#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace kestrovan {

using Task = std::function<void()>;

/// A repeating timer; it ends with its object. After invalidate() or destruction its task does not run again, and,
/// unless called from within that task, is not running any more.
class Timer {
public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;

    virtual void invalidate() = 0;
};

/// The main thread's loop, on which every state of the guard lives.
class MainQueue {
public:
    virtual ~MainQueue() = default;

    /// Runs `task` on a later turn of the loop, in the order of posting. May be called from any thread.
    virtual void post(Task task) = 0;

    /// Runs `task` once, `delay` from now. Main thread.
    virtual void postAfter(std::chrono::milliseconds delay, Task task) = 0;

    /// Runs `tick` every `interval`, the first time one interval from now. Main thread.
    [[nodiscard]] virtual std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval, Task tick) = 0;
};

} // namespace kestrovan
