#include "l10n/L10n.h"
#include "l10n/Vendor.h"

namespace kestrovan {

// One row per text; the length is the table's own. NOLINTNEXTLINE(readability-function-size)
std::string L10n::englishText(const L10nKey& key)
{
    switch (key.name()) {
    case L10nKey::pinLockoutMessageName:
        return "5 failed attempts. Locked for " + std::to_string(key.number()) + " seconds.";
    case L10nKey::currentVersionLabelName:
        return "Current Version: v" + key.version();
    case L10nKey::newVersionAvailableName:
        return "New Version Available: v" + key.version();
    case L10nKey::secondsName:
        return std::to_string(key.number()) + " Seconds";
    case L10nKey::appName:
        return "Kestrovan";
    case L10nKey::appSubtitle:
        return "MacBook Anti-Theft & Power Security";
    case L10nKey::powerConnected:
        return "CHARGER CONNECTED";
    case L10nKey::batteryPower:
        return "ON BATTERY POWER";
    case L10nKey::triggerCharger:
        return "Charger";
    case L10nKey::triggerLid:
        return "Lid Close";
    case L10nKey::triggerCamera:
        return "Camera (2s Delay)";
    case L10nKey::customWallpaperTag:
        return "Custom Image";
    case L10nKey::standardWallpaperTag:
        return "Standard Screen";
    case L10nKey::protectionInactive:
        return "Protection Inactive";
    case L10nKey::protectionInactiveDesc:
        return "Click the button below to arm security, intruder camera, and fullscreen deterrent.";
    case L10nKey::protectionActive:
        return "PROTECTION ACTIVE";
    case L10nKey::protectionActiveDesc:
        return "MacBook is guarded. If charger is unplugged or lid closed, alarm sounds and camera captures the "
               "intruder.";
    case L10nKey::armingTitle:
        return "Preparing Protection & Camera...";
    case L10nKey::armingDesc:
        return "Fullscreen mode, sensors, and camera will be armed shortly.";
    case L10nKey::activateProtection:
        return "ARM PROTECTION";
    case L10nKey::disarmProtection:
        return "Disarm Protection";
    case L10nKey::cancel:
        return "Cancel";
    case L10nKey::alarmTriggeredTitle:
        return "ALARM TRIGGERED";
    case L10nKey::securityWarningActive:
        return "MacBook security alert is active!";
    case L10nKey::stopAlarmNow:
        return "STOP ALARM NOW";
    case L10nKey::enterPinToStop:
        return "Enter Security PIN:";
    case L10nKey::openUnlock:
        return "Unlock";
    case L10nKey::wrongPin:
        return "Incorrect PIN! Try again.";
    case L10nKey::testSiren:
        return "Test Siren (2s)";
    case L10nKey::previewFullscreen:
        return "Preview Fullscreen";
    case L10nKey::closePreview:
        return "Close Preview";
    case L10nKey::pinActive:
        return "PIN Active";
    case L10nKey::pinInactive:
        return "PIN Off";
    case L10nKey::settingsTitle:
        return "Kestrovan Settings";
    case L10nKey::close:
        return "Close";
    case L10nKey::wallpaperSectionTitle:
        return "Fullscreen Wallpaper (Custom Image)";
    case L10nKey::wallpaperSectionDesc:
        return "Select an image from your Mac to display during armed or alarm fullscreen.";
    case L10nKey::chooseFromMac:
        return "Choose Image from Mac...";
    case L10nKey::removeCustomImage:
        return "Remove Custom Image";
    case L10nKey::fullscreenWarningLabel:
        return "Fullscreen Deterrent Text:";
    case L10nKey::showFullscreenArmed:
        return "Show Fullscreen when Armed";
    case L10nKey::showFullscreenAlarm:
        return "Show Fullscreen when Alarm Sounds";
    case L10nKey::sensorsSectionTitle:
        return "Alarm Triggers (Sensors)";
    case L10nKey::alarmOnChargerDisconnect:
        return "Alarm on Power Charger Disconnect";
    case L10nKey::alarmOnLidClose:
        return "Alarm on Lid Close (Clamshell)";
    case L10nKey::cameraSectionTitle:
        return "Intruder Snapshot Camera";
    case L10nKey::cameraCaptureToggle:
        return "Auto-Capture Photo on Alarm Trigger";
    case L10nKey::cameraCaptureDesc:
        return "Takes a photo of the person in front of MacBook when charger is unplugged or lid closed.";
    case L10nKey::cameraDelayTitle:
        return "Camera Snapshot Delay";
    case L10nKey::cameraDelayDesc:
        return "Delay time after camera opens (2 seconds) to adjust sensor auto-exposure and capture sharp face "
               "photos.";
    case L10nKey::intruderGalleryTitle:
        return "Intruder Photo Gallery";
    case L10nKey::intruderGalleryDesc:
        return "Photos captured automatically by the camera when alarm sounded.";
    case L10nKey::intruderLogsEmpty:
        return "No intruder photos captured yet.";
    case L10nKey::openIntruderFolder:
        return "Open Photo Folder in Finder";
    case L10nKey::clearIntruderLogs:
        return "Clear All Photo History";
    case L10nKey::viewIntruderPhotos:
        return "View Intruder Photos";
    case L10nKey::photoCapturedBadge:
        return "Photo Captured";
    case L10nKey::armingDelayTitle:
        return "Arming Countdown Delay";
    case L10nKey::pinSectionTitle:
        return "PIN Security Lock";
    case L10nKey::usePinToggle:
        return "Require PIN to Disarm Alarm";
    case L10nKey::changePinLabel:
        return "Change PIN (Minimum 4 Digits):";
    case L10nKey::newPinPlaceholder:
        return "New PIN";
    case L10nKey::savePinButton:
        return "Save PIN";
    case L10nKey::pinSavedSuccess:
        return "PIN updated successfully.";
    case L10nKey::languageSectionTitle:
        return "App Language";
    case L10nKey::aboutSectionTitle:
        return "About & Developer";
    case L10nKey::developerLabel:
        return std::string("Developer: ") + vendor::developerName;
    case L10nKey::companyLabel:
        return vendor::companyName;
    case L10nKey::websiteLabel:
        return std::string("Website: ") + vendor::websiteAddress;
    case L10nKey::copyrightText:
        return std::string("© 2026 Kestrovan. ") + vendor::developerName + ", " + vendor::companyName + ".";
    case L10nKey::aboutAppDesc:
        return std::string("Kestrovan was developed by ") + vendor::developerName +
               " to give MacBook users maximum physical security and theft prevention.";
    case L10nKey::otherPlatformsInDev:
        return "Windows, Android, and iOS/iPadOS versions are currently in development.";
    case L10nKey::nextGenFeaturesInDev:
        return "Upcoming Development: Live Video Recording, Sound Recording, and Quick Shortcut Key Disarm.";
    case L10nKey::updateSectionTitle:
        return "Software Updates";
    case L10nKey::checkForUpdates:
        return "Check for Updates...";
    case L10nKey::checkingForUpdates:
        return "Checking server for latest version...";
    case L10nKey::upToDateTitle:
        return "You're Up to Date";
    case L10nKey::upToDateDesc:
        return "Kestrovan is currently at the latest available version.";
    case L10nKey::downloadUpdateNow:
        return "Download & Install Update";
    case L10nKey::updateNotesTitle:
        return "Release Notes:";
    case L10nKey::autoCheckUpdatesToggle:
        return "Automatically Check for Updates on Launch";
    case L10nKey::serverUrlLabel:
        return "Update Server URL:";
    case L10nKey::simulateUpdateFound:
        return "Simulate New Version Found (Test)";
    case L10nKey::lockdownActiveBanner:
        return "SECURITY LOCKDOWN: FORCE-CLOSE & SYSTEM SHORTCUTS DISABLED";
    case L10nKey::numericOnlyHint:
        return "Only numeric 0-9 keys and PIN keypad are active.";
    case L10nKey::cannotQuitWhileAlarming:
        return "Cannot quit or close application while alarm is active or PIN protected!";
    case L10nKey::reasonChargerDisconnected:
        return "Charger Disconnected!";
    case L10nKey::reasonLidClosed:
        return "Lid Closed!";
    case L10nKey::reasonSleepAttempted:
        return "Sleep / Clamshell Attempted!";
    case L10nKey::reasonTest:
        return "Alarm Test Siren";
    case L10nKey::defaultWarningText:
        return "KESTROVAN: ACTIVE SURVEILLANCE";
    case L10nKey::dontTouchWarning:
        return "Do not unplug charger or close the screen. Alarm will sound loudly and capture your photo.";
    case L10nKey::menuOpenWindow:
        return "Open Kestrovan Window";
    case L10nKey::menuQuit:
        return "Quit";
    }
    return {};
}

} // namespace kestrovan
