#pragma once

#include "platform/Lifetime.h"
#include "platform/linux/Bus.h"

#include <list>

namespace kestrovan {

/// What the user's session may be asked for: not to go idle, or not to end and not to switch users.
enum class SessionWish { stayAwake, stayLoggedIn };

/// Asks the user's session for something, from construction to destruction, of every service there that can be asked:
/// desktops differ in which of them looks after sleep, which after the screen. The portal, which hands the wish on to
/// one of the others, is asked where there is none of them. What comes (back) later is asked then.
/// Lives on the thread of the session bus.
class SessionInhibitor {
public:
    SessionInhibitor(Bus& bus, SessionWish wish, std::string reason);
    ~SessionInhibitor();
    SessionInhibitor(const SessionInhibitor&) = delete;
    SessionInhibitor& operator=(const SessionInhibitor&) = delete;

private:
    struct Service;
    class Hold;

    void considerPortal();

    Bus& bus_;
    const SessionWish wish_;
    const std::string reason_;
    std::list<Hold> holds_; ///< the portal's is the last
    Lifetime lifetime_;
};

} // namespace kestrovan
