#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace kestrovan {

/// The user's files, as far as the guard touches them. May be called from any thread; paths are absolute.
/// Failures come back as the error's description; nothing throws.
class Files {
public:
    virtual ~Files() = default;

    virtual bool exists(const std::filesystem::path& path) const = 0;

    /// Creates the folder and its missing parents, for this user alone. Harmless if it is there.
    virtual void createFolders(const std::filesystem::path& folder) = 0;

    /// Writes a file readable by this user alone, wholly or not at all, replacing an existing one.
    /// Returns the error's description on failure.
    virtual std::optional<std::string> writeAtomically(const std::filesystem::path& path, const std::string& bytes) = 0;

    /// Copies a file in the same way. Anything but a regular file of at most `limit` bytes is an error.
    virtual std::optional<std::string> copy(const std::filesystem::path& from, const std::filesystem::path& to,
                                            std::uint64_t limit) = 0;

    /// Removes a file; harmless if it cannot be done.
    virtual void remove(const std::filesystem::path& path) = 0;

    /// The user's pictures folder (XDG user directories), none if the user has none.
    virtual std::optional<std::filesystem::path> picturesFolder() const = 0;

    /// The user's data folder (XDG base directories), under which programs keep their own files; none without a home.
    virtual std::optional<std::filesystem::path> dataFolder() const = 0;
};

} // namespace kestrovan
