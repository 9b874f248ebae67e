#pragma once

#include "rigs/BusDouble.h"
#include "rigs/Deadline.h"

#include <string>
#include <vector>

namespace kestrovan::rigs {

/// A session's manager as GNOME has it, on the message bus, with one client at a time that it asks whether the session
/// may end.
class GnomeSession {
public:
    /// `error` is what it answers to those who register: 0 takes them, else a negative errno.
    explicit GnomeSession(const PrivateBus& bus, int error = 0)
        : error_(error), double_(bus, name, [this](sd_bus_message* call) { return take(call); })
    {}

    static constexpr const char* client = "/org/gnome/SessionManager/Client7";

    /// What has arrived, call by call: "register APPLICATION STARTUP", "may end", "no: REASON".
    std::vector<std::string> heard()
    {
        const std::scoped_lock lock(mutex_);
        return heard_;
    }
    bool waitFor(const std::vector<std::string>& all)
    {
        return waitUntil([&] { return heard() == all; });
    }

    /// One of the signals of that object, which GNOME sends to everybody.
    void say(const char* member, const char* object = client)
    {
        double_.perform([&](sd_bus* bus) { send(bus, member, object, nullptr); });
    }
    /// The same from somebody else, to the client alone.
    void sayFalsely(const PrivateBus& bus, const char* member)
    {
        sd_bus* other = bus.open();
        const std::scoped_lock lock(mutex_);
        send(other, member, client, sender_.c_str());
        sd_bus_flush_close_unref(other);
    }

private:
    static constexpr const char* name = "org.gnome.SessionManager";
    static constexpr const char* clientInterface = "org.gnome.SessionManager.ClientPrivate";

    int take(sd_bus_message* call)
    {
        const std::scoped_lock lock(mutex_);
        const char *application = nullptr, *startup = nullptr, *reason = nullptr;
        int isOk = 0;
        if (sd_bus_message_is_method_call(call, name, "RegisterClient") > 0) {
            sd_bus_message_read(call, "ss", &application, &startup);
            heard_.push_back(std::string("register ") + application + " " + startup);
            sender_ = sd_bus_message_get_sender(call);
            return error_ != 0 ? error_ : sd_bus_reply_method_return(call, "o", client);
        }
        if (sd_bus_message_is_method_call(call, clientInterface, "EndSessionResponse") <= 0 ||
            sd_bus_message_get_path(call) != std::string(client))
            return -ENOTSUP;
        sd_bus_message_read(call, "bs", &isOk, &reason);
        heard_.push_back(isOk != 0 ? "may end" : std::string("no: ") + reason);
        return sd_bus_reply_method_return(call, "");
    }

    static void send(sd_bus* bus, const char* member, const char* object, const char* destination)
    {
        sd_bus_message* signal = nullptr;
        sd_bus_message_new_signal(bus, &signal, object, clientInterface, member);
        if (member != std::string("Stop"))
            sd_bus_message_append(signal, "u", 0);
        sd_bus_send_to(bus, signal, destination, nullptr);
        sd_bus_message_unref(signal);
    }

    const int error_;
    std::mutex mutex_;
    std::string sender_;
    std::vector<std::string> heard_;
    BusDouble double_;
};

} // namespace kestrovan::rigs
