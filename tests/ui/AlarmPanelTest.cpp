#include "WindowTest.h"

using namespace kestrovan;
using namespace std::chrono_literals;

namespace {

class AlarmPanelTest : public test::WindowTest {
protected:
    void sound(bool withPin)
    {
        guard().togglePinRequirement(withPin);
        armAndSound();
        react();
        ASSERT_TRUE(stage.isVisible("alarmTriggeredOverlay"));
    }
    void tap(const std::string& keys)
    {
        for (const char key : keys)
            click("key" + QString(QChar(key)));
    }
    std::string entry() { return guard().enteredPin; }
};

TEST_F(AlarmPanelTest, SaysWhatHappenedAndWithoutThePinOnePressEndsIt)
{
    sound(false);
    EXPECT_EQ(text("alarmTitle"), "ALARM BERBUNYI");
    EXPECT_EQ(text("alarmReason"), "Charger Terputus!");
    EXPECT_TRUE(stage.isVisible("lockdownBanner"));
    EXPECT_TRUE(stage.isVisible("photoBadge"));
    guard().toggleCameraCapture(false);
    react();
    EXPECT_FALSE(stage.isVisible("photoBadge"));

    EXPECT_FALSE(stage.isVisible("pinField"));
    click("stopButton");
    EXPECT_EQ(state(), GuardState::disarmed());
    EXPECT_FALSE(stage.isVisible("alarmTriggeredOverlay"));
    EXPECT_TRUE(stage.isVisible("armButton"));
}

TEST_F(AlarmPanelTest, AWrongPinSaysSoUntilTheNextKeyAndTheRightOneWaitsForTheButton)
{
    sound(true);
    tap("11");
    click("unlockButton");
    EXPECT_EQ(text("pinMessage"), "PIN Salah! Coba lagi.");
    tap("C");
    EXPECT_FALSE(stage.isVisible("pinMessage"));
    tap("7391");
    EXPECT_TRUE(state().isAlarmTriggered());
    click("unlockButton");
    EXPECT_EQ(state(), GuardState::disarmed());
}

TEST_F(AlarmPanelTest, ThePinCanBeEnteredElsewhereAndInTheFieldAndSentByReturn)
{
    sound(true);
    typePin("73"); // the key filter of the lockdown takes it
    react();
    EXPECT_EQ(property<QString>("pinField", "value"), "73");
    type("91");
    EXPECT_EQ(entry(), "7391");
    press(Qt::Key_Return);
    EXPECT_EQ(state(), GuardState::disarmed());
}

TEST_F(AlarmPanelTest, FiveWrongPinsLockTheEntryForThirtySeconds)
{
    sound(true);
    tap("1");
    for (int attempt = 0; attempt < 5; ++attempt)
        click("unlockButton");
    EXPECT_EQ(text("pinMessage"), "Percobaan salah 5 kali. Terkunci selama 30 detik.");
    EXPECT_FALSE(stage.find("pinField")->isEnabled());
    tap("2C");
    click("unlockButton");
    press(Qt::Key_Return);
    type("3");
    EXPECT_EQ(entry(), "1") << "nothing is taken while it is locked";
    EXPECT_TRUE(guard().pinError);

    wait(1s);
    EXPECT_EQ(text("pinMessage"), "Percobaan salah 5 kali. Terkunci selama 29 detik.");
    wait(29s);
    EXPECT_FALSE(stage.isVisible("pinMessage"));
}

} // namespace
