#include "platform/linux/ThreadSerialQueue.h"

#include "platform/linux/NamedThread.h"

#include <sys/prctl.h>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

struct Ticker {
    Task tick;
    std::chrono::milliseconds interval;
    std::chrono::milliseconds leeway;
    SteadyClock::time_point due;
};

} // namespace

// What queue, thread and timer handles share. No task and nothing a task holds is run or destroyed under the lock.
class ThreadSerialQueue::Core : public std::enable_shared_from_this<Core> {
public:
    explicit Core(std::string label) : label_(std::move(label)) {}

    void post(Task task);
    void add(std::shared_ptr<Ticker> ticker);
    void end(const std::shared_ptr<Ticker>& ticker);
    void stop();

private:
    void ensureThread();
    void run();
    void runTicker(std::unique_lock<std::mutex>& lock, std::shared_ptr<Ticker> ticker);
    void runTask(std::unique_lock<std::mutex>& lock);
    std::shared_ptr<Ticker> earliest() const;
    void wait(std::unique_lock<std::mutex>& lock, const Ticker* next);

    const std::string label_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Task> tasks_;
    std::vector<std::shared_ptr<Ticker>> tickers_;
    const Ticker* running_ = nullptr;
    bool stopping_ = false;
    std::thread thread_;
    std::thread::id threadId_;
};

void ThreadSerialQueue::Core::post(Task task)
{
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
    ensureThread();
    changed_.notify_all();
}

void ThreadSerialQueue::Core::add(std::shared_ptr<Ticker> ticker)
{
    const std::lock_guard lock(mutex_);
    tickers_.push_back(std::move(ticker));
    ensureThread();
    changed_.notify_all();
}

void ThreadSerialQueue::Core::end(const std::shared_ptr<Ticker>& ticker)
{
    std::unique_lock lock(mutex_);
    std::erase(tickers_, ticker);
    if (std::this_thread::get_id() != threadId_)
        changed_.wait(lock, [&] { return running_ != ticker.get(); });
}

void ThreadSerialQueue::Core::stop()
{
    std::thread thread;
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        thread = std::move(thread_);
        changed_.notify_all();
    }
    if (thread.get_id() == std::this_thread::get_id())
        thread.detach();
    else if (thread.joinable())
        thread.join();
}

void ThreadSerialQueue::Core::ensureThread()
{
    if (thread_.joinable() || stopping_)
        return;
    // The thread owns the core too, for the queue may be destroyed by a task on it.
    if (auto thread = startNamedThread(label_, 0, [core = shared_from_this()] { core->run(); })) {
        thread_ = std::move(*thread);
        threadId_ = thread_.get_id();
    }
}

void ThreadSerialQueue::Core::run()
{
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        auto next = earliest();
        if (next && next->due <= SteadyClock::now())
            runTicker(lock, std::move(next));
        else if (!tasks_.empty())
            runTask(lock);
        else
            wait(lock, next.get());
    }
}

void ThreadSerialQueue::Core::runTicker(std::unique_lock<std::mutex>& lock, std::shared_ptr<Ticker> ticker)
{
    running_ = ticker.get();
    lock.unlock();
    ticker->tick();
    ticker.reset(); // before the lock: this may be the last owner, if the tick ended its own timer
    lock.lock();
    const auto found = std::ranges::find(tickers_, running_, &std::shared_ptr<Ticker>::get);
    if (found != tickers_.end()) {
        // Ticks that were missed are left out, so that a slow tick never starves the tasks.
        const auto late = SteadyClock::now() - (*found)->due;
        (*found)->due += (late / (*found)->interval + 1) * (*found)->interval;
    }
    running_ = nullptr;
    changed_.notify_all();
}

void ThreadSerialQueue::Core::runTask(std::unique_lock<std::mutex>& lock)
{
    auto task = std::move(tasks_.front());
    tasks_.pop_front();
    lock.unlock();
    task();
    task = nullptr;
    lock.lock();
}

std::shared_ptr<Ticker> ThreadSerialQueue::Core::earliest() const
{
    const auto found = std::ranges::min_element(tickers_, {}, &Ticker::due);
    return found == tickers_.end() ? nullptr : *found;
}

void ThreadSerialQueue::Core::wait(std::unique_lock<std::mutex>& lock, const Ticker* next)
{
    if (!next) {
        changed_.wait(lock);
        return;
    }
    // The kernel wakes this thread within [due, due + slack], together with whatever else wakes then. Zero would mean
    // the default (50 us).
    const auto slack = std::chrono::nanoseconds(std::max(next->leeway, 0ms)).count();
    prctl(PR_SET_TIMERSLACK, static_cast<unsigned long>(slack), 0UL, 0UL, 0UL);
    changed_.wait_until(lock, next->due);
}

class ThreadSerialQueue::Handle final : public Timer {
public:
    Handle(std::shared_ptr<Core> core, std::shared_ptr<Ticker> ticker)
        : core_(std::move(core)), ticker_(std::move(ticker))
    {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() override { end(); }

    void invalidate() override { end(); }

private:
    void end()
    {
        if (const auto ticker = std::exchange(ticker_, nullptr))
            core_->end(ticker);
    }

    std::shared_ptr<Core> core_;
    std::shared_ptr<Ticker> ticker_;
};

ThreadSerialQueue::ThreadSerialQueue(std::string label) : core_(std::make_shared<Core>(std::move(label))) {}

ThreadSerialQueue::~ThreadSerialQueue()
{
    core_->stop();
}

void ThreadSerialQueue::post(Task task)
{
    core_->post(std::move(task));
}

std::unique_ptr<Timer> ThreadSerialQueue::repeat(std::chrono::milliseconds interval, std::chrono::milliseconds leeway,
                                                 Task tick)
{
    auto ticker =
        std::make_shared<Ticker>(Ticker{std::move(tick), std::max(interval, 1ms), leeway, SteadyClock::now()});
    core_->add(ticker);
    return std::make_unique<Handle>(core_, std::move(ticker));
}

} // namespace kestrovan
