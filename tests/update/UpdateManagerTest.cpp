#include "l10n/Vendor.h"
#include "update/UpdateTest.h"

namespace kestrovan::test {
namespace {

using UpdateManagerTest = UpdateTest;

const std::string defaultServer = std::string("https://") + vendor::updateHost + "/version.json";

} // namespace

TEST_F(UpdateManagerTest, SettingsSurviveARestartAsTheyWereTyped)
{
    EXPECT_EQ(storedServer(), defaultServer);
    manager->setAutoCheck(false);
    manager->setServerURL(" not an address ");
    start();
    EXPECT_FALSE(manager->isAutoCheckEnabled);
    EXPECT_EQ(manager->serverUpdateURLString.get(), " not an address ");

    laptop.settings().setValue(autoCheckKey, std::string("no"));
    start();
    EXPECT_TRUE(manager->isAutoCheckEnabled) << "not a Boolean";
}

TEST_F(UpdateManagerTest, AnUnsafeStoredServerIsReplacedAtTheStart)
{
    const std::string raw = "https://raw.githubusercontent.com/someone/something/main/version.json";
    for (const SettingsValue& stored :
         {SettingsValue("http://host.example"), SettingsValue(raw), SettingsValue("http://"), SettingsValue(7.0)}) {
        startWithServer(stored);
        EXPECT_EQ(manager->serverUpdateURLString.get(), defaultServer);
        EXPECT_EQ(storedServer(), defaultServer);
    }
    for (const std::string kept :
         {"HTTP://host.example", " http://host.example", "", "https://host.example/x?http://"}) {
        startWithServer(kept);
        EXPECT_EQ(manager->serverUpdateURLString.get(), kept);
        EXPECT_EQ(storedServer(), kept);
    }
}

TEST_F(UpdateManagerTest, VersionsAreComparedAsNumbers)
{
    const auto isNewer = [](const char* a, const char* b) { return UpdateManager::isVersionNewer(a, b); };
    const std::vector<std::pair<const char*, const char*>> pairs{
        {"1.1.100", "1.1.83"},
        {"1.2", "1.1.83"},
        {"2", "1.999"},
        {"1.1.83.1", "1.1.83"},
        {"1.10", "1.9"},
        {"1.100000000000000000000000000000001", "1.99999999999999999999999999999999"},
        {"1.2-beta", "1.2"},
        {"1.2b", "1.2a"},
        {"é", "z"},
        {"1.a", "1.1"},
        {"1", ""},
        {"1.002", "1.1"}};
    for (const auto& [newer, older] : pairs) {
        EXPECT_TRUE(isNewer(newer, older)) << newer;
        EXPECT_FALSE(isNewer(older, newer)) << older;
    }
    for (const auto& [a, b] : {std::pair("1.1.83", "1.1.83"), {"1.01", "1.1"}, {"", ""}, {"0", "000"}}) {
        EXPECT_FALSE(isNewer(a, b));
        EXPECT_FALSE(isNewer(b, a));
    }
}

} // namespace kestrovan::test
