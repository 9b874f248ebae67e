#include "WindowTest.h"

using namespace kestrovan;
using namespace std::chrono_literals;

namespace {

class UpdateSheetTest : public test::WindowTest {
protected:
    static std::string manifest(const std::string& version, const std::string& link, const std::string& notes = "")
    {
        return R"({"latestVersion":")" + version + R"(","downloadUrl":")" + link + R"(","releaseNotes":")" + notes +
               R"("})";
    }
};

TEST_F(UpdateSheetTest, FollowsACheckFromItsBeginningToItsEnd)
{
    laptop.web().answerWith(manifest("1.1.83", "https://a.example/k"), 2s);
    click("updateButton");
    EXPECT_EQ(text("checkingLabel"), "Memeriksa versi terbaru ke server...");
    const auto turn = property<double>("spinner", "turn");
    wait(160ms);
    EXPECT_NE(property<double>("spinner", "turn"), turn);
    wait(2s);
    EXPECT_FALSE(stage.isVisible("spinner"));
    EXPECT_EQ(text("upToDateTitle"), "Aplikasi Anda Sudah Versi Terbaru");
    EXPECT_EQ(text("currentVersion"), "Versi Saat Ini: v1.1.83");
}

TEST_F(UpdateSheetTest, OffersTheUpdateAndOpensItsLink)
{
    laptop.web().answerWith(manifest("1.2.0", "HTTPS://a.example/k.deb", "Baru"));
    click("updateButton");
    EXPECT_EQ(text("newVersion"), "Versi Baru Tersedia: v1.2.0");
    EXPECT_EQ(text("notes"), "Baru");
    click("downloadButton");
    ASSERT_EQ(laptop.desktop().openedAddresses.size(), 1U);
    EXPECT_THAT(laptop.desktop().openedAddresses[0], testing::HasSubstr("a.example/k.deb"));
    EXPECT_TRUE(stage.isVisible("updateModalSheet")) << "the sheet stays";
}

TEST_F(UpdateSheetTest, AFailureSaysWhyAndTriesAgain)
{
    laptop.web().answerWith("nonsense");
    click("updateButton");
    EXPECT_EQ(text("errorTitle"), "Gagal Memeriksa Pembaruan");
    EXPECT_EQ(text("errorMessage"), "Gagal memproses struktur JSON pembaruan dari server.");
    wait(6s);
    laptop.web().answerWith(manifest("1.1.83", "https://a.example/k"), 1s);
    click("retryButton");
    EXPECT_TRUE(stage.isVisible("spinner"));
    wait(1s);
    EXPECT_TRUE(stage.isVisible("upToDateTitle"));
}

} // namespace
