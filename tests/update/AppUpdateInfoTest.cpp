#include "update/AppUpdateInfo.h"

#include <gtest/gtest.h>

namespace kestrovan::test {
namespace {

constexpr const char* required = R"("latestVersion":"1.2","downloadUrl":"https://host.example/x","releaseNotes":"new")";

std::optional<AppUpdateInfo> decode(const std::string& more)
{
    return AppUpdateInfo::fromJson("{" + std::string(required) + more + "}");
}

} // namespace

TEST(AppUpdateInfo, OptionalKeysMayBeMissingOrNullAndUnknownOnesAnything)
{
    const auto plain = decode("");
    ASSERT_TRUE(plain);
    EXPECT_EQ(decode(R"(,"buildNumber":null,"releaseDate":null,"mandatory":null,"sha256":null)"), plain);
    EXPECT_EQ(decode(R"(,"extra":[1,{"latestVersion":7}],"Mandatory":3,"extra":2)"), plain);
    EXPECT_EQ(AppUpdateInfo::fromJson("\xEF\xBB\xBF {" + std::string(required) + "}\n"), plain);
}

TEST(AppUpdateInfo, BuildNumbersAreWholeAndFit)
{
    const auto build = [](const std::string& number) {
        const auto info = decode(R"(,"buildNumber":)" + number);
        return info ? info->buildNumber : std::nullopt;
    };
    EXPECT_EQ(build("9223372036854775807"), INT64_MAX);
    EXPECT_EQ(build("-9223372036854775808"), INT64_MIN);
    EXPECT_EQ(build("8.4e1"), 84);
    for (const auto* number : {"9223372036854775808", "-9223372036854775809", "1.5", "1e19", "1e999", "\"83\"", "true"})
        EXPECT_EQ(build(number), std::nullopt) << number;
}

TEST(AppUpdateInfo, AnythingOutOfOrderSpoilsIt)
{
    for (const auto* more :
         {R"(,"mandatory":1)", R"(,"mandatory":"true")", R"(,"sha256":7)", R"(,"releaseDate":{})",
          R"(,"latestVersion":"9.9")", R"(,"sha256":null,"sha256":null)", R"(,"extra":"\ud800")", ",", "}{"})
        EXPECT_FALSE(decode(more)) << more;
    for (const std::string json :
         {"", "null", "[]", "\"text\"", "{}", R"({"latestVersion":"1","downloadUrl":"x"})",
          R"({"latestVersion":null,"downloadUrl":"x","releaseNotes":"y"})",
          R"({"latestVersion":1.2,"downloadUrl":"x","releaseNotes":"y"})",
          "{\"latestVersion\":\"\xFF\",\"downloadUrl\":\"x\",\"releaseNotes\":\"y\"}",
          "{\"latestVersion\":\"\xED\xA0\x80\",\"downloadUrl\":\"x\",\"releaseNotes\":\"y\"}", "\xFF\xFE{\0}\0"})
        EXPECT_FALSE(AppUpdateInfo::fromJson(json)) << json;
}

TEST(AppUpdateInfo, DeepNestingIsReadOrRefusedButHarmless)
{
    const std::size_t depth = 30'000;
    EXPECT_TRUE(decode(",\"extra\":" + std::string(depth, '[') + std::string(depth, ']')));
    EXPECT_FALSE(AppUpdateInfo::fromJson(std::string(65'536, '[')));
    std::string objects;
    for (std::size_t i = 0; i < 10'000; ++i)
        objects += "{\"a\":";
    EXPECT_FALSE(AppUpdateInfo::fromJson(objects));
}

} // namespace kestrovan::test
