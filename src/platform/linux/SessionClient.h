#pragma once

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/linux/BusResident.h"

#include <functional>
#include <optional>
#include <string>

namespace kestrovan {

class Diagnostics;

/// Makes the program a client of the session's manager on the message bus (org.gnome.SessionManager: GNOME, MATE,
/// Cinnamon), which asks its clients before it ends the session, and tells them when it does. It registers again with a
/// manager that comes later or comes back; one that refuses is one line.
///
/// Which of the clients may hold the session up is for the manager to say: those of GNOME show the refusal to the user,
/// who may go on in spite of it. A client stays one for as long as the connection does: there is one for the whole
/// program. Main thread; never waits.
class SessionClient {
public:
    struct Identity {
        std::string applicationId;
        std::string startupId; ///< DESKTOP_AUTOSTART_ID, by which the manager knows what it has started; may be empty
    };

    /// Why the session must not end now, for people; nothing if it may. To be answered at once: managers wait a second.
    using Refusal = std::function<std::optional<std::string>()>;

    /// `ended` is called when the session ends, and so must the program; more than once, perhaps. Both callbacks run on
    /// the main queue. Connection, queue and diagnostics outlive this object.
    SessionClient(BusConnection& sessionBus, MainQueue& mainQueue, Diagnostics& diagnostics, Identity identity,
                  Refusal refusal, Task ended);
    SessionClient(const SessionClient&) = delete;
    SessionClient& operator=(const SessionClient&) = delete;
    ~SessionClient();

private:
    class Registration;

    void answer(const std::string& client) const;

    const Refusal refusal_;
    BusResident<Registration> registration_;
    Lifetime lifetime_;
};

} // namespace kestrovan
