#pragma once

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/linux/BusResident.h"

namespace kestrovan {

/// Looks for a place where the desktop shows tray icons, now and later: a host of the StatusNotifierItem protocol on
/// the session bus, or a tray of the X11 display (System Tray Protocol). Main thread; never waits for the bus.
class TrayWatch {
public:
    /// `changed` is called, on the main thread, when it is known whether there is a tray, and whenever that changes.
    /// Connection and queue outlive the watch. Needs the QGuiApplication.
    TrayWatch(BusConnection& sessionBus, MainQueue& mainQueue, std::function<void(bool isThere)> changed);
    TrayWatch(const TrayWatch&) = delete;
    TrayWatch& operator=(const TrayWatch&) = delete;
    ~TrayWatch();

    /// Looks again, as the end of an X11 tray announces itself to nobody. False while it is not known.
    bool isThere() const;

private:
    class NotifierHost;
    class X11Tray;

    void consider();

    const std::function<void(bool)> changed_;
    bool isHostKnown_ = false;
    bool isHostThere_ = false;
    std::optional<bool> said_; ///< what `changed` has heard last
    BusResident<NotifierHost> host_;
    std::unique_ptr<X11Tray> x11Tray_;
    Lifetime lifetime_;
};

} // namespace kestrovan
