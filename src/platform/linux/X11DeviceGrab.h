#pragma once

#include "platform/linux/Release.h"
#include "platform/linux/Xcb.h"

#include <QPointer>
#include <QSocketNotifier>
#include <QWindow>

#include <xkbcommon/xkbcommon.h>

#include <map>
#include <memory>

struct xcb_input_key_press_event_t;

namespace kestrovan {

/// The single keyboards of the machine, taken from under the one that programs share (XInput 2): the way to the keys
/// while another program holds that one and does not let go. That program hears nothing meanwhile.
///
/// Has a connection to the X server of its own; needs a QGuiApplication. Main thread.
class X11DeviceGrab {
public:
    X11DeviceGrab();
    X11DeviceGrab(const X11DeviceGrab&) = delete;
    X11DeviceGrab& operator=(const X11DeviceGrab&) = delete;
    ~X11DeviceGrab();

    /// Takes all keyboards that can be had, also those plugged in since the last call. Their keys arrive at `window`,
    /// which is mapped, as if they had been typed there.
    void take(QWindow& window);
    void release();
    bool isHeld() const { return !taken_.empty(); }

private:
    using State = std::unique_ptr<xkb_state, Release<xkb_state_unref>>;

    bool grab(std::uint16_t keyboard, std::uint32_t window);
    State keymapOf(std::uint16_t keyboard) const;
    void readEvents();
    void deliver(const xcb_input_key_press_event_t& event, bool isPress);

    xcb::Connection connection_;
    bool isUsable_ = false;
    std::unique_ptr<xkb_context, Release<xkb_context_unref>> context_;
    std::map<std::uint16_t, State> taken_; ///< by the device's number
    QPointer<QWindow> window_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace kestrovan
