#include "platform/linux/X11ScreenCover.h"

#include "platform/linux/Xcb.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <qpa/qplatformscreen.h>
#include <qpa/qplatformwindow.h>

#include <algorithm>
#include <array>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t opaqueBlack = 0xFF000000; // of any depth
constexpr auto calm = 1000ms;                     ///< after which whoever comes up is a new one, not one who insists
constexpr auto longestOvertakePause = 1000ms;

xcb_connection_t* connectionOfQt()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

void paintBlack(xcb_connection_t* connection, xcb_window_t window)
{
    xcb_change_window_attributes(connection, window, XCB_CW_BACK_PIXEL, &opaqueBlack);
}

// The window that has come up above others; none if the event is of another kind.
xcb_window_t risenWindow(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_MAP_NOTIFY:
        return reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
    case XCB_CONFIGURE_NOTIFY:
        return reinterpret_cast<const xcb_configure_notify_event_t&>(event).window;
    default:
        return XCB_NONE;
    }
}

// The window that has been taken from the screen; none if the event is of another kind.
xcb_window_t goneWindow(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_UNMAP_NOTIFY:
        return reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window;
    case XCB_DESTROY_NOTIFY:
        return reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
    default:
        return XCB_NONE;
    }
}

xcb_window_t nativeOf(const QWindow& window)
{
    return static_cast<xcb_window_t>(window.handle()->winId());
}

} // namespace

X11ScreenCover::X11ScreenCover()
    : connection_(connectionOfQt()), root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root)
{
    raiser_.setSingleShot(true);
    raiser_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&raiser_, &QTimer::timeout, [this] { raiseAll(); });
    qGuiApp->installNativeEventFilter(this);
}

X11ScreenCover::~X11ScreenCover()
{
    qGuiApp->removeNativeEventFilter(this);
    watchStacking(false);
}

// Qt counts in units of the screen's scale, in which the screen's edge may have a fraction: the pixels are set below
// it.
void X11ScreenCover::cover(QWindow& window, QScreen& screen)
{
    if (!isCovering(window))
        uncover(window);
    window.setFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::X11BypassWindowManagerHint);
    window.setScreen(&screen);
    window.setGeometry(screen.geometry());
    window.create();
    window.handle()->setGeometry(screen.handle()->geometry());
    const auto native = nativeOf(window);
    paintBlack(connection_, native);
    if (covering_.empty())
        watchStacking(true);
    covering_.insert(&window);
    windows_.insert(native);
    window.show();
    raiseAll();
}

void X11ScreenCover::uncover(QWindow& window)
{
    covering_.erase(&window);
    if (window.handle()) {
        windows_.erase(nativeOf(window));
        lost_.erase(nativeOf(window));
    }
    if (covering_.empty())
        watchStacking(false);
    ScreenCover::uncover(window);
}

bool X11ScreenCover::isCovering(const QWindow& window) const
{
    return !window.handle() || !lost_.contains(nativeOf(window));
}

// The window manager's way of seeing who is above whom works with compositors, too, for which nothing is ever hidden.
void X11ScreenCover::watchStacking(bool watched)
{
    if (watched) {
        const xcb::Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection_, xcb_get_window_attributes(connection_, root_), nullptr));
        rootEvents_ = attributes ? attributes->your_event_mask : 0;
    }
    const auto events = watched ? rootEvents_ | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY : rootEvents_;
    if (events != 0)
        xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_);
}

bool X11ScreenCover::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/)
{
    if (windows_.empty() || type != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    if (const auto gone = goneWindow(event); windows_.contains(gone))
        lost_.insert(gone);
    const auto risen = risenWindow(event);
    if (risen != XCB_NONE && !windows_.contains(risen))
        somethingCameUp();
    return false;
}

void X11ScreenCover::somethingCameUp()
{
    const auto sinceLast = std::chrono::steady_clock::now() - lastRaise_;
    if (raiser_.isActive())
        return;
    pause_ = sinceLast > calm + pause_ ? 0ms : std::clamp(2 * pause_, 1ms, longestOvertakePause);
    raiser_.start(pause_);
}

void X11ScreenCover::raiseAll()
{
    lastRaise_ = std::chrono::steady_clock::now();
    constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
    for (const auto window : windows_)
        xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(connection_);
}

} // namespace kestrovan
