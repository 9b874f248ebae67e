#include "ProgramTest.h"
#include "rigs/GlaringProgram.h"

using kestrovan::rigs::GlaringProgram;
using kestrovan::rigs::RunningKestrovan;
using kestrovan::rigs::TrayHost;
using kestrovan::rigs::waitUntil;
using DeterrentTest = kestrovan::test::ProgramTest;

namespace {

constexpr kestrovan::ScreenFrame wholeScreen{0, 0, 800, 600};
constexpr const char* settings =
    R"({"Kestrovan_Lang": "en", "Kestrovan_CameraCapture": false, "Kestrovan_AutoCheckUpdates": false,
        "Kestrovan_FullscreenArmed": false, "Kestrovan_FullscreenTriggered": true, "Kestrovan_PinEnabled": true})";

} // namespace

TEST_F(DeterrentTest, CoversEverythingFromTheAlarmUntilThePin)
{
    const TrayHost tray(desktop->bus);
    RunningKestrovan program(settings);
    ASSERT_TRUE(arm(tray));
    GlaringProgram other;
    other.open(GlaringProgram::Kind::popUp, wholeScreen);
    ASSERT_TRUE(waitUntil([&] { return other.seesGlare(wholeScreen); }));

    unplug();
    ASSERT_TRUE(waitUntil([&] { return !other.seesGlare(wholeScreen); }));
    other.takeFocus(other.open(GlaringProgram::Kind::popUp, {300, 200, 200, 200}));
    EXPECT_TRUE(waitUntil([&] { return !other.seesGlare(wholeScreen); }));
    type("0000");
    kestrovan::rigs::run({"xdotool", "key", "Escape"});
    EXPECT_FALSE(other.seesGlare(wholeScreen));
    type("7391");
    EXPECT_TRUE(waitUntil([&] { return other.seesGlare(wholeScreen); }));
    EXPECT_TRUE(tray.waitFor("Arm Protection"));
}
