#pragma once

#include "platform/MotionPreference.h"
#include "ui/AboutModalSheet.h"
#include "ui/AlarmTriggeredOverlay.h"
#include "ui/Announcement.h"
#include "ui/FooterSection.h"
#include "ui/HeaderSection.h"
#include "ui/IntruderGallerySheet.h"
#include "ui/MainGuardCard.h"
#include "ui/SensorStatusSection.h"
#include "ui/SettingsSheet.h"
#include "ui/UpdateModalSheet.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The one window of the program: header, power strip, guard card and footer, the sheets over them, and over
/// everything, while it sounds, the alarm. Each has an object of its own, and ContentView.qml puts them together.
class ContentView : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(ContentViewLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(kestrovan::HeaderSection* header READ header CONSTANT)
    Q_PROPERTY(kestrovan::SensorStatusSection* sensors READ sensors CONSTANT)
    Q_PROPERTY(kestrovan::MainGuardCard* card READ card CONSTANT)
    Q_PROPERTY(kestrovan::FooterSection* footer READ footer CONSTANT)
    Q_PROPERTY(kestrovan::SettingsSheet* settings READ settings CONSTANT)
    Q_PROPERTY(kestrovan::AboutModalSheet* about READ about CONSTANT)
    Q_PROPERTY(kestrovan::IntruderGallerySheet* gallery READ gallery CONSTANT)
    Q_PROPERTY(kestrovan::UpdateModalSheet* update READ update CONSTANT)
    Q_PROPERTY(kestrovan::AlarmTriggeredOverlay* alarm READ alarm CONSTANT)
    Q_PROPERTY(kestrovan::Announcement* announcement READ announcement CONSTANT)
    Q_PROPERTY(bool isUncovered READ isUncovered NOTIFY changed)
    /// The window may not be seen at all; QML says so.
    Q_PROPERTY(bool isVisible READ isVisible WRITE setVisible NOTIFY changed)

public:
    /// All of it outlives the view.
    ContentView(AppState& appState, const Platform& platform, const ShellActions& actions);

    HeaderSection* header() { return &header_; }
    SensorStatusSection* sensors() { return &sensors_; }
    MainGuardCard* card() { return &card_; }
    FooterSection* footer() { return &footer_; }
    SettingsSheet* settings() { return &settings_; }
    AboutModalSheet* about() { return &about_; }
    IntruderGallerySheet* gallery() { return &gallery_; }
    UpdateModalSheet* update() { return &update_; }
    AlarmTriggeredOverlay* alarm() { return &alarm_; }
    Announcement* announcement() { return &announcement_; }
    bool isUncovered() { return !sheets_.areAny() && !alarm_.isShown(); } ///< no sheet and no alarm over it

    Q_INVOKABLE void quit() { actions_.quit(); }

    bool isVisible() const { return isVisible_; }
    void setVisible(bool visible);

private:
    void animate();

    const ShellActions actions_;
    Sheets sheets_;
    HeaderSection header_;
    SensorStatusSection sensors_;
    MainGuardCard card_;
    FooterSection footer_;
    SettingsSheet settings_;
    AboutModalSheet about_;
    IntruderGallerySheet gallery_;
    UpdateModalSheet update_;
    AlarmTriggeredOverlay alarm_;
    Announcement announcement_;
    ChangeFollower sheetsFollower_;
    const MotionPreference& motion_;
    ChangeFollower motionFollower_;
    bool isVisible_ = false;
};

} // namespace kestrovan
