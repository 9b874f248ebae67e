#include "platform/linux/Xcb.h"

#include <xcb/xinput.h>

namespace kestrovan::xcb {

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : XCB_NONE;
}

bool hasExtension(xcb_connection_t* connection, xcb_extension_t* extension)
{
    const auto* data = xcb_get_extension_data(connection, extension);
    return data && data->present;
}

bool startInput(xcb_connection_t* connection)
{
    if (!hasExtension(connection, &xcb_input_id))
        return false;
    const Reply<xcb_input_xi_query_version_reply_t> reply(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    return reply && reply->major_version >= 2;
}

std::vector<Keyboard> keyboards(xcb_connection_t* connection)
{
    const Reply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
        connection, xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL), nullptr));
    std::vector<Keyboard> found;
    if (!reply)
        return found;
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem;
         xcb_input_xi_device_info_next(&each)) {
        const auto type = each.data->type;
        if (type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD || type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD ||
            type == XCB_INPUT_DEVICE_TYPE_FLOATING_SLAVE)
            found.push_back({each.data->deviceid, type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD});
    }
    return found;
}

} // namespace kestrovan::xcb
