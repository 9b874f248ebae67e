#pragma once

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace kestrovan::rigs {

inline std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The permissions; 0 if it is not there.
inline mode_t modeOf(const std::filesystem::path& file)
{
    struct stat status {};
    return lstat(file.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

/// As a full disk has it: as long as this lives, no file grows beyond `size` bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t size)
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit full{size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

} // namespace kestrovan::rigs
