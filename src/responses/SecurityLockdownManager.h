#pragma once

#include "platform/KeyEvents.h"
#include "platform/Lifetime.h"
#include "platform/Published.h"
#include "responses/PinEntry.h"

namespace kestrovan {

class MainQueue;
class PowerAssertionManager;
class PresentationOptions;
class SystemPower;
class Text;
struct Platform;

/// Turns the program into a kiosk: no other program can be reached, and of all keys only those of the PIN entry do
/// anything. Main thread; the effects follow on the next turn of the main queue.
class SecurityLockdownManager : public Observable {
public:
    SecurityLockdownManager(const Platform& platform, PowerAssertionManager& powerAssertionManager);

    /// True between enable and disable, at once.
    Published<bool> isLockdownActive{*this, false};

    /// A `pinEntry` that goes away during the lockdown leaves it locked, with keys that do nothing.
    void enableLockdown(PinEntry& pinEntry);
    void disableLockdown();

private:
    void installNumericOnlyKeyFilter(PinEntry& pinEntry);
    void listenToSystemShutdownAttempts(PinEntry& pinEntry);
    bool filter(const KeyEvent& event, const std::function<void(const KeyEvent&)>& act) const;
    void actOnKey(const KeyEvent& event, PinEntry& pinEntry);
    void postPinAction(PinEntry& pinEntry, std::function<void()> action);
    void appendDigit(const std::string& digit, PinEntry& pinEntry);

    PresentationOptions& presentation_;
    KeyEvents& keyEvents_;
    SystemPower& systemPower_;
    MainQueue& mainQueue_;
    Text& text_;
    PowerAssertionManager& powerAssertionManager_;
    Subscription keyEventMonitor_;
    Subscription powerOffObserver_;
    Subscription workspaceSleepObserver_;
    Lifetime lifetime_;
};

} // namespace kestrovan
