#pragma once

#include <cstdint>
#include <string>

namespace kestrovan {

/// What the guard hears of the mains: one reading, as the machine's power sources report it.
struct BatteryStatus {
    bool isACConnected = false;
    bool isCharging = false;
    std::int64_t currentPercentage = 100; ///< 0 to 100
    std::string sourceName = "Unknown";

    bool operator==(const BatteryStatus&) const = default;
};

} // namespace kestrovan
