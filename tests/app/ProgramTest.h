#pragma once

#include "rigs/MockPowerSupplies.h"
#include "rigs/PrivateDisplay.h"
#include "rigs/RunningKestrovan.h"
#include "rigs/TrayHost.h"
#include "rigs/WitnessClient.h"

#include <gmock/gmock.h>

namespace kestrovan::test {

/// The program in English, on a laptop on the mains, on a display with a window manager and a session bus.
class ProgramTest : public testing::Test {
protected:
    static constexpr const char* withoutPin =
        R"({"Kestrovan_Lang": "en", "Kestrovan_CameraCapture": false, "Kestrovan_AutoCheckUpdates": false,
            "Kestrovan_FullscreenArmed": false, "Kestrovan_FullscreenTriggered": false})";
    static constexpr const char* withPin =
        R"({"Kestrovan_Lang": "en", "Kestrovan_CameraCapture": false, "Kestrovan_AutoCheckUpdates": false,
            "Kestrovan_FullscreenArmed": false, "Kestrovan_FullscreenTriggered": false, "Kestrovan_PinEnabled": true})";

    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    ProgramTest() { supplies.addLaptop(); }

    static bool arm(const rigs::TrayHost& tray)
    {
        return tray.waitFor("Arm Protection") && tray.press("Arm Protection") && tray.waitFor("Disarm Protection");
    }
    void unplug()
    {
        supplies.set("AC", "online", "0");
        supplies.sendEvent("AC");
    }
    static void type(const std::string& digits)
    {
        rigs::run({"xdotool", "type", "--delay", "60", digits});
        rigs::run({"xdotool", "key", "Return"});
    }

    struct Desktop {
        /// The window manager may lose a window that comes while it starts. It has started when it does as it is told.
        Desktop()
        {
            constexpr const char* order = "xdotool set_num_desktops 2 && test $(xdotool get_num_desktops) = 2";
            EXPECT_TRUE(rigs::waitUntil([] { return rigs::run({"sh", "-c", order}) == 0; }));
        }

        rigs::PrivateDisplay display;
        // Without the mock devices: their library can deadlock in a process that forks, as openbox does at its start.
        rigs::Program windowManager{{"env", "-u", "LD_PRELOAD", "openbox", "--sm-disable"}};
        rigs::PrivateBus bus{rigs::PrivateBus::Kind::session};
    };
    static inline std::unique_ptr<Desktop> desktop;
    rigs::MockPowerSupplies supplies;
};

} // namespace kestrovan::test
