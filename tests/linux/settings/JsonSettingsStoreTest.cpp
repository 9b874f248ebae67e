#include "platform/linux/JsonSettingsStore.h"

#include "rigs/CollectedLines.h"
#include "rigs/Deadline.h"
#include "rigs/Disk.h"
#include "rigs/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using rigs::contentOf;
using rigs::FullDisk;
using rigs::modeOf;
using rigs::waitUntil;
using std::filesystem::path;

class JsonSettingsStoreTest : public testing::Test {
protected:
    JsonSettingsStore open() { return JsonSettingsStore(file_, lines_); }

    void writeFile(const std::string& content) const
    {
        std::filesystem::create_directories(file_.parent_path());
        std::ofstream(file_) << content;
    }

    path setAside() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(file_.parent_path()))
            if (entry.path().filename().string().starts_with("settings.json.damaged-"))
                return entry.path();
        return {};
    }

    // That the store is as a new user's is, and that it can be written.
    void expectUsableDefaults()
    {
        {
            auto store = open();
            EXPECT_EQ(store.value("pin"), std::nullopt);
            store.setValue("pin", std::string("1234"));
        }
        EXPECT_EQ(open().read<std::string>("pin"), "1234");
    }

    TemporaryFolder folder_;
    path file_ = folder_.path() / "config/kestrovan/settings.json";
    rigs::CollectedLines lines_;
};

TEST_F(JsonSettingsStoreTest, AFirstRunStartsSilentlyAndKeepsWhatIsSetForThisUserAlone)
{
    {
        auto store = open();
        EXPECT_EQ(store.value("lid"), std::nullopt);
        store.setValue("lid", false);
        store.setValue("delay", 2.0);
        store.setValue("language", std::string("id"));
        store.setValue("log", SettingsData{"[]"});
        store.setValue("gone", true);
        store.removeValue("gone");
    }
    EXPECT_EQ(modeOf(file_), 0600U);
    EXPECT_EQ(modeOf(file_.parent_path()), 0700U);
    auto store = open();
    EXPECT_EQ(store.read<bool>("lid"), false);
    EXPECT_EQ(store.read<double>("delay"), 2.0);
    EXPECT_EQ(store.read<std::string>("language"), "id");
    EXPECT_EQ(store.read<SettingsData>("log"), SettingsData{"[]"});
    EXPECT_EQ(store.value("gone"), std::nullopt);
    EXPECT_EQ(store.read<std::string>("lid"), std::nullopt);
    EXPECT_TRUE(lines_.all().empty());
}

TEST_F(JsonSettingsStoreTest, AChangeIsOnTheDiskWhileTheProgramRuns)
{
    auto store = open();
    for (int i = 0; i <= 300; ++i)
        store.setValue("count", static_cast<double>(i));
    EXPECT_TRUE(waitUntil([&] { return contentOf(file_).find("300.0") != std::string::npos; }));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file_.parent_path()), {}), 1);
}

TEST_F(JsonSettingsStoreTest, ADamagedFileIsSetAsideAndEverySettingHasItsDefault)
{
    for (const std::string& content : {std::string(), std::string("{\"pin\": \"12"), std::string("[1]"),
                                       std::string("{\"pin\": \"\xff\"}"), std::string(100, '\0')}) {
        std::filesystem::remove_all(file_.parent_path());
        writeFile(content);
        const auto before = lines_.all().size();
        expectUsableDefaults();
        EXPECT_EQ(lines_.all().size(), before + 1) << content;
        EXPECT_EQ(contentOf(setAside()), content);
    }
}

TEST_F(JsonSettingsStoreTest, WhatIsNoFileAtAllIsSetAsideToo)
{
    const auto expectSetAside = [&](const char* what) {
        expectUsableDefaults();
        EXPECT_EQ(lines_.count(what), 1) << what;
        EXPECT_FALSE(setAside().empty()) << what;
        std::filesystem::remove_all(file_.parent_path());
        std::filesystem::create_directories(file_.parent_path());
    };
    std::filesystem::create_directories(file_ / "inside");
    expectSetAside("not a file");
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0); // must not hold up the start
    expectUsableDefaults();
    EXPECT_EQ(lines_.count("not a file"), 2);
    std::filesystem::remove_all(file_);
    std::filesystem::create_symlink("settings.json", file_);
    expectSetAside("Too many levels of symbolic links");
    writeFile("{");
    std::filesystem::resize_file(file_, SettingsDocument::sizeLimit + 1);
    expectSetAside("too large");
}

