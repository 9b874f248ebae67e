#pragma once

#include "rigs/PrivateBus.h"
#include "rigs/PrivateDisplay.h"
#include "rigs/TemporaryFolder.h"

#include <cstdlib>
#include <string>

namespace kestrovan::rigs {

/// KDE's compositor, which WAYLAND_DISPLAY names from then on, with two outputs: windows side by side on an X server,
/// which DISPLAY names. What is typed there is typed in the session, by its shortcuts too.
class NestedKwin {
public:
    static constexpr int width = 800; ///< of an output, in pixels of the X server
    static constexpr int height = 600;

    NestedKwin()
    {
        setenv("WAYLAND_DISPLAY", (folder_.path() / "wayland-0").c_str(), 1);
        isReady_ = waitUntil([this] {
                       return run({"sh", "-c", arrange}) == 0 || !compositor_.isRunning();
                   }) &&
                   compositor_.isRunning();
    }

    /// False if the compositor did not start.
    bool isReady() const { return isReady_; }
    static void press(const std::string& chord) { run({"xdotool", "key", chord}); }

private:
    // There is no window manager to do it. The root window is found as well, first.
    static constexpr const char* arrange = "set -- $(xdotool search --maxdepth 1 --onlyvisible --name '.*') && "
                                           "[ $# = 3 ] && xdotool windowmove $3 800 0 windowfocus $2";
    // A copy has not the capability of the original, which may be more than a test's surroundings can give.
    static constexpr const char* start =
        "cp \"$(command -v kwin_wayland)\" \"$HOME\" && exec \"$HOME/kwin_wayland\" --x11-display \"$DISPLAY\" "
        "--output-count 2 --width 800 --height 600 --no-lockscreen --socket wayland-0";

    TemporaryFolder folder_;
    PrivateDisplay display_{{"Xvfb", "-screen", "0", "1600x600x24"}};
    PrivateBus bus_{PrivateBus::Kind::session};
    Program compositor_{{"env", "-u", "WAYLAND_DISPLAY", "KWIN_COMPOSE=Q", "XDG_RUNTIME_DIR=" + folder_.path().string(),
                         "HOME=" + folder_.path().string(), "sh", "-c", start}};
    bool isReady_ = false;
};

} // namespace kestrovan::rigs
