#include "WindowTest.h"
#include "parts/Palette.h"

using namespace kestrovan;
using namespace std::chrono_literals;

namespace {

using GuardCardTest = test::WindowTest;

TEST_F(GuardCardTest, ArmsCountsDownAndCancels)
{
    EXPECT_EQ(text("armButton"), "AKTIFKAN PROTEKSI");
    click("armButton");
    EXPECT_EQ(state(), GuardState::arming(3));
    EXPECT_EQ(text("secondsLeft"), "3");
    EXPECT_DOUBLE_EQ(property<double>("countdownRing", "fraction"), 1);
    wait(1s);
    EXPECT_EQ(text("secondsLeft"), "2");
    EXPECT_DOUBLE_EQ(property<double>("countdownRing", "fraction"), 2.0 / 3);

    click("cancelButton");
    EXPECT_EQ(state(), GuardState::disarmed());
    EXPECT_TRUE(stage.isVisible("armButton"));
    EXPECT_FALSE(stage.isVisible("cancelButton"));
}

TEST_F(GuardCardTest, DisarmsFromArmedWithoutAskingForThePin)
{
    guard().togglePinRequirement(true);
    click("armButton");
    wait(3s);
    EXPECT_EQ(state(), GuardState::armed());
    EXPECT_EQ(text("activeTitle"), "PROTEKSI SEDANG AKTIF");
    click("disarmButton");
    EXPECT_EQ(state(), GuardState::disarmed());
}

TEST_F(GuardCardTest, TheBadgeBreathesOnlyWhereItCanBeSeenAndForThoseWhoLikeIt)
{
    laptop.motion().isReduced = true;
    armAndWait();
    react();
    wait(1500ms);
    EXPECT_NEAR(property<double>("badge", "scale"), 0.95, 1e-9);
    laptop.motion().isReduced = false;
    react();
    wait(1500ms);
    EXPECT_NEAR(property<double>("badge", "scale"), 1.05, 0.01);
    EXPECT_NEAR(property<double>("badge", "opacity"), 0.25, 0.02);

    stage.window().hide();
    react();
    const auto still = property<double>("badge", "scale");
    laptop.advance(700ms);
    EXPECT_EQ(property<double>("badge", "scale"), still);
}

TEST_F(GuardCardTest, TheStripShowsWherePowerComesFrom)
{
    EXPECT_EQ(text("powerSource"), "CHARGER TERHUBUNG");
    EXPECT_EQ(text("powerLevel"), "100%");
    auto* bar = stage.find("levelBar");
    EXPECT_DOUBLE_EQ(bar->width(), bar->parentItem()->width());
    EXPECT_EQ(property<QColor>("powerSymbol", "color"), palette::green);

    laptop.unplugCharger();
    laptop.setBattery(0);
    react();
    EXPECT_EQ(text("powerSource"), "MENGGUNAKAN BATERAI");
    EXPECT_EQ(text("powerLevel"), "0%");
    EXPECT_DOUBLE_EQ(bar->width(), 0);
    EXPECT_EQ(property<QColor>("powerSymbol", "color"), palette::orange);
}

} // namespace
