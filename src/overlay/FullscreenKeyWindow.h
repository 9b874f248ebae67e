#pragma once

#include "platform/Screens.h"

#include <memory>

namespace kestrovan {

/// The window over one screen: black, without a frame, above everything, and yet able to have the keyboard.
class FullscreenKeyWindow {
public:
    FullscreenKeyWindow(Screens& screens, const Screen& screen, std::unique_ptr<HostedView> contentView)
        : window_(screens.makeWindow({.screen = screen, .canBecomeKey = canBecomeKey()}, std::move(contentView)))
    {}

    static constexpr bool canBecomeKey() { return true; }
    static constexpr bool canBecomeMain() { return true; }

    void makeKeyAndOrderFront() { window_->makeKeyAndOrderFront(); }
    void makeKey() { window_->makeKey(); }
    void orderOut() { window_->orderOut(); }

private:
    std::unique_ptr<OverlayWindow> window_;
};

} // namespace kestrovan
