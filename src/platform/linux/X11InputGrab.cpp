#include "platform/linux/X11InputGrab.h"

#include "platform/Diagnostics.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xtest.h>

#include <array>

namespace kestrovan {

namespace {

using xcb::Reply;

constexpr xcb_keysym_t escapeSymbol = 0xff1b;

xcb_connection_t* connection()
{
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

// The first key whose unshifted symbol is Escape; none on a keyboard without one.
std::uint8_t escapeKey(xcb_connection_t* display)
{
    const auto* setup = xcb_get_setup(display);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const Reply<xcb_get_keyboard_mapping_reply_t> map(
        xcb_get_keyboard_mapping_reply(display, xcb_get_keyboard_mapping(display, setup->min_keycode, count), nullptr));
    if (!map)
        return 0;
    const auto* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int key = 0; key < count; ++key)
        if (symbols[key * map->keysyms_per_keycode] == escapeSymbol)
            return static_cast<std::uint8_t>(setup->min_keycode + key);
    return 0;
}

} // namespace

X11InputGrab::X11InputGrab(Diagnostics& diagnostics) : diagnostics_(diagnostics)
{
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [this] { attempt(); });
}

X11InputGrab::~X11InputGrab()
{
    release();
}

void X11InputGrab::take()
{
    if (catcher_ || !connection())
        return;
    failures_ = 0;
    makeCatcher();
    attempt();
}

void X11InputGrab::release()
{
    timer_.stop();
    if (!catcher_)
        return;
    keyboardHeld_ = pointerHeld_ = false;
    devices_.release();
    if (auto* display = connection()) {
        xcb_ungrab_pointer(display, XCB_CURRENT_TIME);
        xcb_ungrab_keyboard(display, XCB_CURRENT_TIME);
        xcb_flush(display);
    }
    catcher_.reset();
}

// A grab belongs to a mapped window. This one is off every screen and nobody's but ours, so that the grab does not
// come and go with the windows that the user sees. As a tool tip it is outside the window manager's reach, is not
// blocked by modal dialogs and does not count as a window whose closing ends the program.
void X11InputGrab::makeCatcher()
{
    catcher_ = std::make_unique<QWindow>();
    catcher_->setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    catcher_->setGeometry(-10, -10, 1, 1);
    catcher_->show();
}

void X11InputGrab::attempt()
{
    grabBoth();
    if (keyboardHeld_)
        devices_.release();
    if (isHeld())
        failures_ = 0;
    else
        afterFailure();
    timer_.start(isHeld() ? confirmInterval : retryInterval);
}

void X11InputGrab::grabBoth()
{
    auto keyboard = grabKeyboard();
    auto pointer = grabPointer();
    if (keyboard == Outcome::windowLost || pointer == Outcome::windowLost) {
        makeCatcher();
        keyboard = grabKeyboard();
        pointer = grabPointer();
    }
    keyboardHeld_ = keyboard == Outcome::held;
    pointerHeld_ = pointer == Outcome::held;
}

X11InputGrab::Outcome X11InputGrab::grabKeyboard() const
{
    auto* display = connection();
    const auto cookie = xcb_grab_keyboard(display, 0, static_cast<xcb_window_t>(catcher_->winId()), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(display, cookie, nullptr));
    if (!reply || reply->status == XCB_GRAB_STATUS_NOT_VIEWABLE)
        return Outcome::windowLost;
    return reply->status == XCB_GRAB_STATUS_SUCCESS ? Outcome::held : Outcome::heldByAnother;
}

// Owner events: clicks go to whichever window of ours they hit, on every screen, and to nobody else.
X11InputGrab::Outcome X11InputGrab::grabPointer() const
{
    auto* display = connection();
    constexpr auto mask = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION |
                          XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
    const auto cookie =
        xcb_grab_pointer(display, 1, static_cast<xcb_window_t>(catcher_->winId()), mask, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(display, cookie, nullptr));
    if (!reply || reply->status == XCB_GRAB_STATUS_NOT_VIEWABLE)
        return Outcome::windowLost;
    return reply->status == XCB_GRAB_STATUS_SUCCESS ? Outcome::held : Outcome::heldByAnother;
}

// Escape is for menus, and for menus within menus. Who is not impressed by it loses the keys all the same.
void X11InputGrab::afterFailure()
{
    constexpr int escapeUntil = 6;
    constexpr int patience = 20;
    ++failures_;
    if (failures_ == patience)
        diagnostics_.line("Lockdown: another program holds the keyboard or the pointer; trying on");
    if (keyboardHeld_)
        return;
    if (failures_ > escapeUntil)
        devices_.take(*catcher_);
    else if (failures_ % 2 == 0)
        pressEscape();
}

void X11InputGrab::pressEscape() const
{
    auto* display = connection();
    const auto key = xcb::hasExtension(display, &xcb_test_id) ? escapeKey(display) : std::uint8_t{0};
    if (key == 0)
        return;
    for (const auto type : std::array<std::uint8_t, 2>{XCB_KEY_PRESS, XCB_KEY_RELEASE})
        xcb_test_fake_input(display, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(display);
}

} // namespace kestrovan
