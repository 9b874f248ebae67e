#pragma once

#include "parts/GuardView.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The settings of the check for updates.
class UpdateSettings : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(UpdateSettingsLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString version READ version NOTIFY changed)
    Q_PROPERTY(QString checkLabel READ checkLabel NOTIFY changed)
    Q_PROPERTY(QString automaticLabel READ automaticLabel NOTIFY changed)
    Q_PROPERTY(bool isAutomatic READ isAutomatic NOTIFY changed)
    Q_PROPERTY(QString serverLabel READ serverLabel NOTIFY changed)
    Q_PROPERTY(QString serverPlaceholder READ serverPlaceholder CONSTANT)
    Q_PROPERTY(QString server READ server NOTIFY changed)
    Q_PROPERTY(QString simulateLabel READ simulateLabel NOTIFY changed)

public:
    UpdateSettings(AppState& appState, MainQueue& mainQueue) : GuardView(appState, mainQueue) {}

    QString title() const { return text(L10nKey::updateSectionTitle); }
    QString version() const { return text(L10nKey::currentVersionLabel(updates().currentVersion)); }
    QString checkLabel() const { return text(L10nKey::checkForUpdates); }
    QString automaticLabel() const { return text(L10nKey::autoCheckUpdatesToggle); }
    bool isAutomatic() const { return updates().isAutoCheckEnabled; }
    QString serverLabel() const { return text(L10nKey::serverUrlLabel); }
    QString serverPlaceholder() const { return "http://..."; }
    QString server() const { return QString::fromStdString(updates().serverUpdateURLString); }
    QString simulateLabel() const { return text(L10nKey::simulateUpdateFound); }

    Q_INVOKABLE void check() { updates().checkForUpdates(false); }
    Q_INVOKABLE void setAutomatic(bool on) { updates().setAutoCheck(on); }
    Q_INVOKABLE void setServer(const QString& address) { updates().setServerURL(address.toStdString()); }
    Q_INVOKABLE void simulate() { updates().simulateUpdateFound(); }

private:
    UpdateManager& updates() const { return appState().updateManager; }
};

} // namespace kestrovan
