#include "platform/linux/X11ServerKeys.h"

#define explicit isExplicit // a field of a C header
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <cstring>
#include <string_view>

namespace kestrovan {

namespace {

using xcb::Reply;

constexpr std::string_view propertyName = "_KESTROVAN_SAVED_SERVER_KEYS";
// The private actions of the X.Org server: next and previous video mode, releasing and breaking grabs.
constexpr std::uint8_t serverPrivateAction = 0x86;

bool startXkb(xcb_connection_t* connection)
{
    if (!xcb::hasExtension(connection, &xcb_xkb_id))
        return false;
    const auto cookie = xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    const Reply<xcb_xkb_use_extension_reply_t> reply(xcb_xkb_use_extension_reply(connection, cookie, nullptr));
    return reply && reply->supported;
}

} // namespace

X11ServerKeys::X11ServerKeys() : connection_(xcb_connect(nullptr, nullptr))
{
    auto* server = connection_.get();
    if (xcb_connection_has_error(server) != 0)
        return;
    root_ = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    property_ = xcb::atom(server, propertyName);
    hasXkb_ = startXkb(server) && xcb::startInput(server);
    loadProperty();
    restore();
}

X11ServerKeys::~X11ServerKeys()
{
    restore();
}

bool X11ServerKeys::isUsable() const
{
    return hasXkb_ && xcb_connection_has_error(connection_.get()) == 0;
}

// Terminal switches and the like are the affair of each physical keyboard, not of the core keyboard that merges them.
std::vector<std::uint8_t> X11ServerKeys::keyboards() const
{
    std::vector<std::uint8_t> found;
    for (const auto& keyboard : xcb::keyboards(connection_.get()))
        found.push_back(static_cast<std::uint8_t>(keyboard.id));
    return found;
}

bool X11ServerKeys::isServerAction(const Action& action)
{
    return action.front() == XCB_XKB_SA_TYPE_TERMINATE || action.front() == XCB_XKB_SA_TYPE_SWITCH_SCREEN ||
           action.front() == serverPrivateAction;
}

bool X11ServerKeys::block()
{
    if (!isUsable())
        return false;
    bool isBlocked = true;
    for (const auto device : keyboards()) {
        auto map = read(device);
        if (!takeOut(device, map))
            continue;
        storeProperty(); // before the change, so that no moment to die in leaves it unknown
        isBlocked = write(device, map) && isBlocked;
    }
    return isBlocked;
}

void X11ServerKeys::restore()
{
    if (!isUsable() || saved_.empty())
        return;
    for (const auto device : keyboards()) {
        auto map = read(device);
        putBack(device, map);
        write(device, map);
    }
    saved_.clear();
    xcb_delete_property(connection_.get(), root_, property_);
    xcb_flush(connection_.get());
}

X11ServerKeys::KeyActions X11ServerKeys::read(std::uint8_t device) const
{
    KeyActions map;
    const auto cookie = xcb_xkb_get_map(connection_.get(), device, XCB_XKB_MAP_PART_KEY_ACTIONS, 0, 0, 0, 0, 0, 0, 0, 0,
                                        0, 0, 0, 0, 0, 0, 0, 0);
    const Reply<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(connection_.get(), cookie, nullptr));
    if (!reply) // a floating device that is no keyboard
        return map;
    xcb_xkb_get_map_map_t parts{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), reply->nTypes, reply->nKeySyms, reply->nKeyActions,
                               reply->totalActions, reply->totalKeyBehaviors, reply->virtualMods,
                               reply->totalKeyExplicit, reply->totalModMapKeys, reply->totalVModMapKeys, reply->present,
                               &parts);
    map.firstKey = reply->firstKeyAction;
    map.counts.assign(parts.acts_rtrn_count, parts.acts_rtrn_count + reply->nKeyActions);
    map.actions.resize(reply->totalActions);
    if (!map.actions.empty())
        std::memcpy(map.actions.data(), parts.acts_rtrn_acts, map.actions.size() * sizeof(Action));
    return map;
}

bool X11ServerKeys::write(std::uint8_t device, const KeyActions& map) const
{
    if (map.counts.empty())
        return true;
    const auto* setup = xcb_get_setup(connection_.get());
    auto counts = map.counts;
    std::vector<xcb_xkb_action_t> actions(map.actions.size());
    if (!actions.empty())
        std::memcpy(actions.data(), map.actions.data(), map.actions.size() * sizeof(Action));
    xcb_xkb_set_map_values_t values{};
    values.actionsCount = counts.data();
    values.actions = actions.data();
    const auto cookie = xcb_xkb_set_map_aux_checked(
        connection_.get(), device, XCB_XKB_MAP_PART_KEY_ACTIONS, 0, setup->min_keycode, setup->max_keycode, 0, 0, 0, 0,
        0, map.firstKey, static_cast<std::uint8_t>(counts.size()), static_cast<std::uint16_t>(actions.size()), 0, 0, 0,
        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, &values);
    const Reply<xcb_generic_error_t> error(xcb_request_check(connection_.get(), cookie));
    return !error;
}

bool X11ServerKeys::takeOut(std::uint8_t device, KeyActions& map)
{
    bool changed = false;
    std::size_t next = 0;
    for (std::size_t key = 0; key < map.counts.size(); ++key)
        for (std::uint16_t index = 0; index < map.counts[key] && next < map.actions.size(); ++index, ++next) {
            auto& action = map.actions[next];
            if (!isServerAction(action))
                continue;
            remember({{device, static_cast<std::uint8_t>(map.firstKey + key), index}, action});
            action = {};
            changed = true;
        }
    return changed;
}

// Only where the key still does nothing: a keymap loaded in the meantime has its own idea of the key.
void X11ServerKeys::putBack(std::uint8_t device, KeyActions& map) const
{
    for (const auto& [place, action] : saved_) {
        if (place.device != device || place.keycode < map.firstKey)
            continue;
        const auto key = static_cast<std::size_t>(place.keycode - map.firstKey);
        if (key >= map.counts.size() || place.index >= map.counts[key])
            continue;
        std::size_t position = place.index;
        for (std::size_t before = 0; before < key; ++before)
            position += map.counts[before];
        if (position < map.actions.size() && map.actions[position].front() == XCB_XKB_SA_TYPE_NO_ACTION)
            map.actions[position] = action;
    }
}

void X11ServerKeys::remember(const Saved& saved)
{
    const auto known =
        std::find_if(saved_.begin(), saved_.end(), [&](const auto& each) { return each.place == saved.place; });
    if (known == saved_.end())
        saved_.push_back(saved);
    else
        known->action = saved.action;
}

void X11ServerKeys::storeProperty() const
{
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, root_, property_, XCB_ATOM_INTEGER, 8,
                        static_cast<std::uint32_t>(saved_.size() * sizeof(Saved)), saved_.data());
}

// Any client can write the property: only what this class would have taken out is believed.
void X11ServerKeys::loadProperty()
{
    constexpr std::uint32_t maximumWords = 1U << 16U;
    const auto cookie = xcb_get_property(connection_.get(), 0, root_, property_, XCB_ATOM_INTEGER, 0, maximumWords);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.get(), cookie, nullptr));
    if (!reply || reply->format != 8)
        return;
    const auto size = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    saved_.resize(size / sizeof(Saved));
    if (!saved_.empty())
        std::memcpy(saved_.data(), xcb_get_property_value(reply.get()), saved_.size() * sizeof(Saved));
    std::erase_if(saved_, [](const Saved& saved) { return !isServerAction(saved.action); });
}

} // namespace kestrovan
