#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace kestrovan {

/// The key of one text of the interface. Most stand for themselves (`L10nKey::appName`); four carry a parameter and
/// are made by the functions below.
class L10nKey {
public:
    enum Name {
        pinLockoutMessageName,
        currentVersionLabelName,
        newVersionAvailableName,
        secondsName,
        appName,
        appSubtitle,
        powerConnected,
        batteryPower,
        triggerCharger,
        triggerLid,
        triggerCamera,
        customWallpaperTag,
        standardWallpaperTag,
        protectionInactive,
        protectionInactiveDesc,
        protectionActive,
        protectionActiveDesc,
        armingTitle,
        armingDesc,
        activateProtection,
        disarmProtection,
        cancel,
        alarmTriggeredTitle,
        securityWarningActive,
        stopAlarmNow,
        enterPinToStop,
        openUnlock,
        wrongPin,
        testSiren,
        previewFullscreen,
        closePreview,
        pinActive,
        pinInactive,
        settingsTitle,
        close,
        wallpaperSectionTitle,
        wallpaperSectionDesc,
        chooseFromMac,
        removeCustomImage,
        fullscreenWarningLabel,
        showFullscreenArmed,
        showFullscreenAlarm,
        sensorsSectionTitle,
        alarmOnChargerDisconnect,
        alarmOnLidClose,
        cameraSectionTitle,
        cameraCaptureToggle,
        cameraCaptureDesc,
        cameraDelayTitle,
        cameraDelayDesc,
        intruderGalleryTitle,
        intruderGalleryDesc,
        intruderLogsEmpty,
        openIntruderFolder,
        clearIntruderLogs,
        viewIntruderPhotos,
        photoCapturedBadge,
        armingDelayTitle,
        pinSectionTitle,
        usePinToggle,
        changePinLabel,
        newPinPlaceholder,
        savePinButton,
        pinSavedSuccess,
        languageSectionTitle,
        aboutSectionTitle,
        developerLabel,
        companyLabel,
        websiteLabel,
        copyrightText,
        aboutAppDesc,
        otherPlatformsInDev,
        nextGenFeaturesInDev,
        updateSectionTitle,
        checkForUpdates,
        checkingForUpdates,
        upToDateTitle,
        upToDateDesc,
        downloadUpdateNow,
        updateNotesTitle,
        autoCheckUpdatesToggle,
        serverUrlLabel,
        simulateUpdateFound,
        lockdownActiveBanner,
        numericOnlyHint,
        cannotQuitWhileAlarming,
        reasonChargerDisconnected,
        reasonLidClosed,
        reasonSleepAttempted,
        reasonTest,
        defaultWarningText,
        dontTouchWarning,
        menuOpenWindow,
        menuQuit,
    };

    L10nKey(Name plain) : name_(plain) {} // NOLINT(google-explicit-constructor): a plain name is a key

    static L10nKey pinLockoutMessage(std::int64_t seconds) { return {pinLockoutMessageName, seconds, {}}; }
    static L10nKey seconds(std::int64_t count) { return {secondsName, count, {}}; }
    /// Versions come bare, without a leading v.
    static L10nKey currentVersionLabel(std::string version) { return {currentVersionLabelName, 0, std::move(version)}; }
    static L10nKey newVersionAvailable(std::string version) { return {newVersionAvailableName, 0, std::move(version)}; }

    Name name() const { return name_; }
    std::int64_t number() const { return number_; }
    const std::string& version() const { return version_; }

private:
    L10nKey(Name name, std::int64_t number, std::string version)
        : name_(name), number_(number), version_(std::move(version))
    {}

    Name name_;
    std::int64_t number_ = 0;
    std::string version_;
};

} // namespace kestrovan
