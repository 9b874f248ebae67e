#include "platform/linux/LogindSystemPower.h"

#include "LogindTest.h"

namespace kestrovan {
namespace {

using testing::IsEmpty;

class LogindSystemPowerTest : public LogindTest {
protected:
    void SetUp() override { ASSERT_TRUE(listens(systemBus)); }

    void armAndWait()
    {
        power.declareSleepVeto(true);
        ASSERT_TRUE(logind.waitForLockCount(2));
    }

    LogindSystemPower power{systemBus, sessionBus, mainQueue, diagnostics, logind.lid().procRoot()};
    std::vector<std::string> heard;
    Subscription messages = power.registerForMessages([this](PowerMessage message, std::intptr_t) {
        heard.emplace_back(message == PowerMessage::systemWillSleep ? "willSleep message" : "poweredOn message");
    });
    Subscription sleep = power.observe(WorkspaceNotice::willSleep, [this] { heard.emplace_back("willSleep notice"); });
};

TEST_F(LogindSystemPowerTest, WhereTheKernelHasNoFileOfTheLidLogindTells)
{
    LogindSystemPower asking(systemBus, sessionBus, mainQueue, diagnostics, "/nowhere");
    const auto becomes = [&](std::optional<bool> lid) {
        return rigs::waitUntil([&] { return asking.isLidClosed() == lid; });
    };
    EXPECT_TRUE(becomes(false));
    armAndWait(); // a shut lid would have logind do nothing but sleep
    ASSERT_TRUE(logind.moveLid(true));
    EXPECT_TRUE(becomes(true));

    const auto staysFor = [&](std::chrono::milliseconds time) {
        return !rigs::waitUntil([&] { return asking.isLidClosed() != true; }, time);
    };
    logind.daemon().signal(SIGSTOP);
    EXPECT_TRUE(staysFor(900ms)) << "past the time limit of the question";
    logind.daemon().signal(SIGCONT);
    bus.kill();
    EXPECT_TRUE(staysFor(200ms));
    bus.start();
    logind.startOverOnNewBus();
    EXPECT_TRUE(staysFor(200ms));
    ASSERT_TRUE(logind.moveLid(false));
    EXPECT_TRUE(becomes(false));
}

TEST_F(LogindSystemPowerTest, ManyChangesOfMindLeaveTheLastOne)
{
    for (int i = 0; i < 50; ++i)
        power.declareSleepVeto(i % 2 == 0);
    power.declareSleepVeto(false);
    BusConnection other(Bus::Kind::system);
    std::atomic<bool> isHeld = false;
    const BusResident<LogindLock> last(systemBus, [&isHeld](Bus& home) {
        return std::make_unique<LogindLock>(home, LogindLock::Request{{"idle"}, "block", "after all that"},
                                            [&](const LogindLock::Outcome& outcome) { isHeld = outcome.isHeld; });
    });
    ASSERT_TRUE(rigs::waitUntil([&] { return isHeld.load(); }));
    EXPECT_TRUE(rigs::waitUntil([&] { return logind.locks().size() == 1; }));
}

TEST_F(LogindSystemPowerTest, AHangingLogindHoldsUpNobody)
{
    logind.daemon().signal(SIGSTOP);
    LogindSystemPower slow(systemBus, sessionBus, mainQueue, diagnostics, "/nowhere");
    EXPECT_LT(timeOf([&] {
                  for (int i = 0; i < 10; ++i)
                      slow.isLidClosed();
                  slow.declareSleepVeto(true);
                  slow.declareSleepVeto(false);
                  power.declareSleepVeto(true);
              }),
              atOnce);
    EXPECT_LT(timeOf([] { const BusConnection shortLived(Bus::Kind::system); }), atOnce);
    EXPECT_TRUE(mainQueue.runUntil([&] { return diagnostics.count("Sleep cannot be held back (logind: ") == 1; }));

    logind.daemon().signal(SIGCONT);
    EXPECT_TRUE(logind.waitForLockCount(2));
    EXPECT_EQ(diagnostics.all().size(), 1U);
}

TEST_F(LogindSystemPowerTest, LocksAreTakenAgainFromANewLogindAndOverANewBus)
{
    armAndWait();
    logind.startOver();
    ASSERT_TRUE(logind.waitForLockCount(2));
    ASSERT_TRUE(logind.moveLid(true));
    EXPECT_EQ(logind.suspendCount(), 0);
    logind.lid().set(false);

    bus.kill();
    bus.start();
    logind.startOverOnNewBus();
    EXPECT_TRUE(logind.waitForLockCount(2));
    ASSERT_GE(logind.suspend(), 0);
    ASSERT_TRUE(mainQueue.runUntil([&] { return heard.size() >= 3; })) << "the signals are heard again, too";
    EXPECT_THAT(heard, testing::ElementsAre("willSleep message", "willSleep notice", "poweredOn message"));
    EXPECT_THAT(diagnostics.all(), IsEmpty());
}

/// No logind.
class NoLogindTest : public testing::Test {
protected:
    rigs::PrivateBus bus{rigs::PrivateBus::Kind::system};
    rigs::LoopMainQueue mainQueue;
    rigs::CollectedLines diagnostics;
    BusConnection systemBus{Bus::Kind::system};
    BusConnection sessionBus{Bus::Kind::session};
    LogindSystemPower power{systemBus, sessionBus, mainQueue, diagnostics, "/nowhere"};
};

TEST_F(NoLogindTest, AnAbsentLogindOrBusIsOneLine)
{
    power.declareSleepVeto(true);
    ASSERT_TRUE(rigs::waitUntil([&] { return diagnostics.count("Sleep cannot be held back (logind: ") == 1; }));
    EXPECT_EQ(power.isLidClosed(), std::nullopt);
    bus.kill();
    rigs::CollectedLines others;
    BusConnection noBus(Bus::Kind::system);
    LogindSystemPower lonely(noBus, sessionBus, mainQueue, others, "/nowhere");
    lonely.declareSleepVeto(true);
    ASSERT_TRUE(rigs::waitUntil([&] { return others.count("no system bus") == 1; }));
    mainQueue.runFor(600ms); // several attempts to connect
    lonely.declareSleepVeto(false);
    lonely.declareSleepVeto(true);
    EXPECT_EQ(lonely.isLidClosed(), std::nullopt);
    mainQueue.runFor(100ms);
    EXPECT_EQ(others.all().size(), 1U);
    EXPECT_LE(diagnostics.all().size(), 2U) << "logind's absence, and then the bus's";
}

TEST_F(NoLogindTest, TheScreenSaverIsHeardOfWheneverThereIsASession)
{
    int dark = 0;
    const auto subscription = power.observe(WorkspaceNotice::screensDidSleep, [&] { ++dark; });
    const rigs::PrivateBus session(rigs::PrivateBus::Kind::session);
    rigs::BusDouble screenSaver(session, "org.freedesktop.ScreenSaver", [](sd_bus_message*) { return -ENOTSUP; });
    const auto turn = [&](int isOn) {
        screenSaver.perform([isOn](sd_bus* connection) {
            sd_bus_emit_signal(connection, "/ScreenSaver", "org.freedesktop.ScreenSaver", "ActiveChanged", "b", isOn);
        });
    };
    EXPECT_TRUE(mainQueue.runUntil([&] {
        turn(1);
        return dark > 0;
    }));
    mainQueue.runFor(50ms);
    dark = 0;
    turn(0);
    turn(1);
    EXPECT_TRUE(mainQueue.runUntil([&] { return dark > 0; }));
    EXPECT_EQ(dark, 1);
}

} // namespace
} // namespace kestrovan
