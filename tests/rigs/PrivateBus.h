#pragma once

#include "rigs/Deadline.h"
#include "rigs/ServerProcess.h"

#include <systemd/sd-bus.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace kestrovan::rigs {

/// A message bus of the test's own, at the address that the environment names (see private_system.sh), on which
/// everybody may do everything.
class PrivateBus {
public:
    enum class Kind { system, session };

    explicit PrivateBus(Kind kind) : kind_(kind), socket_(address().substr(std::string("unix:path=").size()))
    {
        writeConfiguration();
        start();
    }

    void start()
    {
        std::filesystem::remove(socket_);
        daemon_.start();
        waitUntil([this] {
            sd_bus* bus = open();
            sd_bus_unref(bus);
            return bus != nullptr;
        });
    }
    void kill() { daemon_.end(SIGKILL); }
    ServerProcess& daemon() { return daemon_; }

    /// A connection of the caller's own; none if it cannot be had.
    sd_bus* open() const
    {
        sd_bus* bus = nullptr;
        const int result = kind_ == Kind::system ? sd_bus_open_system(&bus) : sd_bus_open_user(&bus);
        const char* name = nullptr;
        if (result >= 0 && sd_bus_get_unique_name(bus, &name) < 0) // waits for the bus's greeting
            bus = sd_bus_flush_close_unref(bus);
        return result < 0 ? nullptr : bus;
    }

    /// Until somebody owns `name` on it.
    bool waitForName(const std::string& name) const
    {
        sd_bus* bus = open();
        const bool isOwned = waitUntil([&] { return sd_bus_get_name_creds(bus, name.c_str(), 0, nullptr) >= 0; });
        sd_bus_flush_close_unref(bus);
        return isOwned;
    }

private:
    std::string address() const
    {
        const char* variable = kind_ == Kind::system ? "DBUS_SYSTEM_BUS_ADDRESS" : "DBUS_SESSION_BUS_ADDRESS";
        return std::getenv(variable); // NOLINT(concurrency-mt-unsafe)
    }
    void writeConfiguration() const
    {
        std::ofstream(socket_ + ".conf")
            << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
               "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n<busconfig><type>system</"
               "type><listen>"
            << address()
            << "</listen><auth>EXTERNAL</auth><policy context=\"default\"><allow user=\"*\"/>"
               "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/>"
               "</policy></busconfig>\n";
    }

    const Kind kind_;
    const std::string socket_;
    ServerProcess daemon_{{"dbus-daemon", "--config-file=" + socket_ + ".conf", "--nofork", "--nopidfile"}};
};

} // namespace kestrovan::rigs
