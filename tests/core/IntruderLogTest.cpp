#include "GuardTest.h"
#include "core/SettingsKeys.h"

#include <nlohmann/json.hpp>
#include <regex>

namespace kestrovan::test {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class IntruderLogTest : public GuardTest {
protected:
    void log(const std::string& path, const std::string& reason)
    {
        laptop.files().contents[path] = "a picture";
        guard().addIntruderRecord(path, reason);
    }
    void restartWith(std::string json)
    {
        laptop.settings().setValue(settingsKey::intruderRecords, SettingsData{std::move(json)});
        start();
    }
    std::string stored() { return laptop.settings().read<SettingsData>(settingsKey::intruderRecords)->bytes; }
    std::vector<std::string> paths()
    {
        std::vector<std::string> found;
        for (const auto& record : guard().intruderRecords.get())
            found.push_back(record.imagePath);
        return found;
    }
};

std::string record(const std::string& path, const std::string& timestamp = "1.5")
{
    return R"({"triggerReason":"why","imagePath":")" + path + R"(","timestamp":)" + timestamp +
           R"(,"id":"0a1b2c3d-0000-4000-8000-0123456789ab"})";
}

TEST_F(IntruderLogTest, TheNewestIsFirstInTheListAndInTheStoreAndARestartBringsTheSameLog)
{
    log("/p/1.jpg", "Lid Closed!");
    laptop.advance(1234ms);
    log("/p/2.jpg", "\"Pengisi daya\" – ⚡");
    EXPECT_THAT(paths(), ElementsAre("/p/2.jpg", "/p/1.jpg"));

    const auto json = nlohmann::json::parse(stored());
    ASSERT_EQ(json.size(), 2U);
    EXPECT_EQ(json[0].size(), 4U);
    EXPECT_EQ(json[0]["imagePath"], "/p/2.jpg");
    EXPECT_EQ(json[1]["triggerReason"], "Lid Closed!");
    EXPECT_NEAR(json[0]["timestamp"].get<double>() - json[1]["timestamp"].get<double>(), 1.234, 1e-6);
    EXPECT_EQ(stored().find("\": "), std::string::npos) << "white space";
    const std::regex uuid("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    EXPECT_TRUE(std::regex_match(json[0]["id"].get<std::string>(), uuid)) << json[0]["id"];
    EXPECT_NE(json[0]["id"], json[1]["id"]);

    const auto before = guard().intruderRecords.get();
    start();
    EXPECT_EQ(guard().intruderRecords.get(), before);
}

TEST_F(IntruderLogTest, MomentsSurviveTheStoreToTheMicrosecond)
{
    using namespace std::chrono;
    const auto reference = sys_days(2001y / January / 1);
    std::vector<IntruderRecord> records;
    for (const std::int64_t offset : {0L, 1L, -1L, 814'406'400'123'457L, 999'999'999'999'999L, -31'536'000'000'001L})
        records.push_back({makeRecordId(), reference + microseconds(offset), "/p", "why"});
    const auto json = encodeIntruderRecords(records);
    ASSERT_TRUE(json);
    EXPECT_EQ(decodeIntruderRecords(*json), records);
    EXPECT_EQ(nlohmann::json::parse(*json)[0]["timestamp"].get<double>(), 0.0);
    EXPECT_LT(nlohmann::json::parse(*json)[2]["timestamp"].get<double>(), 0.0);
    EXPECT_TRUE(decodeIntruderRecords("[" + record("/p", "1e300") + "]")) << "a number like any other";
}

TEST_F(IntruderLogTest, TheWholeArrayIsReadOrNoneOfItAndTheStoreIsLeftAlone)
{
    laptop.files().contents["/p/1.jpg"] = "a picture";
    const auto good = record("/p/1.jpg");
    const auto without = [&](const std::string& part, const std::string& instead) {
        auto bad = good;
        return bad.replace(bad.find(part), part.size(), instead);
    };
    for (const auto& bad :
         {without(R"("triggerReason":"why",)", ""), without("\"id\"", "\"ID\""), without("1.5", "\"1.5\""),
          without("1.5", "null"), without("1.5", "true"), without("\"why\"", "7"), without("0a1b2c3d-", "0a1b2c3d"),
          without("0a1b2c3d", "0a1b2c3g"), std::string("7"), good + "]x["}) {
        const auto json = "[" + good + "," + bad + "]";
        restartWith(json);
        EXPECT_THAT(paths(), IsEmpty()) << json;
        EXPECT_EQ(stored(), json);
    }
    for (const std::string json : {"", "{}", "null", "[", "\xFF"}) {
        restartWith(json);
        EXPECT_THAT(paths(), IsEmpty()) << json;
    }
}

TEST_F(IntruderLogTest, ForeignWritersAreUnderstoodAndLostPhotosDroppedAtTheNextSave)
{
    laptop.files().contents["/p/1.jpg"] = laptop.files().contents["/p/3.jpg"] = "a picture";
    const auto json =
        "[ " + record("\\/p\\/1.jpg") + ",\n" + record("/p/2.jpg") + "," + record("/p/3.jpg", "-7") + " ]";
    restartWith(json);
    EXPECT_THAT(paths(), ElementsAre("/p/1.jpg", "/p/3.jpg"));
    EXPECT_EQ(guard().intruderRecords->front().id, "0A1B2C3D-0000-4000-8000-0123456789AB");
    EXPECT_EQ(stored(), json) << "reading writes nothing";

    log("/p/4.jpg", "why");
    start();
    EXPECT_THAT(paths(), ElementsAre("/p/4.jpg", "/p/1.jpg", "/p/3.jpg"));
    EXPECT_EQ(stored().find("/p/2.jpg"), std::string::npos);
}

TEST_F(IntruderLogTest, ClearingStoresAnEmptyArrayAndLeavesThePhotosAndATextThatIsNoTextStoresNothing)
{
    log("/p/1.jpg", "why");
    const auto before = stored();
    log("/p/\xFF.jpg", "why");
    EXPECT_EQ(stored(), before);

    guard().clearIntruderRecords();
    EXPECT_EQ(stored(), "[]");
    EXPECT_TRUE(laptop.files().exists("/p/1.jpg"));

    guard().openIntruderFolder();
    EXPECT_THAT(laptop.desktop().revealedFolders, ElementsAre("/home/owner/Pictures/Kestrovan_Intruders"));
}

} // namespace
} // namespace kestrovan::test
