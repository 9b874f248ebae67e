#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrovan {

/// One photo taken by the guard.
struct IntruderRecord {
    /// Coarse enough to survive the store, whose seconds are a double, without a change.
    using Moment = std::chrono::sys_time<std::chrono::microseconds>;

    std::string id;            ///< a UUID, 36 characters in upper case (RFC 4122 text form)
    Moment timestamp;          ///< when the saved photo was reported
    std::string imagePath;     ///< absolute
    std::string triggerReason; ///< in the language of that moment

    bool operator==(const IntruderRecord&) const = default;
};

/// A new random (version 4) UUID.
std::string makeRecordId();

/// The log as it is stored: a compact JSON array, timestamps in seconds since 2001-01-01 00:00:00 UTC. None if a text
/// is not UTF-8.
std::optional<std::string> encodeIntruderRecords(const std::vector<IntruderRecord>& records);

/// None if the bytes are not such an array, or any record of it lacks a key or has a value of the wrong type.
std::optional<std::vector<IntruderRecord>> decodeIntruderRecords(std::string_view json);

} // namespace kestrovan
