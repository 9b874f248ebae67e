#include "ui/SensorStatusSection.h"

#include "parts/Palette.h"

namespace kestrovan {

QString SensorStatusSection::symbol() const
{
    return status().isACConnected ? "powerplug.fill" : "battery.50percent";
}

QColor SensorStatusSection::tone() const
{
    return status().isACConnected ? palette::green : palette::orange;
}

QColor SensorStatusSection::barEnd() const
{
    return status().isACConnected ? palette::mint : palette::yellow;
}

QString SensorStatusSection::source() const
{
    return text(status().isACConnected ? L10nKey::powerConnected : L10nKey::batteryPower);
}

QString SensorStatusSection::level() const
{
    return QString::number(status().currentPercentage) + '%';
}

double SensorStatusSection::levelFraction() const
{
    return static_cast<double>(status().currentPercentage) / 100;
}

TriggerChip SensorStatusSection::trigger(bool on, L10nKey::Name label) const
{
    return {on ? "checkmark.circle.fill" : "circle", on ? palette::green : palette::gray, text(label), on};
}

TriggerChip SensorStatusSection::camera() const
{
    const bool on = appState().isCameraCaptureEnabled;
    return {on ? "camera.fill" : "camera", on ? palette::cyan : palette::gray, text(L10nKey::triggerCamera), on};
}

} // namespace kestrovan
