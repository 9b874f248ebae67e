#include "platform/linux/QtMainQueue.h"

#include "rigs/Deadline.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <utility>
#include <vector>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;

class QtMainQueueTest : public testing::Test {
protected:
    static bool spinUntil(const std::function<bool()>& condition)
    {
        return rigs::waitUntil([&] {
            QCoreApplication::processEvents();
            return condition();
        });
    }

    int argc_ = 1;
    char name_[5] = "test";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication application_{argc_, argv_};
    QtMainQueue queue_;
};

TEST_F(QtMainQueueTest, RunsEveryPostedTaskInOrderWhicheverThreadPostsIt)
{
    constexpr int each = 500;
    std::vector<std::vector<int>> seen(4);
    std::vector<std::thread> threads;
    int total = 0;
    threads.reserve(seen.size());
    for (auto& mine : seen)
        threads.emplace_back([&] {
            for (int n = 0; n < each; ++n)
                queue_.post([&, n] { mine.push_back(n), ++total; });
        });
    EXPECT_TRUE(spinUntil([&] { return total == each * 4; }));
    for (auto& thread : threads)
        thread.join();
    for (const auto& order : seen)
        EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST_F(QtMainQueueTest, ATaskThatPostsItselfForEverLeavesRoomForTheRest)
{
    bool enough = false;
    std::function<void()> again = [&] {
        if (!enough)
            queue_.post(again);
    };
    queue_.post(again);
    int ticks = 0;
    const auto timer = queue_.repeat(5ms, [&] { ++ticks; });
    EXPECT_TRUE(spinUntil([&] { return ticks >= 3; }));
    enough = true;
}

TEST_F(QtMainQueueTest, ANestedLoopRunsTheTasksBehindIt)
{
    std::vector<int> order;
    QEventLoop nested;
    bool stuck = false;
    queue_.post([&] { nested.exec(), order.push_back(3), QCoreApplication::quit(); });
    queue_.post([&] { order.push_back(1); });
    queue_.post([&] { order.push_back(2), nested.quit(); });
    queue_.postAfter(5s, [&] { stuck = true, nested.quit(); });
    QCoreApplication::exec();
    EXPECT_FALSE(stuck);
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TEST_F(QtMainQueueTest, ATimerMayEndWithinItsOwnTick)
{
    int destroyed = 0;
    int invalidated = 0;
    auto held = std::make_shared<int>(7);
    std::unique_ptr<Timer> first;
    std::unique_ptr<Timer> second;
    first = queue_.repeat(1ms, [&, held] {
        first.reset();
        destroyed += *held; // what the tick holds outlives its timer's handle
    });
    second = queue_.repeat(1ms, [&] { second->invalidate(), ++invalidated; });
    int later = 0;
    queue_.postAfter(60ms, [&] { ++later; });
    ASSERT_TRUE(spinUntil([&] { return later == 1; }));
    EXPECT_EQ(destroyed, 7);
    EXPECT_EQ(invalidated, 1);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(QtMainQueueTest, DroppedTasksMayOwnTimersAndHandlesMayOutliveTheQueue)
{
    auto queue = std::make_unique<QtMainQueue>();
    const auto survivor = queue->repeat(1h, [] {});
    auto owned = std::make_shared<std::unique_ptr<Timer>>(queue->repeat(1h, [] {}));
    const auto witness = std::weak_ptr(owned);
    queue->postAfter(1h, [owned] {});
    queue->post([owned = std::exchange(owned, nullptr)] {});
    queue.reset();
    EXPECT_TRUE(witness.expired());
    survivor->invalidate();
}

} // namespace
} // namespace kestrovan
