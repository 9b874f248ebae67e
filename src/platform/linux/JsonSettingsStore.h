#pragma once

#include "platform/SettingsStore.h"
#include "platform/linux/SettingsDocument.h"
#include "platform/linux/SettingsWriter.h"

#include <filesystem>
#include <optional>

namespace kestrovan {

class Diagnostics;

/// The settings in one JSON file (its form: SettingsDocument), of mode 0600 in a folder of mode 0700.
///
/// The file is read once, when the store is made. One that cannot be read as settings (empty, torn, unreadable, no
/// file at all, ...) is set aside under its name with ".damaged-" and the time (UTC) added, reported in one line, and
/// every setting has its default. What this program does not know in the file survives.
///
/// Each change is handed to a SettingsWriter: written whole and durably soon after, without the caller waiting, the
/// last of them at the latest when the store is destroyed. Values that cannot be written stay in force for this run.
/// A file that is a link keeps being one. Changes that others make to the file meanwhile are overwritten.
class JsonSettingsStore final : public SettingsStore {
public:
    /// `diagnostics` is used from the writer's thread too.
    JsonSettingsStore(std::filesystem::path path, Diagnostics& diagnostics);

    std::optional<SettingsValue> value(const std::string& key) const override;
    void setValue(const std::string& key, SettingsValue value) override;
    void removeValue(const std::string& key) override;

    /// kestrovan/settings.json in the user's configuration folder (XDG base directories); none without a home.
    static std::optional<std::filesystem::path> defaultPath();

private:
    SettingsDocument document_;
    SettingsWriter writer_;
};

} // namespace kestrovan
