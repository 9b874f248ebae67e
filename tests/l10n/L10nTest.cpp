#include "l10n/L10n.h"

#include <gtest/gtest.h>

namespace kestrovan {
namespace {

constexpr int textCount = 94;

TEST(L10n, EveryTextExistsInBothLanguages)
{
    for (int name = 0; name < textCount; ++name) {
        const L10nKey key(static_cast<L10nKey::Name>(name));
        EXPECT_FALSE(L10n::text(key, AppLanguage::english).empty()) << name;
        EXPECT_FALSE(L10n::text(key, AppLanguage::indonesian).empty()) << name;
    }
    EXPECT_EQ(L10nKey::menuQuit, textCount - 1);
}

TEST(AppLanguage, OnlyTheExactRawValuesNameALanguage)
{
    EXPECT_EQ(languageFromRawValue("en"), AppLanguage::english);
    EXPECT_EQ(languageFromRawValue("id"), AppLanguage::indonesian);
    for (const auto* raw : {"", "EN", "fr", "en "})
        EXPECT_EQ(languageFromRawValue(raw), std::nullopt) << raw;
}

} // namespace
} // namespace kestrovan
