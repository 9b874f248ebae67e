#pragma once

#include "core/DeterrentScreens.h"
#include "core/GuardState.h"
#include "core/IntruderRecord.h"
#include "platform/Clock.h"
#include "platform/Diagnostics.h"
#include "platform/Files.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "platform/Published.h"
#include "platform/SettingsStore.h"
#include "platform/Text.h"
#include "platform/Workspace.h"
#include "responses/AlarmManager.h"
#include "responses/CameraManager.h"
#include "responses/PowerAssertionManager.h"
#include "responses/SecurityLockdownManager.h"
#include "sensors/LidMonitor.h"
#include "sensors/PowerMonitor.h"
#include "update/UpdateManager.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace kestrovan {

/// What the guard hears and acts through; all of it outlives the guard.
struct GuardParts {
    PowerMonitor& powerMonitor;
    LidMonitor& lidMonitor;
    AlarmManager& alarmManager;
    CameraManager& cameraManager;
    UpdateManager& updateManager;
    PowerAssertionManager& powerAssertionManager;
    SecurityLockdownManager& securityLockdownManager;
    DeterrentScreens& deterrentScreens;
};

/// The guard: its state, its settings, the PIN lock and the intruder log. One exists per program; every view follows
/// it. Main thread. No operation reports an error; what cannot be stored still holds for the rest of the run.
class AppState : public Observable, private PinEntry {
public:
    AppState(const Platform& platform, const GuardParts& parts);
    ~AppState() override;

    Published<GuardState> guardState{*this, GuardState::disarmed()};

    // Settings, stored by the operations below as they change.
    Published<std::string> pinCode{*this, {}};
    Published<bool> isPinEnabled{*this, false};
    Published<bool> isLidAlarmEnabled{*this, true};
    Published<bool> isChargerAlarmEnabled{*this, true};
    Published<bool> isCameraCaptureEnabled{*this, true};
    Published<double> cameraDelayDuration{*this, 2.0}; ///< seconds
    Published<AppLanguage> currentLanguage{*this, AppLanguage::indonesian};
    Published<std::optional<std::string>> customImagePath{*this, std::nullopt};
    Published<std::string> customWarningMessage{*this, {}}; ///< empty: the views show their own text
    Published<bool> showFullscreenWhenArmed{*this, true};
    Published<bool> showFullscreenWhenTriggered{*this, true};
    Published<std::vector<IntruderRecord>> intruderRecords{*this, {}}; ///< newest first

    // Of this run alone.
    Published<std::int64_t> armDelayDuration{*this, 3}; ///< seconds
    Published<std::string> enteredPin{*this, {}};
    Published<bool> pinError{*this, false};
    Published<std::int64_t> failedPinAttempts{*this, 0};
    Published<std::int64_t> lockoutSecondsRemaining{*this, 0};

    PowerMonitor& powerMonitor;
    LidMonitor& lidMonitor;
    AlarmManager& alarmManager;
    CameraManager& cameraManager;
    UpdateManager& updateManager;

    // The guard.
    void startArming();  ///< from disarmed only
    void cancelArming(); ///< whatever the state: only the countdown offers it
    void triggerAlarm(AlarmReason reason);
    /// True if the guard is disarmed now. A sounding alarm with PIN protection needs the PIN; five wrong ones lock the
    /// entry for 30 seconds, during which everything is refused.
    bool disarm(const std::optional<std::string>& pin);

    // The settings.
    void togglePinRequirement(bool on);
    void toggleLidAlarm(bool on);
    void toggleChargerAlarm(bool on);
    void toggleFullscreenArmed(bool on);
    void toggleFullscreenTriggered(bool on);
    void toggleCameraCapture(bool on);
    void setCameraDelay(double seconds);                ///< clamped to 1 to 10
    void updateWarningMessage(const std::string& text); ///< the first 140 characters of it
    void setLanguage(AppLanguage lang);
    void updatePinCode(const std::string& text); ///< 4 to 16 characters once trimmed, else ignored

    // The picture behind the deterrent screens; its file may be gone or be no picture.
    void selectCustomImageFromPicker(); ///< returns when the user has answered
    void removeCustomImage();           ///< and the program's copy of it, never the user's file

    // The intruder log.
    void addIntruderRecord(const std::filesystem::path& path, const std::string& reason);
    void clearIntruderRecords(); ///< the photos stay
    void openIntruderFolder();

private:
    void readSettings();
    void installCallbacks();
    void followManagers();
    void scheduleUpdateCheck();
    void store(const char* key, SettingsValue value);
    bool readBool(const char* key, bool fallback) const;

    void setGuardState(GuardState state);
    void finishArming();
    void requestPhoto(AlarmReason reason);
    void performDisarm();
    void invalidateArmTimer();
    void clearPinEntry();
    void postShowOverlay();
    void askForCameraOnce();
    void handlePowerChange(const BatteryStatus& status);
    void handleLidClosed();
    void handleSleepAttempt();
    bool vetoesSleep() const;

    bool isCorrectPin(const std::optional<std::string>& pin) const;
    void startLockout(std::int64_t seconds);
    void lockoutTick();

    void saveCustomImage(const std::filesystem::path& source);
    bool isOwnCopy(const std::filesystem::path& image) const;

    void loadIntruderRecords();
    void saveIntruderRecords();

    // PinEntry: the lockdown's view of the guard.
    const std::string& pinEntryText() const override { return enteredPin; }
    void setPinEntryText(std::string text) override { enteredPin = std::move(text); }
    void clearPinError() override { pinError = false; }
    bool isLockedOut() const override { return lockoutSecondsRemaining >= 1; }
    void submitPinEntry() override { disarm(enteredPin.get()); }
    void restartSiren() override { alarmManager.startAlarm(); }
    const Lifetime& lifetime() const override { return lifetime_; }

    const Platform platform_;
    PowerAssertionManager& powerAssertionManager_;
    SecurityLockdownManager& securityLockdownManager_;
    DeterrentScreens& deterrentScreens_;
    std::unique_ptr<Timer> armTimer_;
    std::unique_ptr<Timer> lockoutTimer_;
    std::vector<Subscription> cancellables_;
    /// Makes the test of the state and the change that follows one step. What is called while it is held must not
    /// call back into the operations that take it.
    std::mutex stateLock_;
    Lifetime lifetime_;
};

} // namespace kestrovan
