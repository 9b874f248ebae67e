#pragma once

#include "platform/Diagnostics.h"
#include "platform/Files.h"
#include "platform/SettingsStore.h"

#include <map>
#include <string>
#include <vector>

namespace kestrovan {

/// Settings that live as long as this object: hand it to the next run to restart the program.
class SimulatedSettings final : public SettingsStore {
public:
    std::optional<SettingsValue> value(const std::string& key) const override
    {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void setValue(const std::string& key, SettingsValue value) override { values[key] = std::move(value); }
    void removeValue(const std::string& key) override { values.erase(key); }

    std::map<std::string, SettingsValue> values;
};

/// A disk in memory.
class SimulatedFiles final : public Files {
public:
    bool exists(const std::filesystem::path& path) const override { return contents.contains(path); }
    void createFolders(const std::filesystem::path& /*folder*/) override {}
    std::optional<std::string> writeAtomically(const std::filesystem::path& path, const std::string& bytes) override
    {
        if (isFull)
            return "No space left on device";
        contents[path] = bytes;
        return std::nullopt;
    }
    std::optional<std::filesystem::path> picturesFolder() const override
    {
        return hasPictures ? std::optional<std::filesystem::path>("/home/owner/Pictures") : std::nullopt;
    }
    std::optional<std::string> copy(const std::filesystem::path& from, const std::filesystem::path& to,
                                    std::uint64_t limit) override
    {
        if (!contents.contains(from))
            return "No such file or directory";
        return contents[from].size() > limit ? "File too large" : writeAtomically(to, contents[from]);
    }
    void remove(const std::filesystem::path& path) override { contents.erase(path); }
    std::optional<std::filesystem::path> dataFolder() const override
    {
        return hasHome ? std::optional<std::filesystem::path>("/home/owner/.local/share") : std::nullopt;
    }

    std::map<std::filesystem::path, std::string> contents;
    bool isFull = false;
    bool hasHome = true;
    bool hasPictures = true;
};

/// Keeps what the program said of its troubles.
class SimulatedDiagnostics final : public Diagnostics {
public:
    void line(std::string_view text) override { lines.emplace_back(text); }

    std::vector<std::string> lines;
};

} // namespace kestrovan
