#pragma once

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/PowerSources.h"
#include "platform/Published.h"
#include "sensors/BatteryStatus.h"

namespace kestrovan {

/// Watches the machine's power sources, by notification and by a poll, from construction to destruction. Main thread.
class PowerMonitor : public Observable {
public:
    PowerMonitor(PowerSources& sources, MainQueue& mainQueue);
    ~PowerMonitor() override;

    /// The last reading.
    Published<BatteryStatus> status{*this, BatteryStatus{}};

    /// Called with the new reading whenever any field of it changed, in a turn of the main queue of its own.
    std::function<void(const BatteryStatus&)> onPowerStateChanged;

    /// One synchronous reading. The last source that carries a field decides it.
    BatteryStatus fetchCurrentStatus();

    void startMonitoring();
    void stopMonitoring();

private:
    void checkAndUpdate();

    PowerSources& sources_;
    MainQueue& mainQueue_;
    Subscription notification_;
    std::unique_ptr<Timer> timer_;
    Lifetime lifetime_;
};

} // namespace kestrovan
