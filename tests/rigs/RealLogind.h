#pragma once

#include "rigs/BusDouble.h"
#include "rigs/MockLid.h"

#include <cstring>
#include <set>

namespace kestrovan::rigs {

/// A real systemd-logind on a private system bus, with a mock lid and a stand-in for systemd that "suspends" the
/// machine at once. Needs private_system.sh and umockdev-wrapper.
class RealLogind {
public:
    explicit RealLogind(const PrivateBus& bus)
        : bus_(bus), serviceManager_(std::make_unique<BusDouble>(bus, "org.freedesktop.systemd1",
                                                                 [this](sd_bus_message* call) { return manage(call); }))
    {
        std::ofstream("/run/systemd/logind.conf.d/test.conf")
            << "[Login]\nHoldoffTimeoutSec=0\nInhibitDelayMaxSec=2\nHandleLidSwitch=suspend\n"
               "HandleLidSwitchExternalPower=suspend\nHandleLidSwitchDocked=suspend\n";
        start();
    }

    /// Ends and starts again, as for an update; it remembers the locks.
    void restart()
    {
        daemon_.end(SIGTERM);
        start();
    }

    /// Dies, and starts again without remembering any lock.
    void startOver()
    {
        daemon_.end(SIGKILL);
        for (const auto& lock : std::filesystem::directory_iterator("/run/systemd/inhibit"))
            std::filesystem::remove(lock);
        start();
    }
    /// The same, on a bus that has been started again.
    void startOverOnNewBus()
    {
        serviceManager_.reset();
        serviceManager_ = std::make_unique<BusDouble>(bus_, "org.freedesktop.systemd1",
                                                      [this](sd_bus_message* call) { return manage(call); });
        startOver();
    }
    void start()
    {
        daemon_.start();
        waitUntil([this] { return call("ListSeats", nullptr) >= 0; });
    }
    ServerProcess& daemon() { return daemon_; }
    MockLid& lid() { return lid_; }
    int suspendCount() const { return suspendCount_; }

    /// Asks for a sleep as the user does with a menu entry; negative if it is refused.
    int suspend() const
    {
        return call("Suspend", [](sd_bus_message* message) { return sd_bus_message_append(message, "b", 0); });
    }

    int powerOff() const
    {
        return call("PowerOff", [](sd_bus_message* message) { return sd_bus_message_append(message, "b", 0); });
    }

    /// Whether it would carry out its IdleAction (which it looks at twice a minute).
    bool isIdle() const { return property("IdleHint"); }

    /// Moves the lid, and waits until logind has seen it.
    bool moveLid(bool closed)
    {
        lid_.set(closed);
        return waitUntil([&] { return property("LidClosed") == closed; });
    }

    /// The locks of this program: "mode what (why)" each.
    std::multiset<std::string> locks() const
    {
        std::multiset<std::string> found;
        for (const auto& lock : inhibitors())
            found.insert(lock.mode + " " + lock.what + " (" + lock.why + ")");
        return found;
    }
    bool waitForLockCount(std::size_t count) const
    {
        return waitUntil([&] { return locks().size() == count; });
    }

    /// The process that has asked for the lock of that reason; 0 if there is none.
    pid_t holderOf(const std::string& reason) const
    {
        for (const auto& lock : inhibitors())
            if (lock.why == reason)
                return lock.process;
        return 0;
    }

private:
    struct Inhibitor {
        std::string what, why, mode;
        pid_t process;
    };
    /// Those of this program.
    std::vector<Inhibitor> inhibitors() const
    {
        std::vector<Inhibitor> found;
        call("ListInhibitors", nullptr, [&found](sd_bus_message* reply) {
            const char *what = nullptr, *who = nullptr, *why = nullptr, *mode = nullptr;
            std::uint32_t user = 0, process = 0;
            sd_bus_message_enter_container(reply, 'a', "(ssssuu)");
            while (sd_bus_message_read(reply, "(ssssuu)", &what, &who, &why, &mode, &user, &process) > 0)
                if (std::strcmp(who, "Kestrovan") == 0)
                    found.push_back({what, why, mode, static_cast<pid_t>(process)});
        });
        return found;
    }

    bool property(const char* name) const
    {
        sd_bus* bus = bus_.open();
        int value = 0;
        sd_bus_get_property_trivial(bus, "org.freedesktop.login1", "/org/freedesktop/login1",
                                    "org.freedesktop.login1.Manager", name, nullptr, 'b', &value);
        sd_bus_flush_close_unref(bus);
        return value != 0;
    }

    int call(const char* method, const std::function<int(sd_bus_message*)>& append,
             const std::function<void(sd_bus_message*)>& read = nullptr) const
    {
        sd_bus* bus = bus_.open();
        sd_bus_message *message = nullptr, *reply = nullptr;
        int result =
            bus ? sd_bus_message_new_method_call(bus, &message, "org.freedesktop.login1", "/org/freedesktop/login1",
                                                 "org.freedesktop.login1.Manager", method)
                : -ENOTCONN;
        if (result >= 0 && append)
            result = append(message);
        if (result >= 0)
            result = sd_bus_call(bus, message, 0, nullptr, &reply);
        if (result >= 0 && read)
            read(reply);
        sd_bus_message_unref(message);
        sd_bus_message_unref(reply);
        sd_bus_flush_close_unref(bus);
        return result;
    }

    /// systemd's part: units are loaded and idle; starting one (a suspend) is done as soon as it is asked for.
    int manage(sd_bus_message* call)
    {
        if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Properties", "Get") > 0) {
            const char *interface = nullptr, *property = nullptr;
            sd_bus_message_read(call, "ss", &interface, &property);
            const bool isState = std::strcmp(property, "ActiveState") == 0;
            return sd_bus_reply_method_return(call, "v", "s", isState ? "inactive" : "loaded");
        }
        if (sd_bus_message_is_method_call(call, nullptr, "StartUnit") <= 0)
            return sd_bus_reply_method_return(call, "");
        const char* unit = nullptr;
        sd_bus_message_read(call, "s", &unit);
        const auto job = static_cast<std::uint32_t>(++suspendCount_);
        const std::string path = "/org/freedesktop/systemd1/job/" + std::to_string(job);
        const int result = sd_bus_reply_method_return(call, "o", path.c_str());
        sd_bus_emit_signal(sd_bus_message_get_bus(call), "/org/freedesktop/systemd1",
                           "org.freedesktop.systemd1.Manager", "JobRemoved", "uoss", job, path.c_str(), unit, "done");
        return result;
    }

    const PrivateBus& bus_;
    std::atomic<int> suspendCount_ = 0;
    MockLid lid_;
    std::unique_ptr<BusDouble> serviceManager_;
    ServerProcess daemon_{{"/lib/systemd/systemd-logind"}};
};

} // namespace kestrovan::rigs
