#pragma once

#include "platform/PowerSources.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrovan {

/// Something that feeds the machine from outside.
struct MainsSupply {
    std::string name;
    std::optional<bool> isOnline; ///< none if it does not say
};

/// A battery of the machine's own.
struct BatterySupply {
    /// A charge level in its own unit; both are there or neither is, and the maximum is at least 1.
    struct Level {
        std::int64_t now = 0;
        std::int64_t full = 0;
    };

    std::string name;
    std::string status;           ///< as the kernel words it: "Charging", "Discharging", "Not charging", "Full", …
    std::optional<Level> energy;  ///< in µWh
    std::optional<Level> charge;  ///< in µAh
    std::optional<Level> percent; ///< of 100
};

struct PowerSupplies {
    std::vector<MainsSupply> mains;
    std::vector<BatterySupply> batteries;
};

/// One look at a folder of power supplies (/sys/class/power_supply), sorted by name. What makes no sense there is
/// absent here. None if the folder cannot be opened. Any thread; about ten system calls a supply.
std::optional<PowerSupplies> readPowerSupplies(const std::string& folder);

/// All of them as one source; none if there are none.
std::optional<PowerSourceDescription> describeTogether(const PowerSupplies& supplies);

} // namespace kestrovan
