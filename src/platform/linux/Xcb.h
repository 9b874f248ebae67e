#pragma once

#include "platform/linux/Release.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

/// What the users of the X11 protocol share. Any thread.
namespace kestrovan::xcb {

/// An answer of the X server, freed with its handle; none if the request failed.
template <class T>
using Reply = std::unique_ptr<T, decltype([](void* reply) { std::free(reply); })>;

/// A connection of one's own, to the server that DISPLAY names; to be asked whether it works.
using Connection = std::unique_ptr<xcb_connection_t, Release<xcb_disconnect>>;

/// The atom of that name, made if need be; XCB_NONE where the server is gone. Waits for the server.
xcb_atom_t atom(xcb_connection_t* connection, std::string_view name);

bool hasExtension(xcb_connection_t* connection, xcb_extension_t* extension);

/// Announces to the server that the connection speaks XInput 2.2; false where the server does not.
bool startInput(xcb_connection_t* connection);

struct Keyboard {
    std::uint16_t id;
    bool isMaster; ///< one that programs see; else a physical one (or XTEST's) that feeds a master
};
/// The keyboards of a connection that speaks XInput 2.
std::vector<Keyboard> keyboards(xcb_connection_t* connection);

} // namespace kestrovan::xcb
