#pragma once

#include "parts/GuardView.h"

#include <QColor>
#include <QtQmlIntegration>

namespace kestrovan {

/// Whether one trigger of the alarm is on.
struct TriggerChip {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QColor color MEMBER color)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(bool isOn MEMBER isOn)

public:
    QString symbol;
    QColor color;
    QString label;
    bool isOn = false;
};

/// The power strip of the main window: where the machine's power comes from, how much is left, and what would fire
/// the alarm.
class SensorStatusSection : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(SensorStatusSectionLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
    Q_PROPERTY(QColor tone READ tone NOTIFY changed)
    Q_PROPERTY(QColor barEnd READ barEnd NOTIFY changed)
    Q_PROPERTY(QString source READ source NOTIFY changed)
    Q_PROPERTY(QString level READ level NOTIFY changed)
    Q_PROPERTY(double levelFraction READ levelFraction NOTIFY changed)
    Q_PROPERTY(kestrovan::TriggerChip charger READ charger NOTIFY changed)
    Q_PROPERTY(kestrovan::TriggerChip lid READ lid NOTIFY changed)
    Q_PROPERTY(kestrovan::TriggerChip camera READ camera NOTIFY changed)

public:
    SensorStatusSection(AppState& appState, MainQueue& mainQueue) : GuardView(appState, mainQueue) {}

    QString symbol() const;
    QColor tone() const;   ///< of everything that says where the power comes from
    QColor barEnd() const; ///< what the level bar's tone shades off into
    QString source() const;
    QString level() const;
    double levelFraction() const; ///< 0 to 1
    TriggerChip charger() const { return trigger(appState().isChargerAlarmEnabled, L10nKey::triggerCharger); }
    TriggerChip lid() const { return trigger(appState().isLidAlarmEnabled, L10nKey::triggerLid); }
    TriggerChip camera() const;

private:
    const BatteryStatus& status() const { return appState().powerMonitor.status; }
    TriggerChip trigger(bool on, L10nKey::Name label) const;
};

} // namespace kestrovan
