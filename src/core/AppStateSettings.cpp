#include "core/AppState.h"
#include "core/SettingsKeys.h"

#include <algorithm>

namespace kestrovan {

namespace {

constexpr double shortestCameraDelay = 1.0;
constexpr double longestCameraDelay = 10.0;
constexpr std::size_t longestWarning = 140;

} // namespace

void AppState::store(const char* key, SettingsValue value)
{
    platform_.settings.setValue(key, std::move(value));
}

void AppState::togglePinRequirement(bool on)
{
    isPinEnabled = on;
    store(settingsKey::pinEnabled, on);
}

void AppState::toggleLidAlarm(bool on)
{
    isLidAlarmEnabled = on;
    store(settingsKey::lidAlarm, on);
    lidMonitor.armedStateMayHaveChanged();
}

void AppState::toggleChargerAlarm(bool on)
{
    isChargerAlarmEnabled = on;
    store(settingsKey::chargerAlarm, on);
}

void AppState::toggleFullscreenArmed(bool on)
{
    showFullscreenWhenArmed = on;
    store(settingsKey::fullscreenArmed, on);
}

void AppState::toggleFullscreenTriggered(bool on)
{
    showFullscreenWhenTriggered = on;
    store(settingsKey::fullscreenTriggered, on);
}

void AppState::toggleCameraCapture(bool on)
{
    isCameraCaptureEnabled = on;
    store(settingsKey::cameraCapture, on);
    if (on)
        askForCameraOnce();
}

void AppState::askForCameraOnce()
{
    if (cameraManager.authorization() == CameraAuthorization::notDetermined)
        cameraManager.requestPermission([](bool) {});
}

void AppState::setCameraDelay(double seconds)
{
    // In this order a delay that is not a number becomes the shortest one.
    cameraDelayDuration = std::max(shortestCameraDelay, std::min(longestCameraDelay, seconds));
    store(settingsKey::cameraDelay, cameraDelayDuration.get());
}

void AppState::updateWarningMessage(const std::string& text)
{
    customWarningMessage = platform_.text.prefix(text, longestWarning);
    store(settingsKey::warningMessage, customWarningMessage.get());
}

void AppState::setLanguage(AppLanguage lang)
{
    currentLanguage = lang;
    store(settingsKey::language, std::string(rawValue(lang)));
    announceChange();
}

} // namespace kestrovan
