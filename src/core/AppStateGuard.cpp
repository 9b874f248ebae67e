#include "core/AppState.h"

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto countdownStep = 1000ms;

} // namespace

void AppState::setGuardState(GuardState state)
{
    guardState = state;
    lidMonitor.armedStateMayHaveChanged();
}

void AppState::startArming()
{
    const std::scoped_lock lock(stateLock_);
    if (!guardState->isDisarmed())
        return;
    if (isCameraCaptureEnabled)
        askForCameraOnce();
    setGuardState(GuardState::arming(armDelayDuration));
    // The countdown belongs to this run of the timer: a setting changed meanwhile does not reach it.
    auto countdown = std::make_shared<std::int64_t>(armDelayDuration);
    invalidateArmTimer();
    armTimer_ = platform_.mainQueue.repeat(countdownStep, lifetime_.guard([this, countdown] {
        if (--*countdown < 1)
            finishArming();
        else
            setGuardState(GuardState::arming(*countdown));
    }));
}

void AppState::finishArming()
{
    armTimer_->invalidate();
    setGuardState(GuardState::armed());
    powerAssertionManager_.startPreventingSleep("Kestrovan Armed Protection");
    platform_.workspace.beep();
    if (showFullscreenWhenArmed)
        postShowOverlay();
}

void AppState::cancelArming()
{
    const std::scoped_lock lock(stateLock_);
    invalidateArmTimer();
    powerAssertionManager_.stopPreventingSleep();
    deterrentScreens_.hideOverlay();
    setGuardState(GuardState::disarmed());
    clearPinEntry();
}

void AppState::triggerAlarm(AlarmReason reason)
{
    const std::scoped_lock lock(stateLock_);
    if (guardState->isAlarmTriggered())
        return;
    powerAssertionManager_.startPreventingSleep("Kestrovan Siren Blasting");
    securityLockdownManager_.enableLockdown(*this);
    setGuardState(GuardState::alarmTriggered(reason));
    clearPinEntry();
    alarmManager.startAlarm();
    if (isCameraCaptureEnabled && reason != AlarmReason::test)
        requestPhoto(reason);
    if (showFullscreenWhenTriggered || showFullscreenWhenArmed)
        postShowOverlay();
    platform_.mainQueue.post([&workspace = platform_.workspace] { workspace.activate(); });
}

void AppState::requestPhoto(AlarmReason reason)
{
    const auto log = lifetime_.guard([this, reason](const std::optional<std::filesystem::path>& photo) {
        if (photo)
            addIntruderRecord(*photo, localizedDescription(reason, currentLanguage));
    });
    cameraManager.captureIntruderPhoto(localizedDescription(reason, currentLanguage), cameraDelayDuration, log);
}

void AppState::performDisarm()
{
    invalidateArmTimer();
    alarmManager.stopAlarm();
    powerAssertionManager_.stopPreventingSleep();
    securityLockdownManager_.disableLockdown();
    deterrentScreens_.hideOverlay();
    setGuardState(GuardState::disarmed());
    clearPinEntry();
}

void AppState::invalidateArmTimer()
{
    if (const auto timer = std::exchange(armTimer_, nullptr))
        timer->invalidate();
}

void AppState::clearPinEntry()
{
    enteredPin = std::string();
    pinError = false;
}

void AppState::postShowOverlay()
{
    platform_.mainQueue.post(lifetime_.guard([this] { deterrentScreens_.showOverlay(*this); }));
}

void AppState::handlePowerChange(const BatteryStatus& status)
{
    if (isChargerAlarmEnabled && guardState->isArmed() && !status.isACConnected)
        triggerAlarm(AlarmReason::chargerDisconnected);
}

void AppState::handleLidClosed()
{
    if (isLidAlarmEnabled && guardState->isArmed())
        triggerAlarm(AlarmReason::lidClosed);
}

void AppState::handleSleepAttempt()
{
    if (isLidAlarmEnabled && guardState->isArmed())
        triggerAlarm(AlarmReason::sleepAttempted);
}

bool AppState::vetoesSleep() const
{
    return isLidAlarmEnabled && (guardState->isArmed() || guardState->isAlarmTriggered());
}

} // namespace kestrovan
