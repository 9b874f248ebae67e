#include "core/AppState.h"

#include "core/SettingsKeys.h"

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto launchUpdateCheckDelay = 2000ms;
constexpr const char* defaultPin = "7391";

} // namespace

AppState::AppState(const Platform& platform, const GuardParts& parts)
    : powerMonitor(parts.powerMonitor), lidMonitor(parts.lidMonitor), alarmManager(parts.alarmManager),
      cameraManager(parts.cameraManager), updateManager(parts.updateManager), platform_(platform),
      powerAssertionManager_(parts.powerAssertionManager), securityLockdownManager_(parts.securityLockdownManager),
      deterrentScreens_(parts.deterrentScreens)
{
    readSettings();
    loadIntruderRecords();
    installCallbacks();
    followManagers();
    if (updateManager.isAutoCheckEnabled)
        scheduleUpdateCheck();
}

// The sensors outlive the guard: their slots must not.
AppState::~AppState()
{
    powerMonitor.onPowerStateChanged = nullptr;
    lidMonitor.onLidClosed = nullptr;
    lidMonitor.onSleepTriggered = nullptr;
    lidMonitor.isArmedProvider = [] { return false; };
    lidMonitor.armedStateMayHaveChanged();
}

void AppState::readSettings()
{
    const auto& settings = platform_.settings;
    pinCode = settings.read<std::string>(settingsKey::pin).value_or(defaultPin);
    isPinEnabled = readBool(settingsKey::pinEnabled, false);
    isLidAlarmEnabled = readBool(settingsKey::lidAlarm, true);
    isChargerAlarmEnabled = readBool(settingsKey::chargerAlarm, true);
    isCameraCaptureEnabled = readBool(settingsKey::cameraCapture, true);
    cameraDelayDuration = settings.read<double>(settingsKey::cameraDelay).value_or(2.0);
    const auto language = settings.read<std::string>(settingsKey::language).value_or("id");
    currentLanguage = languageFromRawValue(language).value_or(AppLanguage::indonesian);
    customImagePath = settings.read<std::string>(settingsKey::customImagePath);
    customWarningMessage = settings.read<std::string>(settingsKey::warningMessage).value_or("");
    showFullscreenWhenArmed = readBool(settingsKey::fullscreenArmed, true);
    showFullscreenWhenTriggered = readBool(settingsKey::fullscreenTriggered, true);
}

bool AppState::readBool(const char* key, bool fallback) const
{
    return platform_.settings.read<bool>(key).value_or(fallback);
}

void AppState::installCallbacks()
{
    powerMonitor.onPowerStateChanged =
        lifetime_.guard([this](const BatteryStatus& status) { handlePowerChange(status); });
    lidMonitor.onLidClosed = lifetime_.guard([this] { handleLidClosed(); });
    lidMonitor.onSleepTriggered = lifetime_.guard([this] { handleSleepAttempt(); });
    lidMonitor.isArmedProvider = [this, alive = lifetime_.watch()] { return !alive.expired() && vetoesSleep(); };
    lidMonitor.armedStateMayHaveChanged();
}

void AppState::followManagers()
{
    const auto follow = [this](Observable& manager) {
        cancellables_.push_back(manager.subscribe(lifetime_.guard([this] { announceChange(); })));
    };
    follow(powerMonitor);
    follow(lidMonitor);
    follow(cameraManager);
    follow(updateManager);
}

void AppState::scheduleUpdateCheck()
{
    platform_.mainQueue.postAfter(launchUpdateCheckDelay,
                                  lifetime_.guard([this] { updateManager.checkForUpdates(true); }));
}

} // namespace kestrovan
