#pragma once

#include "platform/Files.h"

namespace kestrovan {

/// The user's files on a POSIX system: folders of mode 0700, files of mode 0600 that outlast a power cut once they
/// are written.
class PosixFiles final : public Files {
public:
    bool exists(const std::filesystem::path& path) const override;
    void createFolders(const std::filesystem::path& folder) override;
    std::optional<std::string> writeAtomically(const std::filesystem::path& path, const std::string& bytes) override;
    std::optional<std::string> copy(const std::filesystem::path& from, const std::filesystem::path& to,
                                    std::uint64_t limit) override;
    void remove(const std::filesystem::path& path) override;
    std::optional<std::filesystem::path> picturesFolder() const override;
    std::optional<std::filesystem::path> dataFolder() const override;
};

} // namespace kestrovan
