#pragma once

#include "platform/Observable.h"

#include <cstdint>
#include <optional>

namespace kestrovan {

/// What the system says about sleeping. The values are part of the guard's vocabulary; others may arrive and mean
/// nothing to it.
enum class PowerMessage : std::uint32_t {
    canSystemSleep = 0xE0000270,     ///< may the system sleep? answered allow or veto
    systemWillSleep = 0xE0000280,    ///< it will; can only be acknowledged
    systemHasPoweredOn = 0xE0000300, ///< it is awake again
};

enum class WorkspaceNotice { willSleep, screensDidSleep, willPowerOff };

/// Lid, sleep requests and the session's notices. All on the main thread but isLidClosed().
class SystemPower {
public:
    using MessageHandler = std::function<void(PowerMessage message, std::intptr_t argument)>;

    virtual ~SystemPower() = default;

    /// One reading of the lid, cheap enough for a poll; none where there is no lid or it cannot be read. Any thread.
    virtual std::optional<bool> isLidClosed() = 0;

    /// Receives the system's power messages. `argument` identifies the request in the answers below.
    [[nodiscard]] virtual Subscription registerForMessages(MessageHandler handler) = 0;
    virtual void allowPowerChange(std::intptr_t argument) = 0;
    virtual void cancelPowerChange(std::intptr_t argument) = 0;

    /// The answer that canSystemSleep would get from now on. Systems that do not ask, but want to know beforehand,
    /// act on it: while it is a veto, neither lid, idle time nor sleep keys put the machine to sleep. Returns at once.
    virtual void declareSleepVeto(bool veto) = 0;

    [[nodiscard]] virtual Subscription observe(WorkspaceNotice notice, std::function<void()> observer) = 0;
};

} // namespace kestrovan
