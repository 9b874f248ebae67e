#include "rigs/WitnessClient.h"

#include <array>

namespace kestrovan::rigs {
namespace {

using xcb::Reply;

constexpr std::uint8_t escapeKeycode = 9; // of every PC keyboard under X

} // namespace

WitnessClient::WitnessClient() : connection_(xcb_connect(nullptr, nullptr))
{
    root_ = xcb_setup_roots_iterator(xcb_get_setup(server())).data->root;
    createWindow();
}

void WitnessClient::createWindow()
{
    window_ = xcb_generate_id(server());
    const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_KEY_PRESS |
                                                     XCB_EVENT_MASK_BUTTON_PRESS}; // override-redirect: mapped at once
    xcb_create_window(server(), XCB_COPY_FROM_PARENT, window_, root_, 50, 50, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
    xcb_map_window(server(), window_);
    xcb_flush(server());
}

void WitnessClient::takeFocus()
{
    const auto cookie = xcb_set_input_focus_checked(server(), XCB_INPUT_FOCUS_POINTER_ROOT, window_, XCB_CURRENT_TIME);
    const Reply<xcb_generic_error_t> error(xcb_request_check(server(), cookie));
}

bool WitnessClient::openMenu(bool heedsEscape)
{
    heedsEscape_ = heedsEscape;
    const auto keyboard =
        xcb_grab_keyboard(server(), 0, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto pointer = xcb_grab_pointer(server(), 0, window_, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE,
                                          XCB_NONE, XCB_CURRENT_TIME);
    const Reply<xcb_grab_keyboard_reply_t> keys(xcb_grab_keyboard_reply(server(), keyboard, nullptr));
    const Reply<xcb_grab_pointer_reply_t> clicks(xcb_grab_pointer_reply(server(), pointer, nullptr));
    isMenuOpen_ =
        keys && clicks && keys->status == XCB_GRAB_STATUS_SUCCESS && clicks->status == XCB_GRAB_STATUS_SUCCESS;
    return isMenuOpen_;
}

void WitnessClient::closeMenu()
{
    xcb_ungrab_pointer(server(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(server(), XCB_CURRENT_TIME);
    xcb_flush(server());
    isMenuOpen_ = false;
}

int WitnessClient::keysPressed()
{
    readEvents();
    return keysPressed_;
}

int WitnessClient::clicks()
{
    readEvents();
    return clicks_;
}

void WitnessClient::readEvents()
{
    while (const auto event = Reply<xcb_generic_event_t>(xcb_poll_for_event(server()))) {
        const int type = event->response_type & 0x7F;
        clicks_ += type == XCB_BUTTON_PRESS ? 1 : 0;
        if (type != XCB_KEY_PRESS)
            continue;
        ++keysPressed_;
        if (isMenuOpen_ && heedsEscape_ &&
            reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail == escapeKeycode)
            closeMenu();
    }
}

bool WitnessClient::hasWindowManager()
{
    const auto name = xcb::atom(server(), "_NET_SUPPORTING_WM_CHECK");
    const Reply<xcb_get_property_reply_t> property(
        xcb_get_property_reply(server(), xcb_get_property(server(), 0, root_, name, XCB_ATOM_WINDOW, 0, 1), nullptr));
    return property && xcb_get_property_value_length(property.get()) > 0;
}

std::vector<std::uint32_t> WitnessClient::windowsOffScreen()
{
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(server(), xcb_query_tree(server(), root_), nullptr));
    std::vector<std::uint32_t> found;
    const auto* children = xcb_query_tree_children(tree.get());
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
        const Reply<xcb_get_geometry_reply_t> place(
            xcb_get_geometry_reply(server(), xcb_get_geometry(server(), children[index]), nullptr));
        const Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(server(), xcb_get_window_attributes(server(), children[index]), nullptr));
        if (place && attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && place->x == -10 &&
            place->width == 1)
            found.push_back(children[index]);
    }
    return found;
}

void WitnessClient::askToClose(std::uint32_t window)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = xcb::atom(server(), "WM_PROTOCOLS");
    message.data.data32[0] = xcb::atom(server(), "WM_DELETE_WINDOW");
    xcb_send_event(server(), 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    xcb_flush(server());
}

void WitnessClient::destroy(std::uint32_t window)
{
    xcb_destroy_window(server(), window);
    xcb_flush(server());
}

void WitnessClient::unmap(std::uint32_t window)
{
    xcb_unmap_window(server(), window);
    xcb_flush(server());
}

} // namespace kestrovan::rigs
