#include "app/AppDelegate.h"

#include "GuardTest.h"

using namespace kestrovan;

namespace {

using Reply = AppDelegate::TerminateReply;

class AppDelegateTest : public test::GuardTest {
protected:
    AppDelegateTest() { delegate.sharedAppState = &guard(); }

    /// Asks to quit; how often that beeped.
    std::pair<Reply, int> ask()
    {
        const int before = laptop.speaker().beeps();
        const auto reply = delegate.applicationShouldTerminate();
        return {reply, laptop.speaker().beeps() - before};
    }

    AppDelegate delegate{laptop.desktop()};
};

TEST_F(AppDelegateTest, QuittingIsRefusedWithABeepWhereItWouldEndWhatTheGuardProtects)
{
    const std::pair allowed{Reply::terminateNow, 0};
    const std::pair refused{Reply::terminateCancel, 1};
    guard().togglePinRequirement(true);
    guard().startArming();
    EXPECT_EQ(ask(), allowed) << "the countdown may be left";
    laptop.advance(std::chrono::seconds(3));
    EXPECT_EQ(ask(), refused);
    guard().togglePinRequirement(false);
    EXPECT_EQ(ask(), allowed);
    laptop.unplugCharger();
    EXPECT_EQ(ask(), refused) << "an alarm, even without a PIN";
}

} // namespace
