#pragma once

#include "platform/PresentationOptions.h"

#include <memory>

namespace kestrovan {

class BusConnection;
class Diagnostics;

/// Everything that can hold the desktop which the running QGuiApplication is on, X11 or Wayland, and the session that
/// it belongs to; docs/desktops.md tells what becomes of each flag where. On a desktop that cannot be held it says so.
/// Main thread. It must end before the application object and the connections do; then, everything is put back.
std::unique_ptr<PresentationOptions> makePresentationOptions(BusConnection& systemBus, BusConnection& sessionBus,
                                                             Diagnostics& diagnostics);

} // namespace kestrovan
