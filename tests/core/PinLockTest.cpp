#include "GuardTest.h"

namespace kestrovan::test {
namespace {

using namespace std::chrono_literals;

class PinLockTest : public GuardTest {
protected:
    PinLockTest()
    {
        guard().togglePinRequirement(true);
        armAndSound();
    }
    void enterWrongPins(int count)
    {
        for (int i = 0; i < count; ++i)
            EXPECT_FALSE(guard().disarm("0000"));
    }
};

TEST_F(PinLockTest, OnlyThePinStopsASoundingAlarm)
{
    EXPECT_FALSE(guard().disarm("73910"));
    EXPECT_FALSE(guard().disarm(std::nullopt));
    EXPECT_TRUE(guard().pinError);
    EXPECT_EQ(guard().failedPinAttempts, 2);
    EXPECT_TRUE(laptop.speaker().isLooping());

    EXPECT_TRUE(guard().disarm("7391"));
    EXPECT_EQ(state(), GuardState::disarmed());
    EXPECT_FALSE(guard().pinError);
    EXPECT_EQ(guard().failedPinAttempts, 0);
}

TEST_F(PinLockTest, FiveWrongEntriesLockTheEntryForThirtySeconds)
{
    enterWrongPins(4);
    EXPECT_EQ(guard().lockoutSecondsRemaining, 0);
    enterWrongPins(1);
    EXPECT_EQ(guard().lockoutSecondsRemaining, 30);
    EXPECT_FALSE(guard().disarm("7391")) << "even the right PIN";
    laptop.advance(29999ms);
    EXPECT_EQ(guard().lockoutSecondsRemaining, 1);
    EXPECT_FALSE(guard().disarm("7391"));
    laptop.advance(1ms);
    EXPECT_TRUE(guard().disarm("7391"));
}

TEST_F(PinLockTest, ThePinCanBeTypedBlind)
{
    typePin("730");
    laptop.press(KeyEvent::deleteKey);
    typePin("9");
    EXPECT_TRUE(laptop.type("q"));
    EXPECT_EQ(guard().enteredPin.get(), "739");
    typePin("1");
    laptop.press(KeyEvent::returnKey);
    EXPECT_EQ(state(), GuardState::disarmed());
    EXPECT_FALSE(laptop.type("1")) << "afterwards the keys are everybody's again";
}

} // namespace
} // namespace kestrovan::test
