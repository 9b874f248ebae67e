#include "GuardTest.h"
#include "core/SettingsKeys.h"

namespace kestrovan::test {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

class SettingsTest : public GuardTest {
protected:
    SettingsValue& stored(const char* key) { return laptop.settings().values[key]; }
};

TEST_F(SettingsTest, ValuesOfTheWrongTypeReadAsTheDefault)
{
    const SettingsValue nonsense[]{std::string("no"), 0.0, SettingsData{"x"}, false};
    for (const auto& value : nonsense) {
        for (const auto* key : {settingsKey::pin, settingsKey::pinEnabled, settingsKey::lidAlarm,
                                settingsKey::cameraDelay, settingsKey::language, settingsKey::customImagePath,
                                settingsKey::warningMessage, settingsKey::intruderRecords})
            stored(key) = value;
        start();
        EXPECT_FALSE(guard().isPinEnabled);
        EXPECT_EQ(guard().currentLanguage, AppLanguage::indonesian);
        EXPECT_EQ(guard().isLidAlarmEnabled, !std::holds_alternative<bool>(value));
        EXPECT_EQ(guard().cameraDelayDuration, std::holds_alternative<double>(value) ? 0.0 : 2.0);
        EXPECT_EQ(guard().pinCode.get(), std::holds_alternative<std::string>(value) ? "no" : "7391");
    }
}

TEST_F(SettingsTest, EveryChangeSurvivesARestart)
{
    guard().togglePinRequirement(true);
    guard().toggleLidAlarm(false);
    guard().toggleChargerAlarm(false);
    guard().toggleCameraCapture(false);
    guard().toggleFullscreenArmed(false);
    guard().toggleFullscreenTriggered(false);
    guard().setCameraDelay(3.5);
    guard().updateWarningMessage("Mine");
    guard().updatePinCode(" 2468 ");
    guard().setLanguage(AppLanguage::english);
    guard().armDelayDuration = 10;
    start();

    EXPECT_TRUE(guard().isPinEnabled);
    EXPECT_FALSE(guard().isLidAlarmEnabled || guard().isChargerAlarmEnabled || guard().isCameraCaptureEnabled);
    EXPECT_FALSE(guard().showFullscreenWhenArmed || guard().showFullscreenWhenTriggered);
    EXPECT_EQ(guard().cameraDelayDuration, 3.5);
    EXPECT_EQ(guard().customWarningMessage.get(), "Mine");
    EXPECT_EQ(guard().pinCode.get(), "2468");
    EXPECT_EQ(guard().currentLanguage, AppLanguage::english);
    EXPECT_EQ(stored(settingsKey::language), SettingsValue(std::string("en")));
    EXPECT_EQ(guard().armDelayDuration, 3) << "the arming delay is of one run only";
}

TEST_F(SettingsTest, TheCameraDelayIsCutToItsLimits)
{
    guard().setCameraDelay(0.5);
    EXPECT_EQ(stored(settingsKey::cameraDelay), SettingsValue(1.0));
    guard().setCameraDelay(25);
    EXPECT_EQ(stored(settingsKey::cameraDelay), SettingsValue(10.0));
}

TEST_F(SettingsTest, APinHasFourToSixteenCharactersOfAnyKind)
{
    for (const auto* refused :
         {" 123 ", "", "12345678901234567", "👨‍👩‍👧👨‍👩‍👧👨‍👩‍👧"})
        guard().updatePinCode(refused);
    EXPECT_EQ(guard().pinCode.get(), "7391");
    for (const auto* accepted :
         {"abcd", "1234567890123456", "👨‍👩‍👧👨‍👩‍👧👨‍👩‍👧é"}) {
        guard().updatePinCode(accepted);
        EXPECT_EQ(guard().pinCode.get(), accepted);
    }
}

TEST_F(SettingsTest, TheCameraIsAskedForOnceAndOnlyWhenItIsWanted)
{
    laptop.camera().status = CameraAuthorization::notDetermined;
    guard().toggleCameraCapture(false);
    EXPECT_EQ(laptop.camera().questions(), 0);
    guard().toggleCameraCapture(true);
    EXPECT_EQ(laptop.camera().questions(), 1);
    laptop.camera().answer(false);
    guard().toggleCameraCapture(true);
    EXPECT_EQ(laptop.camera().questions(), 1);
    EXPECT_TRUE(guard().isCameraCaptureEnabled) << "a refusal is not a change of the setting";
}

TEST_F(SettingsTest, AChangeIsAnnouncedBeforeItIsMade)
{
    std::vector<std::string> seen;
    const auto subscription = guard().subscribe([&] { seen.push_back(guard().enteredPin); });
    guard().enteredPin = std::string("1");
    EXPECT_THAT(seen, ElementsAre(""));
}

TEST_F(SettingsTest, TheLaunchCheckForUpdatesIsSilentLateAndOptional)
{
    laptop.advance(1999ms);
    EXPECT_TRUE(laptop.web().requests().empty());
    laptop.advance(1ms);
    EXPECT_EQ(laptop.web().requests().size(), 1U);
    EXPECT_FALSE(guard().updateManager.showUpdateModal) << "the server does not answer, and nobody asked";

    guard().updateManager.setAutoCheck(false);
    start();
    laptop.advance(10s);
    EXPECT_EQ(laptop.web().requests().size(), 1U);
}

} // namespace
} // namespace kestrovan::test
