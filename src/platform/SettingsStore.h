#pragma once

#include <optional>
#include <string>
#include <variant>

namespace kestrovan {

/// Bytes that are not text to the settings store.
struct SettingsData {
    std::string bytes;
    bool operator==(const SettingsData&) const = default;
};

using SettingsValue = std::variant<bool, double, std::string, SettingsData>;

/// The user's settings: typed values under text keys, kept between runs. Main thread.
///
/// Nothing here fails visibly: what cannot be read is absent, and what cannot be written is still what value()
/// answers for the rest of this run.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    virtual std::optional<SettingsValue> value(const std::string& key) const = 0;
    virtual void setValue(const std::string& key, SettingsValue value) = 0;
    virtual void removeValue(const std::string& key) = 0;

    /// The value under `key` if there is one and it has exactly the type T.
    template <class T>
    std::optional<T> read(const std::string& key) const
    {
        const auto stored = value(key);
        const T* typed = stored ? std::get_if<T>(&*stored) : nullptr;
        return typed ? std::optional<T>(*typed) : std::nullopt;
    }
};

} // namespace kestrovan
