#include "platform/linux/WorkerPool.h"

#include "platform/linux/NamedThread.h"

#include <algorithm>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

// Enough for every service the guard reaches to hang at once, each with a thread.
constexpr std::size_t threadLimit = 32;
constexpr auto idleLife = 10s;

} // namespace

WorkerPool::WorkerPool(std::string name, int nice) : name_(std::move(name)), nice_(nice) {}

void WorkerPool::add(std::chrono::milliseconds delay, Task task)
{
    const Lock lock(mutex_);
    if (stopping_)
        return;
    if (delay > 0ms)
        delayed_.emplace(SteadyClock::now() + delay, std::move(task));
    else
        ready_.push_back(std::move(task));
    if (ready_.size() > idle_ || idle_ == 0)
        addThread();
    changed_.notify_all();
}

void WorkerPool::stop()
{
    // Destroyed after the lock, for what tasks hold may come back here.
    std::deque<Task> ready;
    std::multimap<SteadyClock::time_point, Task> delayed;
    const Lock lock(mutex_);
    stopping_ = true;
    ready.swap(ready_);
    delayed.swap(delayed_);
    changed_.notify_all();
}

bool WorkerPool::waitUntilStopped(SteadyClock::time_point deadline)
{
    Lock lock(mutex_);
    return changed_.wait_until(lock, deadline, [this] { return threads_ == 0; });
}

void WorkerPool::addThread()
{
    if (threads_ >= threadLimit)
        return;
    // Detached, as one that hangs in a dead service must not hold up the program's end.
    if (auto thread = startNamedThread(name_, nice_, [pool = shared_from_this()] { pool->run(); })) {
        thread->detach();
        ++threads_;
    }
}

void WorkerPool::run()
{
    Lock lock(mutex_);
    while (!stopping_) {
        collectDue();
        if (!ready_.empty())
            runOne(lock);
        else if (!waitForWork(lock))
            break;
    }
    --threads_;
    changed_.notify_all();
}

void WorkerPool::collectDue()
{
    const auto end = delayed_.upper_bound(SteadyClock::now());
    for (auto due = delayed_.begin(); due != end; due = delayed_.erase(due))
        ready_.push_back(std::move(due->second));
}

void WorkerPool::runOne(Lock& lock)
{
    auto task = std::move(ready_.front());
    ready_.pop_front();
    // Somebody has to look after the rest, should this task take long.
    if (idle_ == 0 && (!ready_.empty() || !delayed_.empty()))
        addThread();
    lock.unlock();
    task();
    task = nullptr;
    lock.lock();
}

// False if this thread is not needed any more.
bool WorkerPool::waitForWork(Lock& lock)
{
    ++idle_;
    const auto expiry = SteadyClock::now() + idleLife;
    const auto wake = delayed_.empty() ? expiry : std::min(expiry, delayed_.begin()->first);
    changed_.wait_until(lock, wake);
    --idle_;
    const bool watched = idle_ > 0 || delayed_.empty();
    return SteadyClock::now() < expiry || !ready_.empty() || !watched;
}

} // namespace kestrovan
