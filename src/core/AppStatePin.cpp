#include "core/AppState.h"
#include "core/SettingsKeys.h"

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr std::int64_t attemptsBeforeLockout = 5;
constexpr std::int64_t lockoutSeconds = 30;
constexpr auto lockoutStep = 1000ms;
constexpr std::size_t shortestPin = 4;
constexpr std::size_t longestPin = 16;

} // namespace

bool AppState::disarm(const std::optional<std::string>& pin)
{
    if (isLockedOut())
        return false;
    if (guardState->isAlarmTriggered() && isPinEnabled && !isCorrectPin(pin)) {
        pinError = true;
        failedPinAttempts = failedPinAttempts + 1;
        if (failedPinAttempts >= attemptsBeforeLockout)
            startLockout(lockoutSeconds);
        return false;
    }
    failedPinAttempts = 0;
    performDisarm();
    return true;
}

bool AppState::isCorrectPin(const std::optional<std::string>& pin) const
{
    return pin && *pin == pinCode.get();
}

void AppState::startLockout(std::int64_t seconds)
{
    lockoutSecondsRemaining = seconds;
    lockoutTimer_ = platform_.mainQueue.repeat(lockoutStep, lifetime_.guard([this] { lockoutTick(); }));
}

void AppState::lockoutTick()
{
    if (lockoutSecondsRemaining >= 2) {
        lockoutSecondsRemaining = lockoutSecondsRemaining - 1;
        return;
    }
    lockoutTimer_->invalidate();
    lockoutSecondsRemaining = 0;
    failedPinAttempts = 0;
    pinError = false;
}

void AppState::updatePinCode(const std::string& text)
{
    auto pin = platform_.text.trimmed(text);
    const auto length = platform_.text.countCharacters(pin);
    if (length < shortestPin || length > longestPin)
        return;
    pinCode = pin;
    store(settingsKey::pin, std::move(pin));
}

} // namespace kestrovan
