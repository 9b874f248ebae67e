#include "linux/http/HttpTest.h"
#include "rigs/FakeNames.h"
#include "rigs/NetworkedLaptop.h"

namespace kestrovan::test {
namespace {

using namespace std::chrono_literals;

constexpr const char* available = "9.0 is available";
constexpr const char* noManifest = "Gagal memproses struktur JSON pembaruan dari server.";
constexpr const char* notAllowed = "The server redirects to an address that is not allowed.";
constexpr const char* tooOften = "The server redirects too often.";
constexpr const char* leadsAstray = "The server's name leads to an address that is not allowed.";

std::string say(const UpdateCheckStatus& status)
{
    if (const auto* message = status.errorMessage())
        return *message;
    if (const auto* info = status.availableUpdate())
        return info->latestVersion + " is available";
    return status.isUpToDate() ? "up to date" : "no end";
}

/// The update manager and the real network; all else of the laptop is simulated.
class UpdateOverHttpTest : public ::testing::Test {
protected:
    std::string ending(const UpdateManager& manager)
    {
        EXPECT_TRUE(laptop.awaitEnd(manager));
        EXPECT_TRUE(manager.showUpdateModal);
        return say(manager.updateStatus);
    }
    std::string check(const std::string& address, Http& http) { return ending(*laptop.startCheck(address, http)); }
    std::string check(const std::string& path) { return check(server.address(path), http); }

    TemporaryFolder folder;
    rigs::WebServer server{folder.path()};
    rigs::NetworkedLaptop laptop;
    CurlHttp http; // ends before the laptop whose queue it posts to
};

} // namespace

TEST_F(UpdateOverHttpTest, EveryStatusAndSizeHasItsEnd)
{
    EXPECT_EQ(check("/manifest/200?"), available);
    EXPECT_EQ(check("/manifest/65536?"), available);
    EXPECT_EQ(check("/manifest/65537?"), "Ukuran respon server melebihi batas keamanan (65537 bytes).");
    EXPECT_EQ(check("/body/5000000?"), "Ukuran respon server melebihi batas keamanan (5000000 bytes).");
    EXPECT_EQ(check("/body/0?"), noManifest);
    EXPECT_EQ(check("/no-content?"), "Tidak ada data yang diterima dari server 127.0.0.1.");
    EXPECT_EQ(check("/not-modified?"), "Server mengembalikan kode status HTTP 304.");
    EXPECT_EQ(check("/bomb?"), noManifest);
    EXPECT_EQ(check("/status/500?"), "Server mengembalikan kode status HTTP 500.");
    EXPECT_EQ(check("/no-http?"), "Respon server bukan HTTP valid.");
}

TEST_F(UpdateOverHttpTest, EveryRedirectEndsByTheRules)
{
    EXPECT_EQ(check("/to?/manifest/200"), available);
    EXPECT_EQ(check("/redirect/5?"), noManifest) << "arrived, at a page that is none";
    EXPECT_EQ(check("/loop?"), tooOften);
    EXPECT_EQ(check("/nowhere?"), "Server mengembalikan kode status HTTP 302.");
    for (const auto* target : {"http://169.254.169.254/latest", "//0xA9FEA9FE/", "http://metadata.google.internal./",
                               "http://[::ffff:a9fe:a9fe]/", "file:///etc/passwd", "ftp://127.0.0.1/", "data:,x",
                               "http:///169.254.169.254/", "http://[bad", "javascript:alert(1)"})
        EXPECT_EQ(check(std::string("/to?") + target), notAllowed) << target;
}

TEST_F(UpdateOverHttpTest, NoNameLeadsToABlockedAddress)
{
    const std::vector<std::string> disguises{"169.254.169.254", "::ffff:169.254.169.254", "64:ff9b::a9fe:a9fe"};
    for (const auto& disguise : disguises) {
        rigs::fakeNames::leadTo("inside.test", {disguise});
        EXPECT_EQ(check(server.address("/manifest/200?", "inside.test"), http), leadsAstray) << disguise;
        EXPECT_EQ(check("/to?" + server.address("/manifest/200", "inside.test")), leadsAstray) << disguise;
    }
    rigs::fakeNames::leadTo("inside.test", {"127.0.0.1"});
    EXPECT_EQ(check(server.address("/manifest/200?", "inside.test"), http), available);
}

TEST_F(UpdateOverHttpTest, WhatDoesNotEndIsEndedAfterSixSeconds)
{
    std::vector<std::unique_ptr<UpdateManager>> managers;
    const auto begin = std::chrono::steady_clock::now();
    for (const auto* path : {"/silent?", "/drip?", "/endless?"})
        managers.push_back(laptop.startCheck(server.address(path), http));
    for (const auto& manager : managers)
        EXPECT_EQ(ending(*manager), "The server did not answer in time.");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 5900ms);
}

TEST_F(UpdateOverHttpTest, AnAnswerForAManagerThatIsGoneIsDropped)
{
    laptop.startCheck(server.address("/manifest/200?"), http).reset();
    EXPECT_EQ(check("/manifest/200?"), available) << "the network goes on";
}

} // namespace kestrovan::test
