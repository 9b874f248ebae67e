#include "platform/linux/ThreadWorkers.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <latch>
#include <thread>
#include <vector>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using Priority = Workers::Priority;

constexpr auto patience = 20s;

template <class Future>
bool arrives(const Future& future)
{
    return future.wait_for(patience) == std::future_status::ready;
}

// Shared, for the task that keeps the promise may still be returning when the test has ended.
template <class T>
std::shared_ptr<std::promise<T>> promise()
{
    return std::make_shared<std::promise<T>>();
}

class ThreadWorkersTest : public testing::Test {
protected:
    ThreadWorkers workers_;
};

TEST_F(ThreadWorkersTest, ATaskThatHangsHoldsUpNoOther)
{
    // Each of these ends only once all of them run.
    std::latch together(12);
    std::atomic<int> done = 0;
    const auto all = promise<void>();
    for (int i = 0; i < 12; ++i)
        workers_.run(i % 2 ? Priority::background : Priority::userInitiated, [&, all] {
            together.arrive_and_wait();
            if (++done == 12)
                all->set_value();
        });
    ASSERT_TRUE(arrives(all->get_future()));
}

TEST_F(ThreadWorkersTest, DelayedTasksRunInTheOrderOfTheirTimesEvenBehindABusyThread)
{
    std::promise<void> release;
    const auto finished = promise<std::vector<int>>();
    std::vector<int> order;
    workers_.runAfter(120ms, Priority::userInitiated, [&, finished] {
        order.push_back(2);
        finished->set_value(order);
    });
    workers_.runAfter(30ms, Priority::userInitiated, [&] { order.push_back(1); });
    workers_.run(Priority::userInitiated, [released = release.get_future().share()] { released.wait(); });
    auto result = finished->get_future();
    EXPECT_TRUE(arrives(result));
    release.set_value();
    EXPECT_EQ(result.get(), (std::vector{1, 2}));
}

TEST_F(ThreadWorkersTest, DestroyingThePoolWaitsForWhatRunsAndDropsTheRest)
{
    auto workers = std::make_unique<ThreadWorkers>();
    std::promise<void> started;
    std::atomic<bool> finished = false;
    std::atomic<bool> dropped = true;
    workers->runAfter(1h, Priority::background, [&] { dropped = false; });
    workers->run(Priority::userInitiated, [&] {
        started.set_value();
        std::this_thread::sleep_for(100ms);
        finished = true;
    });
    started.get_future().wait();
    workers.reset();
    EXPECT_TRUE(finished);
    EXPECT_TRUE(dropped);
}

class SerialQueueTest : public ThreadWorkersTest {
protected:
    std::unique_ptr<SerialQueue> queue_ = workers_.makeSerialQueue("com.kestrovan.averylongqueuename");
};

TEST_F(SerialQueueTest, RunsOneTaskAtATimeInOrderOnItsNamedThread)
{
    std::vector<int> order; // unguarded on purpose: the queue is what guards it
    std::thread other([&] {
        for (int i = 0; i < 200; ++i)
            queue_->post([&order, i] { order.push_back(i); });
    });
    other.join();
    const auto name = promise<std::string>();
    queue_->post([&, name] {
        char buffer[16];
        pthread_getname_np(pthread_self(), buffer, sizeof buffer);
        name->set_value(buffer);
    });
    EXPECT_EQ(name->get_future().get(), "averylongqueuen");
    ASSERT_EQ(order.size(), 200U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST_F(SerialQueueTest, ATimerTicksAtOnceThenAtItsIntervalAndNeverAfterItsEnd)
{
    std::atomic<int> ticks = 0;
    std::atomic<bool> ticking = false;
    std::promise<void> third;
    const auto begin = std::chrono::steady_clock::now();
    auto timer = queue_->repeat(40ms, 10ms, [&] {
        ticking = true;
        std::this_thread::sleep_for(2ms);
        if (++ticks == 3)
            third.set_value();
        ticking = false;
    });
    ASSERT_TRUE(arrives(third.get_future()));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 80ms);
    timer.reset();
    EXPECT_FALSE(ticking);
    const int atEnd = ticks;
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(ticks, atEnd);
}

TEST_F(SerialQueueTest, EndingATimerWaitsForARunningTickAndOnlyForThat)
{
    std::promise<void> entered;
    std::promise<void> release;
    std::atomic<bool> finished = false;
    auto idle = queue_->repeat(1h, 0ms, [] {});
    auto timer = queue_->repeat(1h, 0ms, [&, released = release.get_future().share()] {
        entered.set_value();
        released.wait();
        finished = true;
    });
    entered.get_future().wait();
    idle.reset(); // would hang if it waited for the other timer's tick
    std::thread releaser([&] {
        std::this_thread::sleep_for(50ms);
        release.set_value();
    });
    timer->invalidate();
    EXPECT_TRUE(finished);
    releaser.join();
}

TEST_F(SerialQueueTest, ATimerMayEndWithinItsOwnTick)
{
    std::promise<void> done;
    std::unique_ptr<Timer> timer;
    auto held = std::make_shared<int>(0);
    int ticks = 0;
    queue_->post([&] {
        timer = queue_->repeat(1ms, 0ms, [&, held] {
            ++ticks;
            timer.reset();
            ++*held; // what the tick holds outlives the handle
        });
        queue_->post([&] { queue_->post([&] { done.set_value(); }); });
    });
    ASSERT_TRUE(arrives(done.get_future()));
    queue_.reset();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(SerialQueueTest, DestroyingItWaitsForTheRunningTaskAndDropsTheRest)
{
    std::promise<void> started;
    std::atomic<bool> finished = false;
    std::atomic<int> later = 0;
    const auto timer = queue_->repeat(1ms, 0ms, [&] { ++later; });
    queue_->post([&] {
        started.set_value();
        std::this_thread::sleep_for(80ms);
        finished = true;
        later = 0;
    });
    queue_->post([&] { later = 1000; });
    started.get_future().wait();
    queue_.reset();
    EXPECT_TRUE(finished);
    EXPECT_EQ(later, 0);
    timer->invalidate();
}

TEST_F(SerialQueueTest, ItsOwnTaskMayDestroyIt)
{
    const auto done = promise<void>();
    queue_->post([&, done] {
        queue_.reset();
        done->set_value();
    });
    EXPECT_TRUE(arrives(done->get_future()));
}

} // namespace
} // namespace kestrovan
