#include "app/ProgramTest.h"
#include "l10n/Vendor.h"
#include "rigs/GnomeSession.h"
#include "rigs/XsmpSession.h"

namespace {

using kestrovan::rigs::RunningKestrovan;
using kestrovan::rigs::TrayHost;
using kestrovan::rigs::waitUntil;

class QuittingTest : public kestrovan::test::ProgramTest {
protected:
    /// The program has had its turn since whatever was sent to it last, and is still armed.
    static bool goesOn(RunningKestrovan& program, const TrayHost& tray)
    {
        for (int round = 0; round < 3; ++round)
            if (!tray.shows("Disarm Protection") && !tray.shows("STOP ALARM"))
                return false;
        return program.isRunning();
    }
};

constexpr std::array quitSignals{SIGTERM, SIGINT, SIGHUP};

TEST_F(QuittingTest, IsAllowedWhileDisarmed)
{
    for (const int number : quitSignals) {
        RunningKestrovan program(withPin);
        ASSERT_TRUE(program.waitForWindow());
        program.signal(number);
        EXPECT_EQ(program.waitForEnd(), 0) << number;
    }
    const TrayHost tray(desktop->bus);
    RunningKestrovan program(withPin);
    ASSERT_TRUE(tray.waitFor("Quit"));
    tray.press("Quit");
    EXPECT_EQ(program.waitForEnd(), 0);
}

TEST_F(QuittingTest, IsAllowedInTheCountdownAndWhileArmedWithoutPin)
{
    const TrayHost tray(desktop->bus);
    RunningKestrovan counting(withPin);
    ASSERT_TRUE(tray.waitFor("Arm Protection"));
    ASSERT_TRUE(tray.press("Arm Protection"));
    ASSERT_TRUE(tray.waitFor("Arming (3s)..."));
    counting.signal(SIGTERM);
    EXPECT_EQ(counting.waitForEnd(), 0);

    RunningKestrovan armed(withoutPin);
    ASSERT_TRUE(waitUntil([&] { return tray.shows("Arm Protection"); }));
    ASSERT_TRUE(arm(tray));
    unplug();
    ASSERT_TRUE(tray.waitFor("STOP ALARM"));
    armed.signal(SIGTERM);
    EXPECT_TRUE(goesOn(armed, tray)) << "not while the alarm sounds";
    ASSERT_TRUE(tray.press("STOP ALARM"));
    ASSERT_TRUE(tray.waitFor("Arm Protection"));
    ASSERT_TRUE(arm(tray));
    armed.signal(SIGINT);
    EXPECT_EQ(armed.waitForEnd(), 0);
}

TEST_F(QuittingTest, IsNotHeldUpByABusThatHangs)
{
    const TrayHost tray(desktop->bus);
    RunningKestrovan program(withoutPin);
    ASSERT_TRUE(arm(tray)) << "the session is asked to stay awake";
    desktop->bus.daemon().signal(SIGSTOP);
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), 0);
    desktop->bus.daemon().signal(SIGCONT);
}

TEST_F(QuittingTest, IsRefusedToAllWhileArmedWithPinAndWhileTheAlarmSounds)
{
    const TrayHost tray(desktop->bus);
    RunningKestrovan program(withPin);
    ASSERT_TRUE(arm(tray));
    for (int state = 1; state <= 2; ++state) {
        for (const int number : quitSignals) {
            program.signal(number);
            EXPECT_TRUE(goesOn(program, tray)) << number;
        }
        tray.press("Quit");
        EXPECT_TRUE(goesOn(program, tray));
        unplug();
        ASSERT_TRUE(tray.waitFor("STOP ALARM"));
    }
}

TEST_F(QuittingTest, TheSessionsEndIsRefusedLikeTheRest)
{
    const TrayHost tray(desktop->bus);
    kestrovan::rigs::XsmpSession session(XSMP_SERVER);
    RunningKestrovan program(withPin);
    unsetenv("SESSION_MANAGER");
    ASSERT_TRUE(arm(tray));
    session.logout();
    EXPECT_TRUE(waitUntil([&] { return session.count("cancelled") == 1; }));
    tray.press("Disarm Protection");
    ASSERT_TRUE(tray.waitFor("Arm Protection"));
    session.logout();
    EXPECT_TRUE(waitUntil([&] { return session.count("agreed") == 1; }));
}

TEST_F(QuittingTest, TheSessionsEndIsRefusedOverTheBusWhereQtDoesNotHearOfIt)
{
    const std::string start = std::string("register ") + kestrovan::vendor::applicationId + " start-12";
    const std::string refusal = "no: Protection Active (Guarded)";
    const TrayHost tray(desktop->bus);
    kestrovan::rigs::GnomeSession session(desktop->bus);
    RunningKestrovan program(withPin, {"DESKTOP_AUTOSTART_ID=start-12"});
    ASSERT_TRUE(arm(tray));
    session.say("QueryEndSession");
    ASSERT_TRUE(session.waitFor({start, refusal}));
    EXPECT_TRUE(goesOn(program, tray));
    tray.press("Disarm Protection");
    ASSERT_TRUE(tray.waitFor("Arm Protection"));
    session.say("QueryEndSession");
    ASSERT_TRUE(session.waitFor({start, refusal, "may end"}));
    EXPECT_TRUE(program.isRunning());
    session.say("EndSession");
    EXPECT_EQ(program.waitForEnd(), 0);
    EXPECT_TRUE(session.waitFor({start, refusal, "may end", "may end"}));
}

TEST_F(QuittingTest, ClosingTheWindowWithoutATrayIsRefusedToo)
{
    auto tray = std::make_unique<TrayHost>(desktop->bus);
    RunningKestrovan program(withPin);
    ASSERT_TRUE(program.waitForWindow());
    ASSERT_TRUE(arm(*tray));
    tray.reset();
    kestrovan::rigs::WitnessClient user;
    user.askToClose(program.window());
    tray = std::make_unique<TrayHost>(desktop->bus);
    EXPECT_TRUE(tray->waitFor("Disarm Protection"));
    EXPECT_TRUE(program.isRunning());
}

} // namespace
