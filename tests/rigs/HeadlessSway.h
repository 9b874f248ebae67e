#pragma once

#include "rigs/Program.h"

#include <filesystem>
#include <memory>
#include <string>

namespace kestrovan::rigs {

/// A Wayland compositor without hardware, which WAYLAND_DISPLAY names from then on. It refuses to run as root, and
/// runs as nobody then.
class HeadlessSway {
public:
    /// `configuration` is sway's, "FOLDER" in it stands for folder(). Its output is HEADLESS-1.
    explicit HeadlessSway(std::string configuration);
    /// One whose outputs, WL-1 and so on, are windows on another: such outputs can be unplugged.
    HeadlessSway(std::string configuration, int outputs, const HeadlessSway& host);
    HeadlessSway(const HeadlessSway&) = delete;
    HeadlessSway& operator=(const HeadlessSway&) = delete;
    ~HeadlessSway();

    /// False if the compositor did not start.
    bool isReady() const { return isReady_; }
    const std::filesystem::path& folder() const { return folder_; } ///< where its bindings may leave files
    void command(const std::string& text) const;
    void unplug(const std::string& output) const; ///< if there is a host
    void plugOneMore() const { command("create_output"); }

private:
    void start(std::string configuration, const std::vector<std::string>& backend);
    bool waitForSockets() const;
    std::string in(const char* name) const { return (folder_ / name).string(); }

    const HeadlessSway* host_ = nullptr;
    std::filesystem::path folder_;
    std::unique_ptr<Program> compositor_;
    bool isReady_ = false;
};

} // namespace kestrovan::rigs
