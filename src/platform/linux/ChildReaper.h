#pragma once

#include "platform/linux/Descriptor.h"
#include "platform/linux/WakeUp.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace kestrovan {

/// Waits for child processes on a thread of its own, so that nobody else has to and none stays behind as a zombie;
/// helps those along that do not end when they are told to, and starts again those that are to be kept. The thread runs
/// from the first child on.
class ChildReaper {
public:
    /// A process that has been started.
    struct StartedProcess {
        Descriptor handle; ///< a pidfd: it stays this process's whatever becomes of the number
        Descriptor leash;  ///< the writing end of its standard input
    };
    /// Starts a child's process; none if the system does not let it.
    using Start = std::function<std::optional<StartedProcess>()>;

    /// A child, shared by whoever started it and the reaper. It runs until it is told to end, or ends by itself.
    struct Child {
        StartedProcess process; ///< of the reaper's thread, once it looks after the child
        Start startAgain; ///< for one that is kept: what replaces a process that ends by itself. That thread calls it
        std::atomic<bool> isRunning = true;
        std::atomic<bool> isToEnd = false;
    };

    ChildReaper() = default;
    ChildReaper(const ChildReaper&) = delete;
    ChildReaper& operator=(const ChildReaper&) = delete;
    ~ChildReaper(); ///< kills what is left; takes as long as the kernel takes for that

    /// False if the system has no thread for it. Main thread.
    bool isReady();
    /// Looks after `child`, whose process has been started just now. Only if it is ready. Main thread.
    void add(std::shared_ptr<Child> child);

    /// Has a child end: its input is closed, it is asked to, and what runs on for two seconds is killed. Returns at
    /// once.
    void end(Child& child);

private:
    using Clock = std::chrono::steady_clock;
    struct Watched {
        std::shared_ptr<Child> child;
        Clock::time_point startTime;           ///< of its process
        std::chrono::milliseconds pause{};     ///< before it is started again
        std::optional<Clock::time_point> next; ///< when it is killed, or started again
    };

    void run();
    void takeIn();
    void look(Watched& watched, Clock::time_point now);
    void hurry(Watched& watched, Clock::time_point now) const;
    static void planStart(Watched& watched, Clock::time_point now);
    static void startAgain(Watched& watched, Clock::time_point now);
    void waitForChange();

    std::mutex mutex_; ///< over arrived_; held for moments only
    std::list<std::shared_ptr<Child>> arrived_;
    std::list<Watched> watched_; ///< of the thread
    std::atomic<bool> isEnding_ = false;
    WakeUp wakeUp_;
    std::optional<std::thread> thread_;
};

} // namespace kestrovan
