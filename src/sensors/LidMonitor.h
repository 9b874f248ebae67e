#pragma once

#include "platform/Lifetime.h"
#include "platform/Published.h"
#include "platform/SystemPower.h"
#include "platform/Workers.h"

#include <atomic>

namespace kestrovan {

/// Watches the lid and the system's sleep requests and notices, from construction to destruction, and vetoes sleep
/// while the guard is armed. Main thread, but for the poll of the lid, which has a serial queue of its own.
class LidMonitor : public Observable {
public:
    LidMonitor(SystemPower& systemPower, MainQueue& mainQueue, Workers& workers);
    ~LidMonitor() override;

    /// The last known state of the lid.
    Published<bool> isLidClosed{*this, false};

    /// Called on the main thread. A busy main thread can receive two calls for one closing of the lid.
    std::function<void()> onLidClosed;
    std::function<void()> onSleepTriggered;
    /// Asked on the main thread; while it is not installed the guard counts as armed.
    std::function<bool()> isArmedProvider;

    /// One reading of the lid; one that cannot be read counts as open. Any thread.
    bool checkClamshellState();

    void startBackgroundMonitoring();
    void stopMonitoring();

    /// Reacts to one message of the system. `argument` identifies the request that is answered.
    void handlePowerMessage(PowerMessage message, std::intptr_t argument);

    /// To be called when the provider's answer may have changed: there are systems that do not ask before they sleep,
    /// but take the answer in advance.
    void armedStateMayHaveChanged();

private:
    void registerForPowerNotifications();
    void checkAndUpdate();
    void applyLidState(bool closed);
    void postSleepAttempt();
    bool isArmed() const;

    SystemPower& systemPower_;
    MainQueue& mainQueue_;
    std::atomic<bool> lastLidClosed_ = false; ///< isLidClosed for the poll's thread
    Subscription messages_;
    Subscription sleepObserver_;
    Subscription screenSleepObserver_;
    std::unique_ptr<SerialQueue> monitorQueue_;
    std::unique_ptr<Timer> bgTimer_;
    Lifetime lifetime_;
};

} // namespace kestrovan
