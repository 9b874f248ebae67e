#pragma once

#include "platform/Observable.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrovan {

/// What the machine says of one of its power sources. A field that is absent was not reported or made no sense.
struct PowerSourceDescription {
    static constexpr const char* acPower = "AC Power";
    static constexpr const char* batteryPower = "Battery Power";

    std::optional<std::string> state; ///< acPower while the machine runs on the mains
    std::optional<bool> isCharging;
    std::optional<std::int64_t> currentCapacity; ///< in the unit of maxCapacity
    std::optional<std::int64_t> maxCapacity;
    std::optional<std::string> name;

    bool operator==(const PowerSourceDescription&) const = default;
};

/// The machine's own power sources (not those of mice and headsets), in a stable order. Main thread.
class PowerSources {
public:
    virtual ~PowerSources() = default;

    /// One reading, which never blocks; none if the machine cannot be asked at all.
    virtual std::optional<std::vector<PowerSourceDescription>> read() = 0;

    /// Calls `changed` on the main thread soon after any power source changed. Some machines never notify: poll as
    /// well. An empty subscription where notifications cannot be had.
    [[nodiscard]] virtual Subscription notify(std::function<void()> changed) = 0;
};

} // namespace kestrovan
