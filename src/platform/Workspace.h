#pragma once

#include <filesystem>
#include <string>

namespace kestrovan {

/// The desktop around the program. Main thread; every call returns at once.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// The system's alert sound, once.
    virtual void beep() = 0;

    /// Opens an address with the user's default program for it.
    virtual void openAddress(const std::string& address) = 0;

    /// Shows a folder in the user's file manager.
    virtual void revealFolder(const std::filesystem::path& folder) = 0;

    /// Brings the program to the front, whatever is in front now.
    virtual void activate() = 0;
};

} // namespace kestrovan
