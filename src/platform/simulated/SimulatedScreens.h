#pragma once

#include "platform/Screens.h"

#include <list>
#include <string>
#include <vector>

namespace kestrovan {

/// Screens in memory: windows are covered and uncovered, and somebody writes down in which order.
class SimulatedScreens final : public Screens {
public:
    struct Window {
        OverlayWindowTraits traits;
        HostedView* contentView = nullptr;
        bool isShown = false;
    };

    std::vector<Screen> screens() const override { return attached; }
    std::unique_ptr<OverlayWindow> makeWindow(const OverlayWindowTraits& traits,
                                              std::unique_ptr<HostedView> contentView) override;

    /// All windows that there are, shown or not, in the order in which they were made.
    const std::list<Window>& windows() const { return windows_; }
    /// The names of the screens that a window covers.
    std::vector<std::string> covered() const;
    /// The screen whose window has the keyboard; empty if none has.
    const std::string& keyScreen() const { return keyScreen_; }
    /// "front NAME", "key NAME" and "out NAME", as they happened.
    std::vector<std::string> history;

    std::vector<Screen> attached{{"eDP-1", {0, 0, 1920, 1080}}};

private:
    friend class SimulatedOverlayWindow;

    std::list<Window> windows_;
    std::string keyScreen_;
};

} // namespace kestrovan
