#include "GuardTest.h"

namespace kestrovan::test {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

// When it does what, GuardModelTest checks; here is what its model knows nothing of.
using GuardStateMachineTest = GuardTest;

TEST_F(GuardStateMachineTest, ANewArmingDelayHoldsFromTheNextCountdownWhoseEndBeeps)
{
    guard().startArming();
    guard().armDelayDuration = 10;
    laptop.advance(2999ms);
    EXPECT_EQ(state(), GuardState::arming(1));
    EXPECT_EQ(laptop.speaker().beeps(), 0);
    laptop.advance(1ms);
    EXPECT_EQ(state(), GuardState::armed());
    EXPECT_EQ(laptop.speaker().beeps(), 1);
    guard().disarm(std::nullopt);
    guard().startArming();
    EXPECT_EQ(state(), GuardState::arming(10));
}

TEST_F(GuardStateMachineTest, AnAlarmComesToTheFrontAndTakesOnePhotoUnlessItIsATest)
{
    guard().triggerAlarm(AlarmReason::test);
    laptop.advance(5s);
    EXPECT_TRUE(laptop.speaker().isLooping());
    EXPECT_EQ(laptop.camera().shotsRequested(), 0);
    guard().disarm(std::nullopt);

    armAndWait();
    const auto activations = laptop.desktop().activations;
    laptop.unplugCharger();
    laptop.closeLid();
    laptop.advance(3s);
    EXPECT_EQ(state(), GuardState::alarmTriggered(AlarmReason::chargerDisconnected));
    EXPECT_EQ(laptop.desktop().activations, activations + 1);
    EXPECT_EQ(laptop.camera().shotsRequested(), 1);
}

TEST_F(GuardStateMachineTest, APhotoIsLoggedWheneverItArrivesInTheLanguageOfThatMoment)
{
    guard().setLanguage(AppLanguage::english);
    guard().setCameraDelay(5);
    armAndSound();
    guard().disarm(std::nullopt);
    guard().setLanguage(AppLanguage::indonesian);
    laptop.advance(4999ms);
    EXPECT_TRUE(guard().intruderRecords->empty());
    laptop.advance(1ms);
    ASSERT_EQ(guard().intruderRecords->size(), 1U);
    EXPECT_EQ(guard().intruderRecords->front().triggerReason, "Charger Terputus!");
}

TEST_F(GuardStateMachineTest, DisarmingStopsSirenHoldsLockdownAndScreensInThatOrder)
{
    armAndSound();
    std::vector<std::string> order;
    const auto note = [&order](const char* what) { return [&order, what] { order.emplace_back(what); }; };
    const auto siren = parts->alarmManager.subscribe(note("siren"));
    const auto holds = parts->powerAssertionManager.subscribe(note("holds"));
    const auto lockdown = parts->securityLockdownManager.subscribe(note("lockdown"));
    screens.onHide = note("screens");
    EXPECT_TRUE(guard().disarm(std::nullopt));
    EXPECT_THAT(order, ElementsAre("siren", "holds", "lockdown", "screens"));
}

} // namespace
} // namespace kestrovan::test
