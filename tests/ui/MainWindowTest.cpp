#include "WindowTest.h"
#include "parts/Palette.h"

using namespace kestrovan;
using namespace std::chrono_literals;

namespace {

using MainWindowTest = test::WindowTest;

TEST_F(MainWindowTest, TheLanguageSwitchTurnsEveryTextAtOnceAndBack)
{
    EXPECT_EQ(text("languageButton"), "ID");
    EXPECT_EQ(property<QString>("languageButton", "help"), "Ganti ke English");
    click("languageButton");
    EXPECT_EQ(text("languageButton"), "EN");
    EXPECT_EQ(property<QString>("languageButton", "help"), "Switch to Bahasa Indonesia");
    EXPECT_EQ(text("powerSource"), "CHARGER CONNECTED");
    EXPECT_EQ(text("armButton"), "ARM PROTECTION");
    EXPECT_EQ(text("pinIndicator"), "PIN Off");
    click("languageButton");
    EXPECT_EQ(text("languageButton"), "ID");
    EXPECT_EQ(text("armButton"), "AKTIFKAN PROTEKSI");
}

TEST_F(MainWindowTest, ThePreviewButtonShowsTheDeterrentAndLeavesTheGuardAlone)
{
    click("previewButton");
    EXPECT_TRUE(screens.isShown);
    EXPECT_EQ(state(), GuardState::disarmed());
}

TEST_F(MainWindowTest, EverySheetClosesByItsButtonByEscapeAndByAPressBesideIt)
{
    const std::vector<std::pair<QString, QString>> sheets{
        {"settingsButton", "settingsSheet"}, {"aboutButton", "aboutModalSheet"}, {"updateButton", "updateModalSheet"}};
    for (const auto& [button, sheet] : sheets) {
        SCOPED_TRACE(sheet.toStdString());
        click(button);
        EXPECT_TRUE(stage.isVisible(sheet));
        click("closeButton");
        EXPECT_FALSE(stage.isVisible(sheet));

        click(button);
        press(Qt::Key_Escape);
        EXPECT_FALSE(stage.isVisible(sheet));

        click(button);
        stage.clickAt({3, 345});
        react();
        EXPECT_FALSE(stage.isVisible(sheet));
    }
    EXPECT_FALSE(guard().updateManager.showUpdateModal);
}

TEST_F(MainWindowTest, ASheetThatOpensOverAnotherIsTheOneThatReacts)
{
    click("settingsButton");
    guard().updateManager.simulateUpdateFound();
    react();
    EXPECT_TRUE(stage.isVisible("updateModalSheet"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(stage.isVisible("updateModalSheet"));
    EXPECT_TRUE(stage.isVisible("settingsSheet"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(stage.isVisible("settingsSheet"));
}

TEST_F(MainWindowTest, TheKeyboardReachesEverythingAndNothingBelowASheet)
{
    std::set<std::string> reached;
    for (int step = 0; step < 12; ++step) {
        press(Qt::Key_Tab);
        reached.insert(focused());
    }
    EXPECT_THAT(reached, testing::ElementsAre("aboutButton", "armButton", "galleryButton", "languageButton",
                                              "previewButton", "settingsButton", "updateButton"));
    while (focused() != "aboutButton")
        press(Qt::Key_Tab);
    press(Qt::Key_Space);
    ASSERT_TRUE(stage.isVisible("aboutModalSheet"));
    reached.clear();
    for (int step = 0; step < 6; ++step) {
        press(Qt::Key_Tab);
        reached.insert(focused());
    }
    EXPECT_THAT(reached, testing::ElementsAre("closeButton", "websiteButton"));

    press(Qt::Key_Escape);
    EXPECT_EQ(focused(), "aboutButton") << "the keyboard is back where it was";
}

TEST_F(MainWindowTest, TheAlarmCoversSheetsAndControls)
{
    click("settingsButton");
    armAndSound();
    react();
    ASSERT_TRUE(stage.isVisible("alarmTriggeredOverlay"));
    press(Qt::Key_Escape);
    stage.clickAt({490, 44}); // the settings button lies there
    stage.clickAt({265, 420});
    react();
    EXPECT_TRUE(stage.isVisible("settingsSheet")) << "it waits below the alarm";
    EXPECT_TRUE(state().isAlarmTriggered());
    std::set<std::string> reached;
    for (int step = 0; step < 4; ++step) {
        press(Qt::Key_Tab);
        reached.insert(focused());
    }
    EXPECT_THAT(reached, testing::ElementsAre("stopButton"));
}

} // namespace
