#include "platform/linux/QtMainQueue.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimerEvent>

#include <algorithm>
#include <deque>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

const auto taskEventType = static_cast<QEvent::Type>(QEvent::registerEventType());

Qt::TimerType timerType(std::chrono::milliseconds interval)
{
    return interval >= 500ms && interval % 1s != 0s ? Qt::CoarseTimer : Qt::PreciseTimer;
}

} // namespace

class QtMainQueue::Receiver final : public QObject {
public:
    Receiver() = default;
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;
    ~Receiver() override
    {
        // What the dropped tasks hold may end timers of this very table.
        const auto dropped = std::exchange(entries_, {});
        tasks_.clear();
    }

    // Each task has an event of its own, rather than one for all: that way a task that runs a nested loop does not
    // hold up those behind it.
    void post(Task task)
    {
        auto event = std::make_unique<QEvent>(taskEventType);
        {
            const std::lock_guard lock(mutex_);
            tasks_.push_back(std::move(task));
        }
        QCoreApplication::postEvent(this, event.release());
    }

    int start(std::chrono::milliseconds interval, Task task, bool once)
    {
        interval = std::max(interval, 0ms);
        const int id = startTimer(interval, once ? Qt::PreciseTimer : timerType(interval));
        entries_[id] = {std::make_shared<Task>(std::move(task)), once};
        return id;
    }

    void stop(int id)
    {
        // Taken out first: what the task holds may itself end timers when it goes.
        const auto ended = entries_.extract(id);
        if (!ended.empty())
            killTimer(id);
    }

protected:
    void customEvent(QEvent* event) override
    {
        Task task;
        bool more = false;
        {
            const std::lock_guard lock(mutex_);
            if (event->type() != taskEventType)
                return;
            task = std::move(tasks_.front());
            tasks_.pop_front();
            more = !tasks_.empty();
        }
        // A nested loop would not notice events that were posted before it began, and wait for the next.
        if (more)
            QAbstractEventDispatcher::instance()->wakeUp();
        task();
    }

    void timerEvent(QTimerEvent* event) override
    {
        const auto found = entries_.find(event->timerId());
        if (found == entries_.end())
            return;
        const auto [task, once] = found->second; // a copy, as the tick may end its own timer
        if (once)
            stop(event->timerId());
        (*task)();
    }

private:
    struct Entry {
        std::shared_ptr<Task> task;
        bool once = false;
    };

    std::mutex mutex_;
    std::deque<Task> tasks_;
    std::unordered_map<int, Entry> entries_; // main thread
};

class QtMainQueue::LoopTimer final : public Timer {
public:
    LoopTimer(Receiver* receiver, int id) : receiver_(receiver), id_(id) {}
    LoopTimer(const LoopTimer&) = delete;
    LoopTimer& operator=(const LoopTimer&) = delete;
    ~LoopTimer() override { end(); }

    void invalidate() override { end(); }

private:
    void end()
    {
        if (receiver_)
            std::exchange(receiver_, nullptr)->stop(id_);
    }

    QPointer<Receiver> receiver_;
    int id_;
};

QtMainQueue::QtMainQueue() : receiver_(std::make_unique<Receiver>()) {}

QtMainQueue::~QtMainQueue() = default;

void QtMainQueue::post(Task task)
{
    receiver_->post(std::move(task));
}

void QtMainQueue::postAfter(std::chrono::milliseconds delay, Task task)
{
    receiver_->start(delay, std::move(task), true);
}

std::unique_ptr<Timer> QtMainQueue::repeat(std::chrono::milliseconds interval, Task tick)
{
    return std::make_unique<LoopTimer>(receiver_.get(), receiver_->start(interval, std::move(tick), false));
}

} // namespace kestrovan
