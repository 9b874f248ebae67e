#include "update/UpdateTest.h"

namespace kestrovan::test {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::Pair;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr const char* jsonError = "Gagal memproses struktur JSON pembaruan dari server.";

std::string manifest(const std::string& version, const std::string& link = "https://host.example/x",
                     const std::string& notes = "new")
{
    return AppUpdateInfo{.latestVersion = version, .downloadUrl = link, .releaseNotes = notes}.toJson();
}

class UpdateCheckTest : public UpdateTest {
protected:
    UpdateCheckTest() { startWithServer("https://host.example"); }

    /// Checks once the last check is long enough ago; returns whether the sheet came up.
    template <class Answer>
    bool check(const Answer& answer, bool silent = false)
    {
        laptop.advance(10s);
        laptop.web().answerWith(answer);
        manager->showUpdateModal = false;
        manager->checkForUpdates(silent);
        laptop.settle();
        return manager->showUpdateModal;
    }
    std::string errorAfter(const HttpResult& answer)
    {
        check(answer);
        return error();
    }
};

} // namespace

TEST_F(UpdateCheckTest, AsksPolitelyForTheManifestAndForNothingCached)
{
    check(manifest("1.0"));
    ASSERT_THAT(laptop.web().requests(), SizeIs(1));
    const auto& request = laptop.web().requests().front();
    EXPECT_EQ(request.address, "https://host.example/version.json");
    EXPECT_THAT(request.headers, ElementsAre(Pair("User-Agent", "Kestrovan/1.1.83 (macOS; Build:83)"),
                                             Pair("Accept", "application/json"), Pair("Pragma", "no-cache"),
                                             Pair("Cache-Control", "no-cache, no-store, must-revalidate")));
    EXPECT_EQ(request.timeLimit, 6s);
    EXPECT_EQ(request.keptBytes, 65536);
}

// UpdateOverHttpTest has the other failures from a real server.
TEST_F(UpdateCheckTest, EachFailureHasItsMessage)
{
    EXPECT_EQ(errorAfter(HttpError{"No \"route\" to host"}), "No 'route' to host");
    EXPECT_EQ(errorAfter(HttpResponse{.status = 199}), "Server mengembalikan kode status HTTP 199.");
    EXPECT_EQ(errorAfter(HttpResponse{.status = 200}), jsonError);
    EXPECT_EQ(errorAfter(HttpResponse{.status = 299, .body = "{}"}), jsonError);
    for (const auto* link : {"javascript:alert(1)", "file:///x", "ftp://host.example/x", "host.example/x", ""})
        EXPECT_EQ(errorAfter(HttpResponse{.status = 200, .body = manifest("9.0", link)}),
                  "URL download pada manifest pembaruan tidak aman.");
    EXPECT_TRUE(manager->showUpdateModal);
}

TEST_F(UpdateCheckTest, OnlyAFindRaisesTheSheetOfASilentCheck)
{
    EXPECT_TRUE(check(manifest("1.1.84", "http://host.example/x"), true));
    ASSERT_TRUE(manager->updateStatus->availableUpdate());
    EXPECT_EQ(manager->updateStatus->availableUpdate()->downloadUrl, "http://host.example/x");

    EXPECT_FALSE(check(manifest("1.1.83"), true));
    EXPECT_TRUE(manager->updateStatus->isUpToDate());
    EXPECT_FALSE(check(HttpResult(HttpError{"no"}), true));
    EXPECT_EQ(error(), "no");
    EXPECT_TRUE(check(manifest("1.1.83"), false));
    EXPECT_TRUE(manager->updateStatus->isUpToDate());
}

TEST_F(UpdateCheckTest, WhatIsShownIsTrimmedAndCutAtWholeCharacters)
{
    std::string notes;
    for (int i = 0; i < 2500; ++i)
        notes += "é👨‍👩‍👧";
    check(manifest(" 1.2.0\n", "https://host.example/x", notes));
    const auto* info = manager->updateStatus->availableUpdate();
    ASSERT_TRUE(info);
    EXPECT_EQ(info->latestVersion, "1.2.0");
    EXPECT_THAT(info->releaseNotes, SizeIs(2048 * std::string("é👨‍👩‍👧").size()));
    EXPECT_THAT(notes, StartsWith(info->releaseNotes));
}

TEST_F(UpdateCheckTest, ChecksAreFiveSecondsApart)
{
    manager->checkForUpdates(true);
    laptop.advance(4999ms);
    manager->checkForUpdates(true);
    EXPECT_FALSE(manager->showUpdateModal);
    manager->checkForUpdates(false);
    EXPECT_TRUE(manager->showUpdateModal);
    EXPECT_TRUE(manager->updateStatus->errorMessage()) << "left as it was";
    EXPECT_THAT(laptop.web().requests(), SizeIs(1));

    laptop.advance(1ms);
    manager->checkForUpdates(true);
    EXPECT_TRUE(manager->updateStatus->isChecking());
    EXPECT_THAT(laptop.web().requests(), SizeIs(2));
}

TEST_F(UpdateCheckTest, AnAddressThatWillNotDoIsSaidOnALaterTurnWithoutAnyRequest)
{
    manager->setServerURL("http://169.254.169.254/");
    manager->checkForUpdates(true);
    EXPECT_TRUE(manager->updateStatus->isChecking());
    laptop.settle();
    EXPECT_EQ(error(), "URL server tidak valid atau diblokir oleh sistem keamanan.");
    EXPECT_FALSE(manager->showUpdateModal);
    EXPECT_TRUE(laptop.web().requests().empty());
}

} // namespace kestrovan::test
