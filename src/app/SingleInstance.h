#pragma once

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/linux/BusResident.h"

#include <future>

namespace kestrovan {

/// Sees to it that one Kestrovan runs in a session: it owns the program's name on the session bus, and with it the
/// object of the interface org.freedesktop.Application (Desktop Entry Specification, D-Bus activation), by which a
/// second start asks the first to come to the front. Main thread.
class SingleInstance {
public:
    enum class Role {
        first,      ///< the name is ours
        second,     ///< another one has it; it has been asked to show its window
        secondMute, ///< another one has it, and does not answer
        alone,      ///< there is no session bus on which others could be found
        unknown,    ///< there is one, but it does not answer
    };

    /// With the token that lets a window come to the front on Wayland (xdg-activation), if the asker had one.
    using Activated = std::function<void(const std::string& token)>;

    /// `launchToken` is the one that this start was given. `activated` runs on the main queue whenever another start
    /// asks for our window. Connection and queue outlive this object.
    SingleInstance(BusConnection& sessionBus, MainQueue& mainQueue, std::string launchToken, Activated activated);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    /// Which one we are; to be asked once. Waits for the bus, a moment usually, a second at most.
    Role role();

private:
    class Name;

    std::future<Role> role_;
    BusResident<Name> name_;
    Lifetime lifetime_;
};

} // namespace kestrovan
