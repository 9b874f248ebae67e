#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class QWindow;

namespace kestrovan {

/// A place on the desktop that all screens make up, in the window system's own units.
struct ScreenFrame {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const ScreenFrame&) const = default;
};

struct Screen {
    std::string name;  ///< of its connector; the same screen has the same name when it comes back
    ScreenFrame frame; ///< all of it, panels and docks included
    bool operator==(const Screen&) const = default;
};

/// A view that is ready to be put into a window of the window system.
class HostedView {
public:
    virtual ~HostedView() = default;

    /// The window that draws the view, not shown yet; it ends with this object. None where nothing is drawn.
    virtual QWindow* nativeWindow() = 0;
};

/// What a window that covers a screen is like: black, opaque, without frame or shadow, and of exactly the screen's
/// size.
struct OverlayWindowTraits {
    enum CollectionBehavior : std::uint32_t { canJoinAllSpaces = 1, stationary = 16, fullScreenAuxiliary = 256 };
    static constexpr int screenSaverLevel = 1000; ///< above panels, docks, the menu bar and full-screen programs

    Screen screen;
    int level = screenSaverLevel;
    std::uint32_t collectionBehavior = canJoinAllSpaces | stationary | fullScreenAuxiliary;
    bool canBecomeKey = true; ///< takes the keyboard although it has no frame
    bool acceptsMouseMoved = true;
};

/// A window over one screen; it leaves the screen with its object at the latest. If its screen goes away so does the
/// window, and it is there again when the same screen is. All of it may be called from within an event of its view.
class OverlayWindow {
public:
    virtual ~OverlayWindow() = default;

    virtual void makeKeyAndOrderFront() = 0; ///< shows it above everything else and gives it the keyboard
    virtual void makeKey() = 0;
    virtual void orderOut() = 0; ///< takes it from the screen
};

/// The screens of the machine. Main thread; no call waits for the window system.
class Screens {
public:
    virtual ~Screens() = default;

    /// The main screen first; none while no screen is attached.
    virtual std::vector<Screen> screens() const = 0;
    virtual std::unique_ptr<OverlayWindow> makeWindow(const OverlayWindowTraits& traits,
                                                      std::unique_ptr<HostedView> contentView) = 0;
};

} // namespace kestrovan
