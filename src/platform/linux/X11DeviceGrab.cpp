#include "platform/linux/X11DeviceGrab.h"

#include <qpa/qwindowsysteminterface.h>

#include <xcb/xinput.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <array>

namespace kestrovan {

namespace {

// Those that mean something beyond the text that they type; modifiers, so that they are not taken for keys.
int qtKey(xkb_keysym_t symbol, std::uint32_t character)
{
    switch (symbol) {
    case XKB_KEY_Return:
        return Qt::Key_Return;
    case XKB_KEY_KP_Enter:
        return Qt::Key_Enter;
    case XKB_KEY_BackSpace:
        return Qt::Key_Backspace;
    case XKB_KEY_Delete:
    case XKB_KEY_KP_Delete:
        return Qt::Key_Delete;
    case XKB_KEY_Escape:
        return Qt::Key_Escape;
    case XKB_KEY_Clear:
        return Qt::Key_Clear;
    case XKB_KEY_Num_Lock:
    case XKB_KEY_ISO_Level3_Shift:
        return Qt::Key_Shift;
    default:
        break;
    }
    if (symbol >= XKB_KEY_Shift_L && symbol <= XKB_KEY_Hyper_R)
        return Qt::Key_Shift;
    return character != 0 ? static_cast<int>(character) : Qt::Key_unknown;
}

} // namespace

X11DeviceGrab::X11DeviceGrab()
    : connection_(xcb_connect(nullptr, nullptr)), context_(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES))
{
    auto* server = connection_.get();
    isUsable_ =
        xcb_connection_has_error(server) == 0 && xcb::startInput(server) && context_ &&
        xkb_x11_setup_xkb_extension(server, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) != 0;
    if (!isUsable_)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(server), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { readEvents(); });
}

X11DeviceGrab::~X11DeviceGrab()
{
    release();
}

void X11DeviceGrab::take(QWindow& window)
{
    if (!isUsable_)
        return;
    window_ = &window;
    const auto id = static_cast<std::uint32_t>(window.winId());
    for (const auto& keyboard : xcb::keyboards(connection_.get())) {
        if (keyboard.isMaster || taken_.contains(keyboard.id))
            continue;
        if (auto keymap = keymapOf(keyboard.id); keymap && grab(keyboard.id, id))
            taken_.emplace(keyboard.id, std::move(keymap));
    }
    readEvents(); // what came in while the replies were waited for
}

bool X11DeviceGrab::grab(std::uint16_t keyboard, std::uint32_t window)
{
    constexpr std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    auto* server = connection_.get();
    const auto cookie =
        xcb_input_xi_grab_device(server, window, XCB_CURRENT_TIME, XCB_NONE, keyboard, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                 XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, 1, &mask);
    const xcb::Reply<xcb_input_xi_grab_device_reply_t> reply(xcb_input_xi_grab_device_reply(server, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

X11DeviceGrab::State X11DeviceGrab::keymapOf(std::uint16_t keyboard) const
{
    auto* keymap =
        xkb_x11_keymap_new_from_device(context_.get(), connection_.get(), keyboard, XKB_KEYMAP_COMPILE_NO_FLAGS);
    State state(keymap ? xkb_state_new(keymap) : nullptr);
    xkb_keymap_unref(keymap);
    return state;
}

void X11DeviceGrab::release()
{
    for (const auto& [keyboard, keymap] : taken_)
        xcb_input_xi_ungrab_device(connection_.get(), XCB_CURRENT_TIME, keyboard);
    taken_.clear();
    xcb_flush(connection_.get());
}

void X11DeviceGrab::readEvents()
{
    if (xcb_connection_has_error(connection_.get()) != 0)
        notifier_->setEnabled(false); // a lost server is always readable
    const auto extension = xcb_get_extension_data(connection_.get(), &xcb_input_id)->major_opcode;
    while (const auto event = xcb::Reply<xcb_ge_generic_event_t>(
               reinterpret_cast<xcb_ge_generic_event_t*>(xcb_poll_for_event(connection_.get())))) {
        const bool isPress = event->event_type == XCB_INPUT_KEY_PRESS;
        if ((event->response_type & 0x7F) == XCB_GE_GENERIC && event->extension == extension &&
            (isPress || event->event_type == XCB_INPUT_KEY_RELEASE))
            deliver(*reinterpret_cast<const xcb_input_key_press_event_t*>(event.get()), isPress);
    }
}

void X11DeviceGrab::deliver(const xcb_input_key_press_event_t& event, bool isPress)
{
    const auto keyboard = taken_.find(event.deviceid);
    if (keyboard == taken_.end() || !window_)
        return;
    auto* keymap = keyboard->second.get();
    xkb_state_update_mask(keymap, event.mods.base, event.mods.latched, event.mods.locked, event.group.base,
                          event.group.latched, event.group.locked);
    const auto symbol = xkb_state_key_get_one_sym(keymap, event.detail);
    const auto character = xkb_keysym_to_utf32(symbol);
    const auto text =
        character != 0 ? QString::fromUcs4(std::array{static_cast<char32_t>(character)}.data(), 1) : QString();
    QWindowSystemInterface::handleExtendedKeyEvent(
        window_, event.time, isPress ? QEvent::KeyPress : QEvent::KeyRelease, qtKey(symbol, character), Qt::NoModifier,
        event.detail, symbol, event.mods.effective, text, (event.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0);
}

} // namespace kestrovan
