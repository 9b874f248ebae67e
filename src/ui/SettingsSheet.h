#pragma once

#include "ui/CameraSettings.h"
#include "ui/PinSettings.h"
#include "ui/SheetView.h"
#include "ui/ShellActions.h"
#include "ui/UpdateSettings.h"
#include "ui/WallpaperSettings.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The sheet with every setting of the guard. Each control shows what the guard holds and changes it at once. The
/// larger sections have objects of their own.
class SettingsSheet : public kestrovan::SheetView {
    Q_OBJECT
    QML_NAMED_ELEMENT(SettingsSheetLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(kestrovan::UpdateSettings* updates READ updates CONSTANT)
    Q_PROPERTY(kestrovan::CameraSettings* camera READ camera CONSTANT)
    Q_PROPERTY(kestrovan::WallpaperSettings* wallpaper READ wallpaper CONSTANT)
    Q_PROPERTY(kestrovan::PinSettings* pin READ pin CONSTANT)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString languageTitle READ languageTitle NOTIFY changed)
    Q_PROPERTY(QStringList languages READ languages CONSTANT)
    Q_PROPERTY(int languageIndex READ languageIndex NOTIFY changed)
    Q_PROPERTY(QString triggersTitle READ triggersTitle NOTIFY changed)
    Q_PROPERTY(QString chargerLabel READ chargerLabel NOTIFY changed)
    Q_PROPERTY(bool isChargerOn READ isChargerOn NOTIFY changed)
    Q_PROPERTY(QString lidLabel READ lidLabel NOTIFY changed)
    Q_PROPERTY(bool isLidOn READ isLidOn NOTIFY changed)
    Q_PROPERTY(QString armingDelayTitle READ armingDelayTitle NOTIFY changed)
    Q_PROPERTY(QStringList armingDelays READ armingDelays NOTIFY changed)
    Q_PROPERTY(int armingDelayIndex READ armingDelayIndex NOTIFY changed)
    Q_PROPERTY(QString aboutTitle READ aboutTitle NOTIFY changed)
    Q_PROPERTY(QString product READ product CONSTANT)
    Q_PROPERTY(QString developer READ developer NOTIFY changed)
    Q_PROPERTY(QString website READ website CONSTANT)
    Q_PROPERTY(QString description READ description NOTIFY changed)
    Q_PROPERTY(QString copyright READ copyright NOTIFY changed)

public:
    SettingsSheet(AppState& appState, const Platform& platform, Sheets& sheets, const ShellActions& actions);

    UpdateSettings* updates() { return &updates_; }
    CameraSettings* camera() { return &camera_; }
    WallpaperSettings* wallpaper() { return &wallpaper_; }
    PinSettings* pin() { return &pin_; }
    QString title() const { return text(L10nKey::settingsTitle); }
    QString languageTitle() const { return text(L10nKey::languageSectionTitle); }
    QStringList languages() const;
    int languageIndex() const;
    QString triggersTitle() const { return text(L10nKey::sensorsSectionTitle); }
    QString chargerLabel() const { return text(L10nKey::alarmOnChargerDisconnect); }
    bool isChargerOn() const { return appState().isChargerAlarmEnabled; }
    QString lidLabel() const { return text(L10nKey::alarmOnLidClose); }
    bool isLidOn() const { return appState().isLidAlarmEnabled; }
    QString armingDelayTitle() const { return text(L10nKey::armingDelayTitle); }
    QStringList armingDelays() const;
    int armingDelayIndex() const; ///< -1 for a delay that is not among the choices
    QString aboutTitle() const { return text(L10nKey::aboutSectionTitle); }
    QString product() const { return "Kestrovan v1.1.83"; }
    QString developer() const { return text(L10nKey::developerLabel); }
    QString website() const;
    QString description() const { return text(L10nKey::aboutAppDesc); }
    QString copyright() const { return text(L10nKey::copyrightText); }

    Q_INVOKABLE void chooseLanguage(int index);
    Q_INVOKABLE void setCharger(bool on) { appState().toggleChargerAlarm(on); }
    Q_INVOKABLE void setLid(bool on) { appState().toggleLidAlarm(on); }
    Q_INVOKABLE void chooseArmingDelay(int index); ///< for this run of the program
    Q_INVOKABLE void openWebsite() { actions_.openWebsite(); }

private:
    const ShellActions& actions_;
    UpdateSettings updates_;
    CameraSettings camera_;
    WallpaperSettings wallpaper_;
    PinSettings pin_;
};

} // namespace kestrovan
