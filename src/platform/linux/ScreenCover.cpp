#include "platform/linux/ScreenCover.h"

#include <QScreen>
#include <QWindow>

namespace kestrovan {

void ScreenCover::cover(QWindow& window, QScreen& screen)
{
    window.setFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    window.setScreen(&screen);
    window.setGeometry(screen.geometry());
    window.show();
}

void ScreenCover::uncover(QWindow& window)
{
    window.hide();
    window.destroy();
}

bool ScreenCover::isCovering(const QWindow& /*window*/) const
{
    return true;
}

void ScreenCover::takeKeyboard(QWindow& window)
{
    window.requestActivate();
}

} // namespace kestrovan
