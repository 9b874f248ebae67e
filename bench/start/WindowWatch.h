#pragma once

#include "platform/linux/Xcb.h"

#include <chrono>

namespace kestrovan::bench {

/// Sees windows appear on the X server of DISPLAY.
class WindowWatch {
public:
    WindowWatch();

    /// Waits until a window that is large enough to be looked at appears, from now on or since the last call; false if
    /// none does in time.
    bool waitForWindow(std::chrono::milliseconds patience);

private:
    bool isLarge(xcb_window_t window) const;

    xcb::Connection connection_;
};

} // namespace kestrovan::bench
