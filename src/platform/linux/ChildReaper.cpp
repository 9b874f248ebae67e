#include "platform/linux/ChildReaper.h"

#include "platform/linux/NamedThread.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <vector>

extern "C" { // glibc 2.36 has forgotten it
#include <sys/pidfd.h>
}

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto endPatience = 2000ms;

// A child that is kept is started again at once; one that keeps ending, ever more slowly.
constexpr auto shortestRestartPause = 250ms;
constexpr auto longestRestartPause = 30'000ms;
constexpr auto steadyLife = 10s;

bool hasEnded(int handle)
{
    siginfo_t info{};
    return ::waitid(P_PIDFD, static_cast<id_t>(handle), &info, WEXITED | WNOHANG) != 0 || info.si_pid != 0;
}

} // namespace

ChildReaper::~ChildReaper()
{
    isEnding_ = true;
    wakeUp_.call();
    if (thread_)
        thread_->join();
}

bool ChildReaper::isReady()
{
    if (!thread_)
        thread_ = startNamedThread("kestrovan.children", 0, [this] { run(); });
    return thread_.has_value();
}

void ChildReaper::add(std::shared_ptr<Child> child)
{
    {
        const std::scoped_lock lock(mutex_);
        arrived_.push_back(std::move(child));
    }
    wakeUp_.call();
}

void ChildReaper::end(Child& child)
{
    child.isToEnd = true;
    wakeUp_.call();
}

void ChildReaper::run()
{
    while (true) {
        const bool isLast = isEnding_; // nobody arrives after that
        takeIn();
        const auto now = Clock::now();
        for (auto& watched : watched_)
            look(watched, now);
        std::erase_if(watched_, [](const Watched& watched) { return !watched.child->isRunning; });
        if (isLast && watched_.empty())
            return;
        waitForChange();
    }
}

void ChildReaper::takeIn()
{
    const std::scoped_lock lock(mutex_);
    for (auto& child : arrived_)
        watched_.push_back({.child = std::move(child), .startTime = Clock::now(), .next = std::nullopt});
    arrived_.clear();
}

void ChildReaper::look(Watched& watched, Clock::time_point now)
{
    auto& child = *watched.child;
    const bool isToEnd = child.isToEnd || isEnding_;
    if (child.process.handle && hasEnded(child.process.handle.get())) {
        child.process = {};
        planStart(watched, now);
    }
    if (!child.process.handle)
        child.isRunning = child.startAgain && !isToEnd;
    if (child.process.handle && isToEnd)
        hurry(watched, now);
    else if (child.isRunning && !child.process.handle && now >= watched.next)
        startAgain(watched, now);
}

void ChildReaper::hurry(Watched& watched, Clock::time_point now) const
{
    auto& process = watched.child->process;
    if (process.leash) {
        process.leash.reset();
        ::pidfd_send_signal(process.handle.get(), SIGTERM, nullptr, 0);
        watched.next = now + endPatience;
    }
    if (isEnding_ || now >= watched.next)
        ::pidfd_send_signal(process.handle.get(), SIGKILL, nullptr, 0);
}

void ChildReaper::planStart(Watched& watched, Clock::time_point now)
{
    if (now - watched.startTime >= steadyLife)
        watched.pause = 0ms;
    watched.next = now + watched.pause;
    watched.pause = std::clamp(watched.pause * 2, shortestRestartPause, longestRestartPause);
}

void ChildReaper::startAgain(Watched& watched, Clock::time_point now)
{
    watched.startTime = now;
    if (auto process = watched.child->startAgain()) {
        watched.child->process = std::move(*process);
        watched.next.reset();
    } else {
        planStart(watched, now);
    }
}

void ChildReaper::waitForChange()
{
    std::vector<pollfd> waits{{wakeUp_.descriptor(), POLLIN, 0}};
    std::optional<Clock::time_point> next;
    for (const auto& watched : watched_) {
        if (watched.child->process.handle)
            waits.push_back({watched.child->process.handle.get(), POLLIN, 0});
        if (watched.next)
            next = std::min(*watched.next, next.value_or(*watched.next));
    }
    int milliseconds = -1;
    if (next)
        milliseconds =
            std::max(0, static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now()).count()));
    ::poll(waits.data(), waits.size(), milliseconds);
    wakeUp_.acknowledge();
}

} // namespace kestrovan
