#include "platform/linux/RaiseWindow.h"

#include "platform/linux/Xcb.h"

#include <QGuiApplication>
#include <QWindow>

namespace kestrovan {

namespace {

// Extended Window Manager Hints, _NET_ACTIVE_WINDOW: a request of the user's own, not the program's. Window managers
// hold back what programs ask for by themselves, to keep the focus from being stolen.
constexpr std::uint32_t sourceUser = 2;

void askWindowManager(xcb_connection_t* connection, xcb_window_t window)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = xcb::atom(connection, "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = sourceUser;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, 0, root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection);
}

} // namespace

void raiseWindow(QWindow& window)
{
    if (window.windowStates() & Qt::WindowMinimized)
        window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
    if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        askWindowManager(x11->connection(), static_cast<xcb_window_t>(window.winId()));
}

} // namespace kestrovan
