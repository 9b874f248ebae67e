#pragma once

#include "platform/linux/LogindLock.h"

namespace kestrovan {

class Diagnostics;

/// The locks with which the guard answers beforehand that the system must not sleep. Lives on the bus's thread.
///
/// The block lock keeps lid, idle time and sleep keys from putting the machine to sleep. It does not bind everybody:
/// up to logind 256, a sleep or power-off that this same user asks for goes ahead in spite of it. The delay lock has
/// such a sleep wait (InhibitDelayMaxSec, 5 s unless configured) while the siren is on.
class SleepVeto {
public:
    /// What has been said already, so that every arming does not say it again.
    using Said = std::shared_ptr<std::string>;

    SleepVeto(Bus& bus, Diagnostics& diagnostics, Said said);

private:
    void report();

    Diagnostics& diagnostics_;
    const Said said_;
    std::optional<LogindLock::Outcome> blockOutcome_;
    std::optional<LogindLock::Outcome> delayOutcome_;
    std::optional<LogindLock> block_;
    std::optional<LogindLock> delay_;
};

} // namespace kestrovan
