#pragma once

#include "platform/linux/Xcb.h"

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace kestrovan::bench {

/// Somebody in front of the X server of DISPLAY: sees what is drawn there, and uses the mouse.
class Onlooker {
public:
    struct Spot {
        int x;
        int y;
    };
    struct Area {
        int x;
        int y;
        int width;
        int height;
    };
    /// Row by row, 0x00RRGGBB.
    using Picture = std::vector<std::uint32_t>;
    using Clock = std::chrono::steady_clock;

    Onlooker();

    /// The colour of the desktop behind all windows.
    void paintDesktop(std::uint32_t color);
    /// Of the screen; empty where the area is not all on it.
    Picture look(const Area& area) const;
    /// Looks again and again; the moment at which it saw what it waits for, none if it does not in time.
    std::optional<Clock::time_point> waitFor(const Area& area, const std::function<bool(const Picture&)>& isThere,
                                             std::chrono::milliseconds patience) const;
    /// Until nothing has moved there for a while.
    void waitForRest(const Area& area) const;

    void press(const Spot& spot); ///< the left button, and lets go of it
    void turnWheel(const Spot& spot, int notches);
    /// Where a window is on the screen.
    Spot origin(std::uint32_t window) const;

private:
    void button(std::uint8_t number);
    void moveTo(const Spot& spot);

    xcb::Connection connection_;
    xcb_window_t root_;
};

} // namespace kestrovan::bench
