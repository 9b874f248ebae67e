#include "platform/linux/Wayland.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

namespace kestrovan::wayland {

wl_display* display()
{
    auto* native = QGuiApplication::platformNativeInterface();
    return native ? static_cast<wl_display*>(native->nativeResourceForIntegration("wl_display")) : nullptr;
}

wl_surface* surfaceOf(QWindow& window)
{
    auto* native = QGuiApplication::platformNativeInterface();
    if (!native || !window.handle())
        return nullptr;
    return static_cast<wl_surface*>(native->nativeResourceForWindow("surface", &window));
}

wl_output* outputOf(QScreen& screen)
{
    auto* native = QGuiApplication::platformNativeInterface();
    return native ? static_cast<wl_output*>(native->nativeResourceForScreen("output", &screen)) : nullptr;
}

} // namespace kestrovan::wayland
