#include "platform/linux/DarkFrame.h"

#include "platform/linux/Xcb.h"

#include <QGuiApplication>
#include <QWindow>

#include <string_view>

namespace kestrovan {

namespace {

// Not standardised, but what the window managers of most desktops go by.
constexpr std::string_view property = "_GTK_THEME_VARIANT";
constexpr std::string_view dark = "dark";

} // namespace

void askForDarkFrame(QWindow& window)
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return;
    auto* connection = x11->connection(); // which shows the window, later
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        xcb::atom(connection, property), xcb::atom(connection, "UTF8_STRING"), 8, dark.size(),
                        dark.data());
}

} // namespace kestrovan
