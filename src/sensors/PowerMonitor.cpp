#include "sensors/PowerMonitor.h"

#include <algorithm>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// Some machines send no notification at all, so that the poll must notice a pulled charger by itself.
constexpr auto powerPollInterval = 500ms;

constexpr const char* defaultSourceName = "InternalBattery";

std::int64_t percentage(std::int64_t current, std::int64_t maximum)
{
    const double percent = static_cast<double>(current) / static_cast<double>(maximum) * 100.0;
    return static_cast<std::int64_t>(std::clamp(percent, 0.0, 100.0));
}

void merge(const PowerSourceDescription& source, BatteryStatus& status)
{
    if (source.state)
        status.isACConnected = *source.state == PowerSourceDescription::acPower;
    if (source.isCharging)
        status.isCharging = *source.isCharging;
    if (source.currentCapacity && source.maxCapacity && *source.maxCapacity >= 1)
        status.currentPercentage = percentage(*source.currentCapacity, *source.maxCapacity);
    if (source.name)
        status.sourceName = *source.name;
}

} // namespace

PowerMonitor::PowerMonitor(PowerSources& sources, MainQueue& mainQueue) : sources_(sources), mainQueue_(mainQueue)
{
    status = fetchCurrentStatus();
    startMonitoring();
}

PowerMonitor::~PowerMonitor()
{
    stopMonitoring();
}

BatteryStatus PowerMonitor::fetchCurrentStatus()
{
    const auto sources = sources_.read();
    if (!sources)
        return {.isACConnected = false, .isCharging = false, .currentPercentage = 0, .sourceName = "Unknown"};

    BatteryStatus reading{.sourceName = defaultSourceName};
    for (const auto& source : *sources)
        merge(source, reading);
    return reading;
}

void PowerMonitor::startMonitoring()
{
    notification_ = sources_.notify(lifetime_.guard([this] { checkAndUpdate(); }));
    timer_ = mainQueue_.repeat(powerPollInterval, lifetime_.guard([this] { checkAndUpdate(); }));
}

void PowerMonitor::stopMonitoring()
{
    notification_.reset();
    timer_.reset();
}

void PowerMonitor::checkAndUpdate()
{
    mainQueue_.post(lifetime_.guard([this] {
        const auto reading = fetchCurrentStatus();
        if (reading == status.get())
            return;
        status = reading;
        if (onPowerStateChanged)
            onPowerStateChanged(reading);
    }));
}

} // namespace kestrovan
