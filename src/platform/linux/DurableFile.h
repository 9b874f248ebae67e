#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Files for this user alone that are written wholly or not at all. Any thread; nothing throws.
namespace kestrovan::durableFile {

/// Creates the folder and its missing parents, each with mode 0700. False if the folder is not there afterwards.
bool createFolders(const std::filesystem::path& folder);

/// Puts a new file of mode 0600 in place of `path` (replacing a link, not what it leads to), and returns when it
/// would outlast a power cut. The error's description on failure; then what was there is still there.
std::optional<std::string> write(const std::filesystem::path& path, std::string_view bytes);

/// The same for what the file at `from` holds. Never waits for a pipe or a device: what is not a regular file, or holds
/// more than `limit` bytes, is an error.
std::optional<std::string> copy(const std::filesystem::path& from, const std::filesystem::path& to,
                                std::uint64_t limit);

} // namespace kestrovan::durableFile
