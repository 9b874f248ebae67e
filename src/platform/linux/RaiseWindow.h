#pragma once

class QWindow;

namespace kestrovan {

/// Puts a window that is shown in front of all others and gives it the keyboard, as far as the window manager or the
/// compositor lets a program do that. A minimised one comes back. Main thread; does not wait.
void raiseWindow(QWindow& window);

} // namespace kestrovan
