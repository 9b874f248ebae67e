#pragma once

#include "l10n/Vendor.h"
#include "ui/SheetView.h"
#include "ui/ShellActions.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The sheet that says what the program is, who makes it and what is planned.
class AboutModalSheet : public kestrovan::SheetView {
    Q_OBJECT
    QML_NAMED_ELEMENT(AboutModalSheetLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString appName READ appName NOTIFY changed)
    Q_PROPERTY(QString appSubtitle READ appSubtitle NOTIFY changed)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString developer READ developer NOTIFY changed)
    Q_PROPERTY(QString website READ website CONSTANT)
    Q_PROPERTY(QString description READ description NOTIFY changed)
    Q_PROPERTY(QString otherPlatforms READ otherPlatforms NOTIFY changed)
    Q_PROPERTY(QString nextFeatures READ nextFeatures NOTIFY changed)
    Q_PROPERTY(QString copyright READ copyright NOTIFY changed)

public:
    AboutModalSheet(AppState& appState, MainQueue& mainQueue, Sheets& sheets, const ShellActions& actions)
        : SheetView(appState, mainQueue, sheets, Sheets::Sheet::about), actions_(actions)
    {}

    QString appName() const { return text(L10nKey::appName); }
    QString appSubtitle() const { return text(L10nKey::appSubtitle); }
    QString version() const { return "Version 1.1.83 (Build 83)"; }
    QString developer() const { return text(L10nKey::developerLabel); }
    QString website() const { return vendor::websiteAddress; }
    QString description() const { return text(L10nKey::aboutAppDesc); }
    QString otherPlatforms() const { return text(L10nKey::otherPlatformsInDev); }
    QString nextFeatures() const { return text(L10nKey::nextGenFeaturesInDev); }
    QString copyright() const { return text(L10nKey::copyrightText); }

    Q_INVOKABLE void openWebsite() { actions_.openWebsite(); }

private:
    const ShellActions& actions_;
};

} // namespace kestrovan