TEST_F(JsonSettingsStoreTest, DamageTwiceWithinASecondKeepsBothFiles)
{
    writeFile("first");
    open();
    writeFile("second");
    open();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file_.parent_path()), {}), 2);
}

TEST_F(JsonSettingsStoreTest, UnknownMembersSurviveRewriting)
{
    writeFile(R"({"future": [1, {"deep": null}], "pin": "1111"})");
    open().setValue("pin", std::string("2222"));
    const auto content = contentOf(file_);
    EXPECT_NE(content.find("\"deep\": null"), std::string::npos);
    EXPECT_NE(content.find("2222"), std::string::npos);
    EXPECT_TRUE(lines_.all().empty());
}

TEST_F(JsonSettingsStoreTest, AFullDiskIsReportedOnceAndLosesNothingOnceThereIsRoom)
{
    auto store = std::make_unique<JsonSettingsStore>(file_, lines_);
    store->setValue("pin", std::string("1111"));
    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(file_); }));
    const auto before = contentOf(file_);
    {
        const FullDisk full(10);
        store->setValue("pin", std::string("2222"));
        ASSERT_TRUE(waitUntil([&] { return lines_.count("Cannot save the settings") == 1; }));
        for (int i = 0; i < 20; ++i) {
            store->setValue("pin", std::to_string(i));
            std::this_thread::sleep_for(1ms);
        }
        store->setValue("lid", false);
        EXPECT_EQ(store->read<bool>("lid"), false);
        EXPECT_EQ(contentOf(file_), before);
    }
    EXPECT_EQ(lines_.count("Cannot save the settings"), 1);
    store.reset(); // there is room again, and nothing more was changed
    EXPECT_EQ(open().read<bool>("lid"), false);
    EXPECT_EQ(open().read<std::string>("pin"), "19");
    EXPECT_EQ(lines_.all().size(), 1U);
}

TEST_F(JsonSettingsStoreTest, AFailureAfterASuccessIsReportedAgain)
{
    auto store = open();
    const auto fail = [&](double value, std::ptrdiff_t reports) {
        const FullDisk full(10);
        store.setValue("n", value);
        EXPECT_TRUE(waitUntil([&] { return lines_.count("Cannot save the settings") == reports; }));
    };
    fail(1, 1);
    store.setValue("n", 2.0);
    ASSERT_TRUE(waitUntil([&] { return contentOf(file_).find("2.0") != std::string::npos; }));
    fail(3, 2);
}

TEST_F(JsonSettingsStoreTest, AReadOnlyFileSystemStopsNothing)
{
    // Even root writes nothing here.
    const auto begin = std::chrono::steady_clock::now();
    {
        JsonSettingsStore store("/proc/version", lines_);
        EXPECT_EQ(lines_.count("cannot be set aside"), 1);
        store.setValue("pin", std::string("1234"));
        store.setValue("pin", std::string("5678"));
        EXPECT_EQ(store.read<std::string>("pin"), "5678");
    }
    EXPECT_EQ(lines_.count("Cannot save the settings"), 1);
    EXPECT_EQ(lines_.all().size(), 2U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 4s);
}

TEST_F(JsonSettingsStoreTest, AFolderThatIsAFileHealsOnceItIsOne)
{
    std::ofstream(folder_.path() / "config") << "in the way";
    auto store = open();
    store.setValue("pin", std::string("1111"));
    ASSERT_TRUE(waitUntil([&] { return lines_.count("Not a directory") == 1; }));
    std::filesystem::remove(folder_.path() / "config");
    store.setValue("pin", std::string("2222"));
    EXPECT_TRUE(waitUntil([&] { return contentOf(file_).find("2222") != std::string::npos; }));
}

TEST_F(JsonSettingsStoreTest, ALinkedFileStaysALink)
{
    const auto kept = folder_.path() / "dotfiles/kestrovan.json";
    std::filesystem::create_directories(kept.parent_path());
    std::filesystem::create_directories(file_.parent_path());
    std::ofstream(kept) << R"({"pin": "1111"})";
    std::filesystem::create_symlink("../../dotfiles/kestrovan.json", file_);
    {
        auto store = open();
        EXPECT_EQ(store.read<std::string>("pin"), "1111");
        store.setValue("pin", std::string("2222"));
    }
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_NE(contentOf(kept).find("2222"), std::string::npos);
}

} // namespace
} // namespace kestrovan
