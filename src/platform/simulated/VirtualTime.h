#pragma once

#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Workers.h"

#include <cstdint>
#include <map>
#include <utility>

namespace kestrovan {

/// Time that stands still until it is advanced. Everything that waits on it (main queue, serial queues, workers) runs
/// on the caller's thread, in order of its time and then of its posting: the same steps always give the same run.
class VirtualTime final : public MainQueue, public Workers, public Clock {
public:
    /// Runs what is due now, and what that makes due.
    void settle() { advance({}); }
    /// Lets time pass, running everything that falls due on the way at its own moment.
    void advance(std::chrono::milliseconds duration);
    std::chrono::milliseconds elapsed() const { return std::chrono::duration_cast<std::chrono::milliseconds>(now_); }
    /// How many one-time tasks and timers still wait.
    std::size_t waiting() const { return agenda_.size(); }

    void post(Task task) override { schedule({}, std::move(task)); }
    void postAfter(std::chrono::milliseconds delay, Task task) override { schedule(delay, std::move(task)); }
    std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval, Task tick) override;

    void run(Priority priority, Task task) override;
    void runAfter(std::chrono::milliseconds delay, Priority priority, Task task) override;
    std::unique_ptr<SerialQueue> makeSerialQueue(const std::string& label) override;

    std::chrono::system_clock::time_point now() const override;
    std::chrono::steady_clock::time_point steadyNow() const override;

    std::unique_ptr<Timer> repeatFrom(std::chrono::milliseconds first, std::chrono::milliseconds interval, Task tick);

private:
    using Moment = std::chrono::nanoseconds;

    void schedule(std::chrono::milliseconds delay, Task task);
    void scheduleTick(std::chrono::milliseconds delay, std::chrono::milliseconds interval,
                      const std::shared_ptr<Task>& tick);

    Moment now_{};
    std::uint64_t order_ = 0;
    std::map<std::pair<Moment, std::uint64_t>, Task> agenda_;
};

} // namespace kestrovan
