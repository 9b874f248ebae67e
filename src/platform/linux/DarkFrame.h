#pragma once

class QWindow;

namespace kestrovan {

/// Asks the window manager of X11 to draw a dark title bar around a window that was never shown; those that know no
/// such wish draw their own. Without effect elsewhere. Main thread.
void askForDarkFrame(QWindow& window);

} // namespace kestrovan
