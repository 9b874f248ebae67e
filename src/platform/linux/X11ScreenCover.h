#pragma once

#include "platform/linux/ScreenCover.h"

#include <QAbstractNativeEventFilter>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <set>

struct xcb_connection_t;

namespace kestrovan {

/// Windows over the screens of an X display that no window manager knows: of exactly the screen's pixels, black from
/// the moment they are mapped, on every workspace. Whatever is mapped or raised above them is overtaken at once;
/// somebody who insists is overtaken ever more slowly. Needs a QGuiApplication on the xcb platform that outlives it.
class X11ScreenCover final : public ScreenCover, private QAbstractNativeEventFilter {
public:
    X11ScreenCover();
    X11ScreenCover(const X11ScreenCover&) = delete;
    X11ScreenCover& operator=(const X11ScreenCover&) = delete;
    ~X11ScreenCover() override;

    void cover(QWindow& window, QScreen& screen) override;
    void uncover(QWindow& window) override;
    bool isCovering(const QWindow& window) const override;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void watchStacking(bool watched);
    void somethingCameUp();
    void raiseAll();

    xcb_connection_t* const connection_;
    const std::uint32_t root_;
    std::uint32_t rootEvents_ = 0; ///< that Qt wants of the root window
    std::set<QWindow*> covering_;
    std::set<std::uint32_t> windows_;
    std::set<std::uint32_t> lost_; ///< those of them that somebody else has unmapped or destroyed
    QTimer raiser_;
    std::chrono::steady_clock::time_point lastRaise_;
    std::chrono::milliseconds pause_{0};
};

} // namespace kestrovan
