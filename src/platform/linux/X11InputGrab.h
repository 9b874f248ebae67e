#pragma once

#include "platform/linux/X11DeviceGrab.h"

#include <QTimer>

#include <chrono>
#include <cstdint>
#include <memory>

namespace kestrovan {

class Diagnostics;

/// Keyboard and pointer of the X display, taken from the window manager and from every other program. Keys arrive as
/// Qt key events of this program, whichever of its windows exist; the pointer reaches this program's windows only.
///
/// While another program holds them (an open menu, say) the grab is tried again every 100 ms, at first with an Escape
/// in between that closes menus, then with the single keyboards taken from under that program; the pointer it keeps as
/// long as it wants. Once had, the grab is confirmed every second, since whoever unmaps the window breaks it.
/// Needs a QGuiApplication on the xcb platform. Main thread.
class X11InputGrab {
public:
    static constexpr std::chrono::milliseconds retryInterval{100};
    static constexpr std::chrono::milliseconds confirmInterval{1000};

    explicit X11InputGrab(Diagnostics& diagnostics);
    X11InputGrab(const X11InputGrab&) = delete;
    X11InputGrab& operator=(const X11InputGrab&) = delete;
    ~X11InputGrab();

    void take();
    void release();
    bool isHeld() const { return keyboardHeld_ && pointerHeld_; }
    bool hasKeys() const { return keyboardHeld_ || devices_.isHeld(); }

private:
    enum class Outcome { held, heldByAnother, windowLost };

    void attempt();
    void grabBoth();
    void makeCatcher();
    Outcome grabKeyboard() const;
    Outcome grabPointer() const;
    void afterFailure();
    void pressEscape() const;

    Diagnostics& diagnostics_;
    std::unique_ptr<QWindow> catcher_;
    X11DeviceGrab devices_;
    QTimer timer_;
    bool keyboardHeld_ = false;
    bool pointerHeld_ = false;
    int failures_ = 0;
};

} // namespace kestrovan
