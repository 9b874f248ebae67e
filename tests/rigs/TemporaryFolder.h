#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace kestrovan {

/// A new empty folder that goes with its object.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        auto name = (std::filesystem::temp_directory_path() / "kestrovan-test-XXXXXX").string();
        if (const char* made = mkdtemp(name.data()))
            path_ = made;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace kestrovan
