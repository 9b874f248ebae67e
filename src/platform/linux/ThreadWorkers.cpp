#include "platform/linux/ThreadWorkers.h"

#include "platform/linux/ThreadSerialQueue.h"
#include "platform/linux/WorkerPool.h"

#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// Two pools rather than one: a thread that has once been made to yield may not take that back without privileges.
constexpr int backgroundNice = 10;
constexpr auto longestFinalWork = 5s;

} // namespace

ThreadWorkers::ThreadWorkers()
    : userInitiated_(std::make_shared<WorkerPool>("worker", 0)),
      background_(std::make_shared<WorkerPool>("background", backgroundNice))
{}

ThreadWorkers::~ThreadWorkers()
{
    userInitiated_->stop();
    background_->stop();
    const auto deadline = std::chrono::steady_clock::now() + longestFinalWork;
    userInitiated_->waitUntilStopped(deadline);
    background_->waitUntilStopped(deadline);
}

void ThreadWorkers::run(Priority priority, Task task)
{
    runAfter(0ms, priority, std::move(task));
}

void ThreadWorkers::runAfter(std::chrono::milliseconds delay, Priority priority, Task task)
{
    const auto& pool = priority == Priority::background ? background_ : userInitiated_;
    pool->add(delay, std::move(task));
}

std::unique_ptr<SerialQueue> ThreadWorkers::makeSerialQueue(const std::string& label)
{
    return std::make_unique<ThreadSerialQueue>(label);
}

} // namespace kestrovan
