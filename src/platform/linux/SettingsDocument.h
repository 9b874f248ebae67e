#pragma once

#include "platform/SettingsStore.h"

#include <cstddef>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace kestrovan {

/// The content of a settings file: one JSON object (RFC 8259), a member for each key. A bool is true or false, a
/// number a number, a text a string, SettingsData the object {"base64": "..."} (RFC 4648, section 4), and a text that
/// is not UTF-8 (a path may be such) the object {"textBase64": "..."}. Members of any other shape are carried along
/// untouched and have no value here, as has a number that JSON cannot express once it has been written.
///
/// One thread at a time; nothing throws.
class SettingsDocument {
public:
    /// Larger files are not read, and larger content is not written: some 60,000 photos in the intruder log.
    static constexpr std::size_t sizeLimit = 16U << 20U;

    SettingsDocument();
    SettingsDocument(SettingsDocument&& other) noexcept;
    SettingsDocument& operator=(SettingsDocument&& other) noexcept;
    ~SettingsDocument();

    std::optional<SettingsValue> value(const std::string& key) const;
    /// False if that is the value already.
    bool set(const std::string& key, const SettingsValue& value);
    /// False if there is none.
    bool remove(const std::string& key);

    std::string serialize() const;

    /// None if the bytes are not such a document, are not UTF-8, or nest deeper than 64 levels.
    static std::optional<SettingsDocument> parse(std::string_view bytes);

private:
    std::unique_ptr<nlohmann::json> members_;
};

/// What the settings store makes of a file's bytes; none if the file is damaged.
inline std::optional<SettingsDocument> parseSettings(std::string_view bytes)
{
    return SettingsDocument::parse(bytes);
}

} // namespace kestrovan
