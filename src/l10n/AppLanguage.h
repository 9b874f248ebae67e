#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace kestrovan {

/// The languages of the interface, in the order of the language picker.
enum class AppLanguage { indonesian, english };

inline constexpr std::array allLanguages{AppLanguage::indonesian, AppLanguage::english};

/// What the settings store: "id" or "en".
constexpr std::string_view rawValue(AppLanguage language)
{
    return language == AppLanguage::english ? "en" : "id";
}

/// Only the two exact raw values name a language.
constexpr std::optional<AppLanguage> languageFromRawValue(std::string_view raw)
{
    for (const auto language : allLanguages)
        if (raw == rawValue(language))
            return language;
    return std::nullopt;
}

/// The labels of the pickers, the same whatever language is current.
constexpr std::string_view displayName(AppLanguage language)
{
    return language == AppLanguage::english ? "English (EN)" : "Bahasa Indonesia (ID)";
}
constexpr std::string_view shortName(AppLanguage language)
{
    return language == AppLanguage::english ? "EN" : "ID";
}

} // namespace kestrovan
