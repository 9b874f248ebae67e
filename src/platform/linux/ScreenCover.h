#pragma once

class QScreen;
class QWindow;

namespace kestrovan {

/// How a window of ours comes to cover a screen; every window system has its own way. This one is plain Qt: a frameless
/// window on top, of the screen's size. Main thread.
class ScreenCover {
public:
    ScreenCover() = default;
    ScreenCover(const ScreenCover&) = delete;
    ScreenCover& operator=(const ScreenCover&) = delete;
    virtual ~ScreenCover() = default;

    /// Shows the window over the screen, or puts it right after the screen has changed its place or size, or after it
    /// has been taken away.
    virtual void cover(QWindow& window, QScreen& screen);
    /// Hides it, and lets go of all that the window system holds for it.
    virtual void uncover(QWindow& window);
    /// False if the window system has taken the window from the screen in spite of us.
    virtual bool isCovering(const QWindow& window) const;
    virtual void takeKeyboard(QWindow& window);
};

} // namespace kestrovan
