#pragma once

#include <filesystem>
#include <optional>

namespace kestrovan {

/// The lid as the kernel's ACPI button driver tells of it (<root>/acpi/button/lid/*/state); closed if one of several
/// is. None where there is no such file or it says neither. A few microseconds; any thread.
std::optional<bool> readProcLid(const std::filesystem::path& root);

} // namespace kestrovan
