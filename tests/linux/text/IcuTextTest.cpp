#include "platform/linux/IcuText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace kestrovan {
namespace {

const IcuText text;
constexpr const char* family = "👨‍👩‍👧‍👦";

TEST(IcuText, ACharacterIsWhatAPersonSees)
{
    EXPECT_EQ(text.countCharacters(""), 0U);
    EXPECT_EQ(text.countCharacters("abc"), 3U);
    for (const auto* one : {family, "e\xCC\x81", "🇮🇩", "👍🏽", "\r\n"})
        EXPECT_EQ(text.countCharacters(one), 1U) << one;
}

TEST(IcuText, TextsAreCutBetweenCharacters)
{
    const auto mixed = std::string("a") + family + "b";
    EXPECT_EQ(text.prefix(mixed, 2), std::string("a") + family);
    EXPECT_EQ(text.prefix(mixed, 99), mixed);
    EXPECT_EQ(text.prefix(mixed, 0), "");
    EXPECT_EQ(text.withoutLastCharacter(std::string("a") + family), "a");
    EXPECT_EQ(text.withoutLastCharacter(""), "");
}

TEST(IcuText, WhiteSpaceOfAnyScriptIsTrimmedAtTheEndsOnly)
{
    EXPECT_EQ(text.trimmed("\u3000\u00a0 hi there \u2028\n"), "hi there");
    EXPECT_EQ(text.trimmed(" \t\n"), "");
    EXPECT_EQ(text.trimmed("\u200bx"), "\u200bx") << "a zero-width space is not white space";
}

TEST(IcuText, NumeralsOfAnyScriptCount)
{
    for (const auto* numeral : {"5", "٥", "一", "½", "²", "Ⅷ", "５"})
        EXPECT_EQ(text.leadingNumeric(numeral), numeral);
    for (const auto* other : {"", "a", " 5", "é"})
        EXPECT_EQ(text.leadingNumeric(other), "") << other;
    EXPECT_EQ(text.leadingNumeric("12"), "1");
}

TEST(IcuText, EveryMalformedByteIsACharacterOfItsOwn)
{
    EXPECT_EQ(text.countCharacters("\xff\xfe"), 2U);
    EXPECT_EQ(text.countCharacters("a\xe2\x82"), 3U) << "a character cut short";
    EXPECT_EQ(text.countCharacters("\xed\xa0\x80"), 3U) << "a surrogate";
    EXPECT_EQ(text.countCharacters("\xff\u0301x"), 3U) << "no accent joins a broken byte";
    EXPECT_EQ(text.countCharacters("e\u0301\x80"
                                   "e\u0301"),
              3U)
        << "the whole characters around it stay whole";
    EXPECT_EQ(text.prefix("ab\xff\xfe", 3), "ab\xff");
    EXPECT_EQ(text.withoutLastCharacter("ab\xe2\x82"), "ab\xe2");
    EXPECT_EQ(text.trimmed(" \xff\xc3( "), "\xff\xc3(");
    EXPECT_EQ(text.leadingNumeric("\xff\x31"), "");
}

TEST(IcuText, HugeHostileTextsTakeLinearTime)
{
    std::string alternating;
    for (int i = 0; i < 200'000; ++i)
        alternating += "a\xff";
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(text.countCharacters(alternating), 400'000U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

} // namespace
} // namespace kestrovan
