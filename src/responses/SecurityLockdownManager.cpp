#include "responses/SecurityLockdownManager.h"

#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "platform/PresentationOptions.h"
#include "platform/SystemPower.h"
#include "platform/Text.h"
#include "responses/PowerAssertionManager.h"

namespace kestrovan {

namespace {

constexpr std::uint32_t kioskOptions =
    PresentationOptions::hideDock | PresentationOptions::hideMenuBar | PresentationOptions::disableSystemMenu |
    PresentationOptions::disableProcessSwitching | PresentationOptions::disableForceQuit |
    PresentationOptions::disableSessionTermination | PresentationOptions::disableHidingApplication;
static_assert(kioskOptions == 506);

constexpr std::size_t maximumEntry = 12;

} // namespace

SecurityLockdownManager::SecurityLockdownManager(const Platform& platform, PowerAssertionManager& powerAssertionManager)
    : presentation_(platform.presentation), keyEvents_(platform.keyEvents), systemPower_(platform.systemPower),
      mainQueue_(platform.mainQueue), text_(platform.text), powerAssertionManager_(powerAssertionManager)
{}

void SecurityLockdownManager::enableLockdown(PinEntry& pinEntry)
{
    if (isLockdownActive)
        return;
    isLockdownActive = true;
    const auto lockPinEntry = pinEntry.lifetime().guard([this, &pinEntry] {
        installNumericOnlyKeyFilter(pinEntry);
        listenToSystemShutdownAttempts(pinEntry);
    });
    mainQueue_.post(lifetime_.guard([this, lockPinEntry] {
        presentation_.setOptions(kioskOptions);
        lockPinEntry();
    }));
}

void SecurityLockdownManager::disableLockdown()
{
    if (!isLockdownActive)
        return;
    isLockdownActive = false;
    mainQueue_.post(lifetime_.guard([this] {
        presentation_.setOptions(0);
        keyEventMonitor_.reset();
        powerOffObserver_.reset();
        workspaceSleepObserver_.reset();
    }));
}

void SecurityLockdownManager::installNumericOnlyKeyFilter(PinEntry& pinEntry)
{
    keyEventMonitor_.reset();
    const auto act = pinEntry.lifetime().guard([this, &pinEntry](const KeyEvent& event) { actOnKey(event, pinEntry); });
    keyEventMonitor_ = keyEvents_.addLocalMonitor([this, act](const KeyEvent& event) { return filter(event, act); });
}

bool SecurityLockdownManager::filter(const KeyEvent& event, const std::function<void(const KeyEvent&)>& act) const
{
    if (!isLockdownActive)
        return false;
    if (event.type == KeyEvent::Type::keyDown)
        act(event);
    return event.type != KeyEvent::Type::other;
}

void SecurityLockdownManager::actOnKey(const KeyEvent& event, PinEntry& pinEntry)
{
    switch (event.keyCode) {
    case KeyEvent::returnKey:
    case KeyEvent::keypadEnter:
        postPinAction(pinEntry, [&pinEntry] {
            if (!pinEntry.isLockedOut())
                pinEntry.submitPinEntry();
        });
        break;
    case KeyEvent::deleteKey:
    case KeyEvent::forwardDelete:
        postPinAction(pinEntry, [this, &pinEntry] {
            if (!pinEntry.isLockedOut() && !pinEntry.pinEntryText().empty())
                pinEntry.setPinEntryText(text_.withoutLastCharacter(pinEntry.pinEntryText()));
        });
        break;
    case KeyEvent::escape:
    case KeyEvent::keypadClear:
        postPinAction(pinEntry, [&pinEntry] { pinEntry.setPinEntryText({}); });
        break;
    default:
        if (auto digit = text_.leadingNumeric(event.charactersIgnoringModifiers); !digit.empty())
            postPinAction(pinEntry, [this, &pinEntry, digit = std::move(digit)] { appendDigit(digit, pinEntry); });
    }
}

// Posted, so that the action runs after the event has been swallowed.
void SecurityLockdownManager::postPinAction(PinEntry& pinEntry, std::function<void()> action)
{
    mainQueue_.post(lifetime_.guard(pinEntry.lifetime().guard(std::move(action))));
}

void SecurityLockdownManager::appendDigit(const std::string& digit, PinEntry& pinEntry)
{
    const auto& entered = pinEntry.pinEntryText();
    if (pinEntry.isLockedOut() || text_.countCharacters(entered) >= maximumEntry)
        return;
    pinEntry.clearPinError();
    pinEntry.setPinEntryText(entered + digit);
}

void SecurityLockdownManager::listenToSystemShutdownAttempts(PinEntry& pinEntry)
{
    const auto restartSiren = pinEntry.lifetime().guard([&pinEntry] { pinEntry.restartSiren(); });
    powerOffObserver_ = systemPower_.observe(WorkspaceNotice::willPowerOff, lifetime_.guard([this, restartSiren] {
        powerAssertionManager_.startPreventingSleep("Kestrovan Emergency Lockdown");
        restartSiren();
    }));
    workspaceSleepObserver_ = systemPower_.observe(WorkspaceNotice::screensDidSleep, lifetime_.guard([this] {
        powerAssertionManager_.startPreventingSleep("Kestrovan Screen Sleep Lockdown");
    }));
}

} // namespace kestrovan
