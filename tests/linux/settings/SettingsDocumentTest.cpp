#include "platform/linux/SettingsDocument.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace kestrovan {
namespace {

std::string allBytes()
{
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    return bytes;
}

std::optional<SettingsValue> afterRoundTrip(const SettingsValue& value)
{
    SettingsDocument document;
    document.set("key", value);
    const auto read = parseSettings(document.serialize());
    return read ? read->value("key") : std::nullopt;
}

TEST(SettingsDocument, EveryTypeOfValueSurvives)
{
    const std::string bytes = allBytes();
    for (const SettingsValue& value :
         {SettingsValue(true), SettingsValue(false), SettingsValue(1.0), SettingsValue(0.0), SettingsValue(-0.1),
          SettingsValue(1e300), SettingsValue(std::string()), SettingsValue(std::string("\"\\/\n\0x", 6)),
          SettingsValue(std::string("Peringatan! \u00e9\U0001F6A8")), SettingsValue(std::string("true")),
          SettingsValue(std::string("/home/\xe9t\xff/photo")), // a path in an old encoding
          SettingsValue(SettingsData{}), SettingsValue(SettingsData{bytes}),
          SettingsValue(SettingsData{bytes.substr(1)}), SettingsValue(SettingsData{bytes.substr(2)})})
        EXPECT_EQ(afterRoundTrip(value), value) << "alternative " << value.index();
    EXPECT_EQ(afterRoundTrip(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(afterRoundTrip(std::numeric_limits<double>::infinity()), std::nullopt);
}

TEST(SettingsDocument, ReadsWhatOthersMayWrite)
{
    const auto document =
        parseSettings("\xEF\xBB\xBF { \"a\": 3, \"b\": \"\\u00e9\\/\", \"c\": {\"base64\": \"aGk=\"} }");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->value("a"), SettingsValue(3.0));
    EXPECT_EQ(document->value("b"), SettingsValue(std::string("\u00e9/")));
    EXPECT_EQ(document->value("c"), SettingsValue(SettingsData{"hi"}));
    EXPECT_EQ(document->value("d"), std::nullopt);
}

TEST(SettingsDocument, WhatItDoesNotKnowHasNoValueButSurvives)
{
    auto document = parseSettings(R"({"null": null, "list": [1, {"x": []}], "object": {"base64": "aGk=", "more": 1},
        "broken": {"base64": "aGk"}, "stray": {"base64": "aGl="}, "typed": {"base64": 7}, "other": "kept"})");
    ASSERT_TRUE(document);
    for (const char* key : {"null", "list", "object", "broken", "stray", "typed"})
        EXPECT_EQ(document->value(key), std::nullopt) << key;
    EXPECT_TRUE(document->set("new", true));
    EXPECT_TRUE(document->set("null", 1.0));
    EXPECT_TRUE(document->remove("other"));
    EXPECT_FALSE(document->remove("other"));
    const auto written = document->serialize();
    for (const char* kept : {"\"list\"", "\"x\": []", "\"more\": 1", "\"aGk\"", "\"aGl=\"", "\"typed\""})
        EXPECT_NE(written.find(kept), std::string::npos) << kept;
    EXPECT_EQ(written.find("kept"), std::string::npos);
}

TEST(SettingsDocument, RefusesWhatIsNoDocument)
{
    const std::string deep(1'000'000, '[');
    for (const std::string& bytes :
         {std::string(), std::string("   "), std::string("{"), std::string(R"({"a": tru)"), std::string("[]"),
          std::string("null"), std::string("7"), std::string("\"text\""), std::string("{\"a\": 1} x"),
          std::string("{\"a\": \"\xff\"}"), std::string("{\"a\": \"\xed\xa0\x80\"}"), std::string("{\"a\": 1e999}"),
          std::string("{'a': 1}"), std::string(4096, '\0'), "{\"a\": " + deep, deep + std::string(1'000'000, ']'),
          "{\"a\": " + deep + std::string(1'000'000, ']') + "}"})
        EXPECT_FALSE(parseSettings(bytes)) << bytes.substr(0, 40);
    EXPECT_TRUE(parseSettings("{\"a\": \"" + deep + "\\\"{\"}")) << "brackets in a text nest nothing";
}

} // namespace
} // namespace kestrovan
