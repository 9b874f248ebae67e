#include "GuardTest.h"
#include "core/SettingsKeys.h"

namespace kestrovan::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* folder = "/home/owner/.local/share/Kestrovan/";

class WallpaperTest : public GuardTest {
protected:
    void choose(const std::string& path, const std::string& content = "picture")
    {
        files[path] = content;
        laptop.desktop().choice = path;
        guard().selectCustomImageFromPicker();
    }
    std::optional<std::string> image() { return guard().customImagePath; }
    std::optional<std::string> stored() { return laptop.settings().read<std::string>(settingsKey::customImagePath); }

    std::map<std::filesystem::path, std::string>& files = laptop.files().contents;
};

TEST_F(WallpaperTest, TheChosenPictureIsCopiedUnderItsEndingAndRemembered)
{
    choose("/media/stick/Holiday.PNG");
    EXPECT_EQ(image(), std::string(folder) + "custom_bg.PNG");
    EXPECT_EQ(stored(), image());
    files.erase("/media/stick/Holiday.PNG");
    EXPECT_EQ(files.at(*image()), "picture");
    start();
    EXPECT_EQ(image(), std::string(folder) + "custom_bg.PNG");
}

TEST_F(WallpaperTest, EachEndingHasItsFileWhichTheNextPictureOfItReplaces)
{
    const std::vector<std::pair<std::string, std::string>> choices{{"/a/one.jpg", "custom_bg.jpg"},
                                                                   {"/b/two.jpg", "custom_bg.jpg"},
                                                                   {"/home/owner/photo", "custom_bg."},
                                                                   {"/home/owner/.png", "custom_bg."},
                                                                   {"/home/owner/two.tar.gz", "custom_bg.gz"}};
    for (const auto& [chosen, copy] : choices) {
        choose(chosen, chosen);
        EXPECT_EQ(image(), folder + copy);
        EXPECT_EQ(files.at(folder + copy), chosen);
    }
    EXPECT_TRUE(files.contains(std::string(folder) + "custom_bg.jpg"));
}

TEST_F(WallpaperTest, APickerThatIsCancelledChangesNothing)
{
    guard().selectCustomImageFromPicker();
    EXPECT_EQ(image(), std::nullopt);
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(WallpaperTest, WhatCannotBeCopiedIsShownFromWhereItIs)
{
    laptop.files().isFull = true;
    choose("/media/stick/cat.webp");
    EXPECT_EQ(image(), "/media/stick/cat.webp");
    EXPECT_EQ(stored(), image());
    EXPECT_THAT(laptop.diagnostics().lines, ElementsAre("Failed to copy custom image: No space left on device"));
}

TEST_F(WallpaperTest, WithoutADataFolderTheChoiceIsIgnored)
{
    choose("/a/one.jpg");
    laptop.files().hasHome = false;
    choose("/b/two.png");
    EXPECT_EQ(image(), std::string(folder) + "custom_bg.jpg");
    EXPECT_THAT(laptop.diagnostics().lines, IsEmpty());
}

TEST_F(WallpaperTest, RemovalDeletesTheProgramsCopyAlone)
{
    guard().removeCustomImage();
    EXPECT_EQ(stored(), std::nullopt);

    choose("/a/one.jpg");
    guard().removeCustomImage();
    EXPECT_EQ(image(), std::nullopt);
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_FALSE(files.contains(std::string(folder) + "custom_bg.jpg"));
    EXPECT_TRUE(files.contains("/a/one.jpg"));

    for (const std::string own : {"/a/custom_bg.jpg", "/home/owner/.local/share/Kestrovan/holiday.jpg",
                                  "/home/owner/.local/share/Kestrovan/custom_bg.d/cat.jpg"}) {
        files[own] = "the user's";
        laptop.settings().setValue(settingsKey::customImagePath, own);
        start();
        guard().removeCustomImage();
        EXPECT_EQ(image(), std::nullopt);
        EXPECT_TRUE(files.contains(own)) << own;
    }
}

TEST_F(WallpaperTest, APathWhoseFileIsGoneIsKeptAndThenMerelyForgotten)
{
    choose("/a/one.jpg");
    files.clear();
    start();
    EXPECT_EQ(image(), std::string(folder) + "custom_bg.jpg");
    guard().removeCustomImage();
    EXPECT_EQ(image(), std::nullopt);
}

} // namespace
} // namespace kestrovan::test
