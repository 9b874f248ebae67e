#pragma once

class QScreen;
class QWindow;
struct wl_display;
struct wl_output;
struct wl_surface;

/// What Qt's Wayland platform has, for those who speak the protocol beside it. Each is null where there is no such
/// thing. Main thread.
namespace kestrovan::wayland {

wl_display* display();
/// None while the window is hidden, unless it was created.
wl_surface* surfaceOf(QWindow& window);
wl_output* outputOf(QScreen& screen);

} // namespace kestrovan::wayland
