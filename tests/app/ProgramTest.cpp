#include "app/ProgramTest.h"

namespace {

using kestrovan::rigs::RunningKestrovan;
using kestrovan::rigs::TrayHost;
using kestrovan::rigs::waitUntil;
using kestrovan::test::ProgramTest;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

bool isActive(std::uint32_t window)
{
    return kestrovan::rigs::run({"sh", "-c", "[ \"$(xdotool getactivewindow)\" = \"$0\" ]", std::to_string(window)}) ==
           0;
}

TEST_F(ProgramTest, ArmsFiresAndIsDisarmedByThePin)
{
    const TrayHost tray(desktop->bus);
    RunningKestrovan program(withPin);
    ASSERT_TRUE(tray.waitFor("Charger Connected (80%)"));
    const int changesBefore = tray.iconChanges();
    ASSERT_TRUE(arm(tray));
    EXPECT_TRUE(waitUntil([&] { return tray.iconChanges() > changesBefore; }));
    unplug();
    ASSERT_TRUE(tray.waitFor("ALARM: Charger Disconnected!"));
    EXPECT_THAT(tray.menu(), Contains(TrayHost::Line{"Quit", false}));
    EXPECT_THAT(tray.menu(), Contains(TrayHost::Line{"Battery (80%)", false}));
    EXPECT_TRUE(waitUntil([&] { return tray.iconChanges() > changesBefore + 1; }));

    tray.press("Quit");
    type("0000");
    EXPECT_TRUE(tray.shows("STOP ALARM"));
    kestrovan::rigs::run({"xdotool", "key", "Escape"});
    type("7391");
    ASSERT_TRUE(tray.waitFor("Arm Protection"));
    EXPECT_THAT(tray.menu(), Contains(TrayHost::Line{"Quit", true}));
}

TEST_F(ProgramTest, AsksForADarkTitleBarForWhateverWindowManagerComesLater)
{
    RunningKestrovan program(withoutPin);
    ASSERT_TRUE(program.waitForWindow());
    const auto asked =
        "xprop -id " + std::to_string(program.window()) + " -notype 8u _GTK_THEME_VARIANT | grep -q dark";
    EXPECT_EQ(kestrovan::rigs::run({"sh", "-c", asked}), 0);
}

TEST_F(ProgramTest, ASecondStartBringsTheFirstOnesWindowToTheFrontAndEnds)
{
    RunningKestrovan program(withoutPin);
    ASSERT_TRUE(program.waitForWindow());
    const auto window = program.window();
    kestrovan::rigs::run({"xdotool", "windowminimize", std::to_string(window)});
    ASSERT_TRUE(program.waitForNoWindow());
    EXPECT_EQ(program.runAgain(), 0);
    EXPECT_TRUE(program.waitForWindow());
    EXPECT_TRUE(waitUntil([&] { return isActive(window); }));
    EXPECT_TRUE(program.isRunning());
}

TEST_F(ProgramTest, ASecondStartDoesNotWaitForAFirstThatHangs)
{
    RunningKestrovan program(withoutPin);
    ASSERT_TRUE(program.waitForWindow());
    program.signal(SIGSTOP);
    EXPECT_EQ(program.runAgain(), 1);
    program.signal(SIGCONT);
}

TEST_F(ProgramTest, ClosingTheWindowLeavesItInTheTray)
{
    const TrayHost tray(desktop->bus);
    RunningKestrovan program(withoutPin);
    ASSERT_TRUE(tray.waitForItem());
    ASSERT_TRUE(program.waitForWindow());
    kestrovan::rigs::WitnessClient user;
    user.askToClose(program.window());
    ASSERT_TRUE(program.waitForNoWindow());
    EXPECT_TRUE(program.isRunning());

    tray.press("Open Kestrovan Window");
    ASSERT_TRUE(program.waitForWindow());
    user.askToClose(program.window());
    ASSERT_TRUE(program.waitForNoWindow());
    tray.pressIcon();
    ASSERT_TRUE(program.waitForWindow());
    user.askToClose(program.window());
    ASSERT_TRUE(program.waitForNoWindow());
    EXPECT_EQ(program.runAgain(), 0);
    EXPECT_TRUE(program.waitForWindow());
}

TEST_F(ProgramTest, ATrayThatComesLateGetsTheItemAndOneThatGoesGivesTheWindowBack)
{
    RunningKestrovan program(withoutPin);
    ASSERT_TRUE(program.waitForWindow());
    auto tray = std::make_unique<TrayHost>(desktop->bus);
    ASSERT_TRUE(tray->waitFor("Arm Protection"));
    kestrovan::rigs::WitnessClient user;
    user.askToClose(program.window());
    ASSERT_TRUE(program.waitForNoWindow());
    tray.reset();
    EXPECT_TRUE(program.waitForWindow());

    const TrayHost next(desktop->bus);
    EXPECT_TRUE(next.waitFor("Arm Protection")) << "a panel that was restarted";
}

TEST_F(ProgramTest, WithoutATrayClosingTheWindowQuits)
{
    RunningKestrovan program(withoutPin);
    ASSERT_TRUE(program.waitForWindow());
    kestrovan::rigs::WitnessClient user;
    user.askToClose(program.window());
    EXPECT_EQ(program.waitForEnd(), 0);
}

TEST_F(ProgramTest, WithoutASessionBusItSaysSoAndRuns)
{
    RunningKestrovan program(withoutPin, {"-u", "DBUS_SESSION_BUS_ADDRESS", "-u", "XDG_RUNTIME_DIR"});
    EXPECT_TRUE(program.waitForLine("No session bus: "));
    ASSERT_TRUE(program.waitForWindow());
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), 0);
}

TEST_F(ProgramTest, ASessionBusThatHangsKeepsNothingUp)
{
    desktop->bus.daemon().signal(SIGSTOP);
    RunningKestrovan program(withoutPin);
    EXPECT_TRUE(program.waitForLine("The session bus does not answer: "));
    EXPECT_TRUE(program.waitForWindow());
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), 0);
    desktop->bus.daemon().signal(SIGCONT);
}

TEST_F(ProgramTest, WithoutADisplayItSaysSoAndFails)
{
    RunningKestrovan program(withoutPin, {"-u", "DISPLAY", "-u", "WAYLAND_DISPLAY"});
    EXPECT_EQ(program.waitForEnd(), 1);
    EXPECT_THAT(program.lines(), Contains(StartsWith("Kestrovan needs a graphical session: ")));
}

TEST_F(ProgramTest, ADamagedSettingsFileIsReportedAndReadsAsDefaults)
{
    const TrayHost tray(desktop->bus);
    RunningKestrovan program(R"({"Kestrovan_Lang": "en", "Kestrovan_Pin)");
    EXPECT_TRUE(tray.waitFor("Aktifkan Proteksi"));
    EXPECT_THAT(program.lines(), Contains(HasSubstr("settings.json")));
}

} // namespace
