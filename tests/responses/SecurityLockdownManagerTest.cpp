#include "responses/SecurityLockdownManager.h"

#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "responses/PowerAssertionManager.h"
#include "rigs/RecordingEntry.h"

#include <gmock/gmock.h>

#include <optional>

namespace kestrovan {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::IsEmpty;
using ::testing::Pair;

class SecurityLockdownManagerTest : public ::testing::Test {
protected:
    void lockDown()
    {
        lockdown.enableLockdown(*entry);
        laptop.settle();
    }
    void type(std::initializer_list<const char*> characters)
    {
        for (const auto* character : characters)
            EXPECT_TRUE(laptop.type(character)) << character << " reached a window";
    }

    IcuText text;
    SimulatedLaptop laptop{text};
    PowerAssertionManager assertions{laptop.platform()};
    std::optional<rigs::RecordingEntry> entry{std::in_place};
    SecurityLockdownManager lockdown{laptop.platform(), assertions};
};

TEST_F(SecurityLockdownManagerTest, ItIsActiveAtOnceAndInForceFromTheNextTurnUntilItEndsLikewise)
{
    lockdown.enableLockdown(*entry);
    lockdown.enableLockdown(*entry);
    EXPECT_TRUE(lockdown.isLockdownActive);
    EXPECT_EQ(laptop.desktop().presentationOptions, 0U);
    laptop.settle();
    EXPECT_EQ(laptop.desktop().presentationOptions, 506U);
    EXPECT_EQ(laptop.desktop().monitors(), 1U);

    lockdown.disableLockdown();
    EXPECT_FALSE(lockdown.isLockdownActive);
    EXPECT_FALSE(laptop.desktop().press({KeyEvent::Type::keyDown, KeyEvent::otherKey, "1"})) << "a late key";
    EXPECT_EQ(laptop.desktop().presentationOptions, 506U);
    laptop.settle();
    EXPECT_EQ(laptop.desktop().presentationOptions, 0U);
    EXPECT_EQ(laptop.desktop().monitors(), 0U);
    laptop.powerOff();
    EXPECT_EQ(entry->sirenRestarts, 0);
    EXPECT_EQ(entry->text, "");
}

TEST_F(SecurityLockdownManagerTest, OfManyChangesOfMindTheLastOneHolds)
{
    for (int i = 0; i < 3; ++i) {
        lockdown.enableLockdown(*entry);
        lockdown.disableLockdown();
    }
    laptop.settle();
    EXPECT_EQ(laptop.desktop().monitors(), 0U);
    lockdown.enableLockdown(*entry);
    lockdown.disableLockdown();
    lockDown();
    EXPECT_EQ(laptop.desktop().monitors(), 1U);
    EXPECT_EQ(laptop.desktop().presentationOptions, 506U);
    type({"4"});
    EXPECT_EQ(entry->text, "4") << "each key once";
}

TEST_F(SecurityLockdownManagerTest, DigitsOfAnyScriptAreEnteredUpToTwelveAndEverythingElseIsSwallowed)
{
    lockDown();
    type({"1", "2", "a", "", " ", "²", "٥", "一", "é"});
    EXPECT_EQ(entry->text, "12²٥一");
    EXPECT_FALSE(entry->isError);
    EXPECT_TRUE(laptop.desktop().press({KeyEvent::Type::flagsChanged, KeyEvent::otherKey, {}}));
    EXPECT_FALSE(laptop.desktop().press({KeyEvent::Type::other, KeyEvent::otherKey, "3"}));

    type({"6", "7", "8", "9", "0", "1", "2", "3", "4"});
    EXPECT_EQ(entry->text, "12²٥一6789012") << "twelve characters, whatever their bytes";
}

TEST_F(SecurityLockdownManagerTest, TheEditingKeysEditBothOfEach)
{
    lockDown();
    laptop.press(KeyEvent::deleteKey);
    type({"1", "2"});
    laptop.press(KeyEvent::deleteKey);
    type({"3"});
    EXPECT_EQ(entry->text, "13");
    laptop.press(KeyEvent::returnKey);
    laptop.press(KeyEvent::forwardDelete);
    laptop.press(KeyEvent::keypadEnter);
    EXPECT_THAT(entry->submitted, ::testing::ElementsAre("13", "1"));
    for (const auto key : {KeyEvent::escape, KeyEvent::keypadClear}) {
        entry->text = "99";
        laptop.press(key);
        EXPECT_EQ(entry->text, "");
    }
}

TEST_F(SecurityLockdownManagerTest, DuringALockoutOnlyClearingWorks)
{
    lockDown();
    type({"1", "2"});
    entry->isLocked = true;
    entry->isError = true;
    type({"3"});
    laptop.press(KeyEvent::deleteKey);
    laptop.press(KeyEvent::returnKey);
    EXPECT_EQ(entry->text, "12");
    EXPECT_TRUE(entry->isError);
    EXPECT_THAT(entry->submitted, IsEmpty());
    laptop.press(KeyEvent::escape);
    EXPECT_EQ(entry->text, "");
}

TEST_F(SecurityLockdownManagerTest, PowerOffRestartsTheSirenAndDarkScreensOnlyKeepTheMachineAwake)
{
    lockDown();
    laptop.screensSleep();
    EXPECT_THAT(laptop.holds().assertions, Contains(Pair(::testing::_, "Kestrovan Screen Sleep Lockdown")));
    EXPECT_EQ(entry->sirenRestarts, 0);

    assertions.stopPreventingSleep();
    laptop.powerOff();
    EXPECT_THAT(laptop.holds().assertions, Each(Pair(::testing::_, "Kestrovan Emergency Lockdown")));
    EXPECT_EQ(laptop.holds().assertions.size(), 2U);
    EXPECT_EQ(entry->sirenRestarts, 1);
}

TEST_F(SecurityLockdownManagerTest, AGuardThatGoesLeavesTheKeysSwallowedAndDrivesNothingMore)
{
    lockDown();
    laptop.desktop().press({KeyEvent::Type::keyDown, KeyEvent::otherKey, "1"}); // its digit is still to be entered
    entry.reset();
    laptop.settle();
    type({"2"});
    laptop.press(KeyEvent::returnKey);
    laptop.powerOff();
    EXPECT_EQ(laptop.desktop().presentationOptions, 506U);
}

} // namespace
} // namespace kestrovan
