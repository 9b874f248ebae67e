#pragma once

#include "platform/MainQueue.h"

#include <condition_variable>
#include <map>
#include <mutex>

namespace kestrovan::rigs {

using namespace std::chrono_literals;

/// A main loop in plain C++, which the thread sanitizer sees through as a whole. It runs while a test waits.
class LoopMainQueue final : public MainQueue {
public:
    void post(Task task) override { add(std::chrono::steady_clock::now(), std::move(task)); }
    void postAfter(std::chrono::milliseconds delay, Task task) override
    {
        add(std::chrono::steady_clock::now() + delay, std::move(task));
    }
    std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval, Task tick) override
    {
        auto timer = std::make_unique<RepeatingTimer>(std::make_shared<Task>(std::move(tick)));
        again(interval, timer->tick);
        return timer;
    }

    /// Runs the loop until `condition` holds; false if it does not within `deadline`.
    template <class Condition>
    bool runUntil(Condition condition, std::chrono::milliseconds deadline = 20s)
    {
        const auto end = std::chrono::steady_clock::now() + deadline;
        while (!condition()) {
            if (std::chrono::steady_clock::now() >= end)
                return false;
            runOne(5ms);
        }
        return true;
    }
    void runFor(std::chrono::milliseconds duration)
    {
        (void)runUntil([] { return false; }, duration);
    }

    /// How many tasks wait for the loop to run.
    std::size_t waiting()
    {
        const std::scoped_lock lock(mutex_);
        return tasks_.size();
    }

private:
    struct RepeatingTimer final : Timer {
        explicit RepeatingTimer(std::shared_ptr<Task> task) : tick(std::move(task)) {}
        void invalidate() override { tick.reset(); }

        std::shared_ptr<Task> tick;
    };

    void add(std::chrono::steady_clock::time_point due, Task task)
    {
        const std::scoped_lock lock(mutex_);
        tasks_.emplace(due, std::move(task));
        added_.notify_one();
    }
    void again(std::chrono::milliseconds interval, const std::weak_ptr<Task>& tick)
    {
        postAfter(interval, [this, interval, tick] {
            const auto task = tick.lock();
            if (!task)
                return;
            (*task)();
            again(interval, tick);
        });
    }
    void runOne(std::chrono::milliseconds patience)
    {
        std::unique_lock lock(mutex_);
        const auto isDue = [this] {
            return !tasks_.empty() && tasks_.begin()->first <= std::chrono::steady_clock::now();
        };
        added_.wait_for(lock, patience, isDue);
        if (!isDue())
            return;
        const auto next = tasks_.extract(tasks_.begin());
        lock.unlock();
        next.mapped()();
    }

    std::mutex mutex_;
    std::condition_variable added_;
    std::multimap<std::chrono::steady_clock::time_point, Task> tasks_;
};

} // namespace kestrovan::rigs
