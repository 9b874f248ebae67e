#include "platform/simulated/VirtualTime.h"

namespace kestrovan {

namespace {

// 2026-03-01 14:05:09 UTC: any fixed moment will do, so that dates in tests and pictures never change.
constexpr std::chrono::sys_seconds startOfTime{std::chrono::seconds{1772373909}};

/// The only owner of its task: once it has let go, what still waits on the agenda runs nothing.
class VirtualTimer final : public Timer {
public:
    explicit VirtualTimer(std::shared_ptr<Task> tick) : tick_(std::move(tick)) {}
    void invalidate() override { tick_.reset(); }

private:
    std::shared_ptr<Task> tick_;
};

class VirtualSerialQueue final : public SerialQueue {
public:
    explicit VirtualSerialQueue(VirtualTime& time) : time_(time) {}

    void post(Task task) override
    {
        time_.post([alive = std::weak_ptr(token_), task = std::move(task)] {
            if (!alive.expired())
                task();
        });
    }
    std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval, std::chrono::milliseconds /*leeway*/,
                                  Task tick) override
    {
        return time_.repeatFrom({}, interval, std::move(tick));
    }

private:
    VirtualTime& time_;
    std::shared_ptr<const bool> token_ = std::make_shared<const bool>(true);
};

} // namespace

void VirtualTime::advance(std::chrono::milliseconds duration)
{
    const Moment end = now_ + duration;
    while (!agenda_.empty() && agenda_.begin()->first.first <= end) {
        const auto next = agenda_.extract(agenda_.begin());
        now_ = std::max(now_, next.key().first);
        next.mapped()();
    }
    now_ = end;
}

void VirtualTime::schedule(std::chrono::milliseconds delay, Task task)
{
    agenda_.emplace(std::pair(now_ + delay, order_++), std::move(task));
}

std::unique_ptr<Timer> VirtualTime::repeat(std::chrono::milliseconds interval, Task tick)
{
    return repeatFrom(interval, interval, std::move(tick));
}

std::unique_ptr<Timer> VirtualTime::repeatFrom(std::chrono::milliseconds first, std::chrono::milliseconds interval,
                                               Task tick)
{
    auto shared = std::make_shared<Task>(std::move(tick));
    scheduleTick(first, interval, shared);
    return std::make_unique<VirtualTimer>(std::move(shared));
}

void VirtualTime::scheduleTick(std::chrono::milliseconds delay, std::chrono::milliseconds interval,
                               const std::shared_ptr<Task>& tick)
{
    schedule(delay, [this, interval, weak = std::weak_ptr(tick)] {
        if (const auto alive = weak.lock()) {
            scheduleTick(interval, interval, alive);
            (*alive)();
        }
    });
}

void VirtualTime::run(Priority /*priority*/, Task task)
{
    post(std::move(task));
}

void VirtualTime::runAfter(std::chrono::milliseconds delay, Priority /*priority*/, Task task)
{
    schedule(delay, std::move(task));
}

std::unique_ptr<SerialQueue> VirtualTime::makeSerialQueue(const std::string& /*label*/)
{
    return std::make_unique<VirtualSerialQueue>(*this);
}

std::chrono::system_clock::time_point VirtualTime::now() const
{
    return startOfTime + std::chrono::duration_cast<std::chrono::system_clock::duration>(now_);
}

std::chrono::steady_clock::time_point VirtualTime::steadyNow() const
{
    return std::chrono::steady_clock::time_point(now_);
}

} // namespace kestrovan
