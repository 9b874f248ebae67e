#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace kestrovan {

class Diagnostics;

/// Puts the newest content of the settings file on the disk, on a thread of its own, so that no caller ever waits for
/// a disk. Content that is newer than what waits to be written takes its place; the order is always kept.
///
/// A failed write is reported in one line, and not again until a write has succeeded. It is tried again with the next
/// content and at the end. Destroying the writer waits until the newest content is written, up to five seconds.
class SettingsWriter {
public:
    SettingsWriter(std::filesystem::path path, Diagnostics& diagnostics);
    SettingsWriter(const SettingsWriter&) = delete;
    SettingsWriter& operator=(const SettingsWriter&) = delete;
    ~SettingsWriter();

    void write(std::string content);

    /// Where a write to `path` goes: a link is followed, so that a settings file that is kept elsewhere stays there.
    static std::filesystem::path target(const std::filesystem::path& path);

private:
    class Core;

    std::shared_ptr<Core> core_;
};

} // namespace kestrovan
