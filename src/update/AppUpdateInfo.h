#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrovan {

/// The update manifest: what the newest release is and where it can be had.
struct AppUpdateInfo {
    std::string latestVersion{}; ///< dotted numbers, such as "1.1.0"
    std::optional<std::int64_t> buildNumber{};
    std::optional<std::string> releaseDate{}; ///< as text, such as "2026-08-25"
    std::string downloadUrl{};
    std::string releaseNotes{};
    std::optional<bool> mandatory{};
    std::optional<std::string> sha256{}; ///< of the installer, in hexadecimal; carried along, nothing verifies it

    bool operator==(const AppUpdateInfo&) const = default;

    /// From a JSON object (UTF-8, with or without a byte order mark) whose keys are the names above. None unless all
    /// of it is in order: a key that is not optional missing, a value of another type or a key given twice spoils
    /// it. Unknown keys are ignored, however often they come, and a null counts as absent.
    static std::optional<AppUpdateInfo> fromJson(const std::string& json);

    std::string toJson() const;
};

} // namespace kestrovan
