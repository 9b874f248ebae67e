#pragma once

#include "platform/MainQueue.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace kestrovan {

/// Threads of one priority that share one list of tasks: none until a task comes, one more whenever a task would
/// wait for a thread (up to 32), gone again after 10 s without work. May be used from any thread.
class WorkerPool : public std::enable_shared_from_this<WorkerPool> {
public:
    WorkerPool(std::string name, int nice);

    void add(std::chrono::milliseconds delay, Task task);

    /// Drops what has not begun and takes nothing more.
    void stop();
    /// Waits until the threads have ended. False if `deadline` came first.
    bool waitUntilStopped(std::chrono::steady_clock::time_point deadline);

private:
    using Lock = std::unique_lock<std::mutex>;

    void addThread();
    void run();
    void collectDue();
    void runOne(Lock& lock);
    bool waitForWork(Lock& lock);

    const std::string name_;
    const int nice_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Task> ready_;
    std::multimap<std::chrono::steady_clock::time_point, Task> delayed_;
    std::size_t threads_ = 0;
    std::size_t idle_ = 0;
    bool stopping_ = false;
};

} // namespace kestrovan
