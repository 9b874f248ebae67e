#pragma once

#include "platform/MainQueue.h"

#include <string>

namespace kestrovan {

/// A thread of its own that runs one task at a time, in the order of posting. Destroying it waits for a running
/// task and drops those that have not begun.
class SerialQueue {
public:
    virtual ~SerialQueue() = default;

    /// May be called from any thread.
    virtual void post(Task task) = 0;

    /// Runs `tick` on the queue at once and then every `interval`; the system may put each off by `leeway` to save
    /// wake-ups. May be called from any thread.
    [[nodiscard]] virtual std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval,
                                                        std::chrono::milliseconds leeway, Task tick) = 0;
};

/// Work that must not run on the main thread.
class Workers {
public:
    enum class Priority { userInitiated, background };

    virtual ~Workers() = default;

    /// Runs `task` on a shared worker thread. May be called from any thread.
    virtual void run(Priority priority, Task task) = 0;

    /// The same, `delay` from now.
    virtual void runAfter(std::chrono::milliseconds delay, Priority priority, Task task) = 0;

    /// A new serial queue; `label` names its thread for debuggers.
    [[nodiscard]] virtual std::unique_ptr<SerialQueue> makeSerialQueue(const std::string& label) = 0;
};

} // namespace kestrovan
