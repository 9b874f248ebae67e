#include "platform/linux/SessionKeeper.h"

#include "platform/linux/IcuText.h"
#include "platform/linux/LogindPowerAssertions.h"
#include "platform/linux/LogindSystemPower.h"
#include "platform/linux/MakePresentationOptions.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "responses/PowerAssertionManager.h"
#include "responses/SecurityLockdownManager.h"
#include "rigs/CollectedLines.h"
#include "rigs/LoopMainQueue.h"
#include "rigs/MixedPlatform.h"
#include "rigs/PrivateDisplay.h"
#include "rigs/QtProgram.h"
#include "rigs/RealLogind.h"
#include "rigs/RecordingEntry.h"
#include "rigs/XsmpSession.h"

#include <gmock/gmock.h>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

/// A Qt program in a session of X11.
struct Desktop {
    rigs::PrivateDisplay display;
    rigs::XsmpSession session{XSMP_SERVER};
    rigs::QtProgram program{"xcb"};
};

class SessionKeeperTest : public testing::Test {
protected:
    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    template <class Condition>
    bool until(Condition condition)
    {
        return rigs::QtProgram::until([&] {
            mainQueue.runFor(1ms);
            return condition();
        });
    }

    static inline std::unique_ptr<Desktop> desktop;
    rigs::PrivateBus bus{rigs::PrivateBus::Kind::system};
    rigs::LoopMainQueue mainQueue;
    rigs::CollectedLines diagnostics;
    BusConnection systemBus{Bus::Kind::system};
    BusConnection sessionBus{Bus::Kind::session};
};

TEST_F(SessionKeeperTest, AllHoldsOfTheGuardTogetherAreNotTooMuchForLogind)
{
    rigs::RealLogind logind(bus);
    SessionKeeper keeper(systemBus, sessionBus, diagnostics);
    LogindSystemPower power(systemBus, sessionBus, mainQueue, diagnostics, "/nowhere");
    LogindPowerAssertions assertions(systemBus, sessionBus, mainQueue);
    std::vector<std::string> failures;
    const auto create = [&](PowerAssertionType type) {
        return assertions.create(type, 255, "A test", [&](auto code) { failures.push_back(std::to_string(code)); });
    };
    for (int round = 0; round < 3; ++round) {
        power.declareSleepVeto(true);
        const std::array held{create(PowerAssertionType::preventSystemSleep),
                              create(PowerAssertionType::preventUserIdleSystemSleep)};
        keeper.hold(true);
        EXPECT_TRUE(logind.waitForLockCount(7)) << testing::PrintToString(logind.locks());
        keeper.hold(false);
        power.declareSleepVeto(false);
        for (const auto identifier : held)
            assertions.release(identifier);
        EXPECT_TRUE(logind.waitForLockCount(0));
    }
    EXPECT_THAT(diagnostics.all(), IsEmpty());
    EXPECT_THAT(failures, IsEmpty());
}

TEST_F(SessionKeeperTest, ALogoutIsRefusedWhileItHolds)
{
    auto& session = desktop->session;
    ASSERT_TRUE(until([&] { return session.count("registered") == 1; }));
    SessionKeeper keeper(systemBus, sessionBus, diagnostics);
    keeper.hold(true);
    for (int round = 1; round <= 2; ++round) {
        session.logout();
        ASSERT_TRUE(until([&] { return session.count("cancelled") == round; })) << round;
    }
    EXPECT_EQ(session.count("agreed"), 0);
    keeper.hold(false);
    session.logout();
    EXPECT_TRUE(until([&] { return session.count("agreed") == 1; }));
    EXPECT_EQ(session.count("cancelled"), 2);
}

TEST_F(SessionKeeperTest, APowerOffDuringTheLockdownWaitsAndRestartsTheSiren)
{
    const rigs::RealLogind logind(bus);
    IcuText text;
    SimulatedLaptop laptop(text);
    LogindSystemPower power(systemBus, sessionBus, mainQueue, diagnostics, "/nowhere");
    const auto presentation = makePresentationOptions(systemBus, sessionBus, diagnostics);
    const auto machine = rigs::mixed(
        laptop.platform(), {.mainQueue = &mainQueue, .systemPower = &power, .presentation = presentation.get()});
    PowerAssertionManager assertions(machine);
    rigs::RecordingEntry siren;
    SecurityLockdownManager lockdown(machine, assertions);

    lockdown.enableLockdown(siren);
    ASSERT_TRUE(until([&] { return logind.locks().size() == 2; }));
    ASSERT_GE(logind.powerOff(), 0);
    ASSERT_TRUE(until([&] { return siren.sirenRestarts == 1; }));
    EXPECT_EQ(laptop.holds().assertions.begin()->second, "Kestrovan Emergency Lockdown");
    EXPECT_EQ(logind.suspendCount(), 0) << "the machine is off";

    lockdown.disableLockdown();
    EXPECT_TRUE(until([&] { return logind.suspendCount() == 1; })) << "nobody holds it back any more";
}

TEST_F(SessionKeeperTest, WhatLogindRefusesIsSaidOnce)
{
    const rigs::BusDouble logind(bus, "org.freedesktop.login1", [](sd_bus_message*) { return -EACCES; });
    SessionKeeper keeper(systemBus, sessionBus, diagnostics);
    for (int i = 0; i < 3; ++i) {
        keeper.hold(true);
        ASSERT_TRUE(rigs::waitUntil([&] { return !diagnostics.all().empty(); }));
        keeper.hold(false);
    }
    EXPECT_EQ(diagnostics.count("Lockdown: shutting the machine down cannot be held back wholly (logind: "), 1);
    EXPECT_EQ(diagnostics.all().size(), 1U);
}

} // namespace
} // namespace kestrovan
