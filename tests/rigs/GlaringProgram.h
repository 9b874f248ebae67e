#pragma once

#include "platform/Screens.h"
#include "platform/linux/Xcb.h"

#include <cstdint>
#include <optional>

namespace kestrovan::rigs {

/// Another program on the X server of DISPLAY: its windows are all of one colour, which nobody else has, and it looks
/// at the screens as a photographer would.
class GlaringProgram {
public:
    static constexpr std::uint32_t glare = 0xFF40FF;
    enum class Kind {
        plain,
        dock,       ///< keeps its height free at the top of the desktop, as panels do
        fullScreen, ///< of the screen that it is on
        popUp,      ///< like notifications and menus: no window manager is asked
    };

    GlaringProgram();

    /// A mapped window; where the window manager puts it, if it has a say.
    xcb_window_t open(Kind kind, const ScreenFrame& frame);
    void raise(xcb_window_t window);
    void close(xcb_window_t window); ///< or destroys that of somebody else
    void unmap(xcb_window_t window);
    void takeFocus(xcb_window_t window);

    /// The colour that every pixel of the place has; none if they differ, or if there is no such place.
    std::optional<std::uint32_t> colorOf(const ScreenFrame& place);
    bool seesGlare(const ScreenFrame& place); ///< in at least one pixel
    /// The window that keys go to; its number means something to its owner only.
    xcb_window_t focus();

private:
    void describe(xcb_window_t window, Kind kind, const ScreenFrame& frame);
    void setProperty(xcb_window_t window, const char* name, xcb_atom_t type, std::uint32_t value);
    template <class Visitor>
    bool visitPixels(const ScreenFrame& place, Visitor visitor);

    xcb::Connection connection_;
    xcb_window_t root_;
};

} // namespace kestrovan::rigs
