#include "WindowWatch.h"

#include <poll.h>

namespace kestrovan::bench {

WindowWatch::WindowWatch() : connection_(xcb_connect(nullptr, nullptr))
{
    auto* server = connection_.get();
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(server, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(server);
}

bool WindowWatch::waitForWindow(std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < end) {
        const xcb::Reply<xcb_generic_event_t> event(xcb_poll_for_event(connection_.get()));
        if (!event) {
            pollfd waits{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
            ::poll(&waits, 1, 100);
            continue;
        }
        const auto* mapped = reinterpret_cast<const xcb_map_notify_event_t*>(event.get());
        if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY && isLarge(mapped->window))
            return true;
    }
    return false;
}

bool WindowWatch::isLarge(xcb_window_t window) const
{
    constexpr std::uint16_t least = 100;
    const auto cookie = xcb_get_geometry(connection_.get(), window);
    const xcb::Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(connection_.get(), cookie, nullptr));
    return geometry && geometry->width >= least && geometry->height >= least;
}

} // namespace kestrovan::bench
