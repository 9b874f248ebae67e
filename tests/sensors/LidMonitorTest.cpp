#include "sensors/LidMonitor.h"

#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"

#include <gmock/gmock.h>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LidMonitorTest : public ::testing::Test {
protected:
    LidMonitorTest()
    {
        monitor->onLidClosed = [this] { calls.emplace_back("lid"); };
        monitor->onSleepTriggered = [this] { calls.emplace_back("sleep"); };
        monitor->isArmedProvider = [this] { return armed; };
    }

    IcuText text;
    SimulatedLaptop laptop{text};
    std::unique_ptr<LidMonitor> monitor = std::make_unique<LidMonitor>(laptop.power(), laptop.time(), laptop.time());
    bool armed = true;
    std::vector<std::string> calls;
};

// What an armed guard makes of the lid and of sleep, the guard's model test checks.

TEST_F(LidMonitorTest, SleepIsVetoedWhileNobodyAnswersForTheGuard)
{
    monitor->isArmedProvider = nullptr;
    EXPECT_FALSE(laptop.askForSleep());
    EXPECT_THAT(calls, ElementsAre("lid", "sleep"));
}

TEST_F(LidMonitorTest, ALidThatCannotBeReadIsOpen)
{
    laptop.closeLid();
    laptop.advance(150ms);
    laptop.power().lidClosed.reset();
    laptop.advance(150ms);
    EXPECT_FALSE(monitor->isLidClosed);
}

TEST_F(LidMonitorTest, AnAnnouncedSleepIsAcknowledgedAtOnceAndReported)
{
    laptop.power().send(PowerMessage::systemWillSleep, 7);
    EXPECT_TRUE(laptop.power().answers.at(7));
    EXPECT_THAT(calls, IsEmpty());
    laptop.settle();
    EXPECT_THAT(calls, ElementsAre("lid", "sleep"));

    armed = false;
    laptop.power().send(PowerMessage::systemWillSleep, 8);
    EXPECT_TRUE(laptop.power().answers.at(8));
    laptop.settle();
    EXPECT_EQ(calls.size(), 2U);
}

TEST_F(LidMonitorTest, WakingAndADarkScreenLookAtTheLidAndAnswerNothing)
{
    laptop.settle(); // the poll's first look
    laptop.closeLid();
    laptop.wakeUp();
    EXPECT_THAT(calls, ElementsAre("lid"));
    laptop.openLid();
    laptop.screensSleep();
    EXPECT_FALSE(monitor->isLidClosed);
    laptop.power().send(static_cast<PowerMessage>(0xE0000340), 9);
    laptop.settle();
    EXPECT_THAT(laptop.power().answers, IsEmpty());
}

TEST_F(LidMonitorTest, NothingCallsBackAfterItsEnd)
{
    laptop.power().send(PowerMessage::systemWillSleep, 1);
    laptop.closeLid();
    monitor.reset();
    laptop.advance(1s);
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(laptop.time().waiting(), 0U);
}

} // namespace
} // namespace kestrovan
