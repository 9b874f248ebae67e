#pragma once

/// Where this process looks for the session bus: its environment variable, which Qt, that waits for the bus, and our
/// own connection, which does not, both read.
namespace kestrovan::sessionBusAddress {

/// Writes down where the bus is, or that there is none, before anybody looks for it: Qt would start one otherwise. To
/// be called before there are threads.
void settle();

/// Has everybody who connects from now on go without a session bus.
void giveUp();

} // namespace kestrovan::sessionBusAddress
