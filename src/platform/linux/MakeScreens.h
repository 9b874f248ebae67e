#pragma once

#include "platform/Screens.h"

#include <memory>

namespace kestrovan {

/// The screens of the desktop that the running QGuiApplication is on; docs/desktops.md tells how well each can be
/// covered. It must end before the application object does. Main thread.
std::unique_ptr<Screens> makeScreens();

} // namespace kestrovan
