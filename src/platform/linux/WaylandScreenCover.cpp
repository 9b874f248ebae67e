#include "platform/linux/WaylandScreenCover.h"

#include <QScreen>
#include <QWindow>

namespace kestrovan {

// The compositor sets the size; the screen names the output. Until it does, the window has the right size already.
void WaylandScreenCover::cover(QWindow& window, QScreen& screen)
{
    window.setFlags(Qt::FramelessWindowHint);
    window.setScreen(&screen);
    window.setGeometry(screen.geometry());
    window.showFullScreen();
}

bool WaylandScreenCover::isCovering(const QWindow& window) const
{
    return window.windowStates().testFlag(Qt::WindowFullScreen);
}

} // namespace kestrovan
