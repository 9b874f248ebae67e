#include "platform/linux/PortalCameraQuestion.h"

#include "rigs/BusDouble.h"
#include "rigs/LoopMainQueue.h"
#include "rigs/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;

/// A portal that answers each question with the next of `responses`, and leaves it open once there is none.
class Portal {
public:
    explicit Portal(const rigs::PrivateBus& bus, std::deque<std::uint32_t> responses = {})
        : responses_(std::move(responses)),
          double_(bus, "org.freedesktop.portal.Desktop", [this](sd_bus_message* call) { return take(call); })
    {}

    std::atomic<int> questions = 0;

private:
    int take(sd_bus_message* call)
    {
        const char* token = nullptr;
        if (sd_bus_message_is_method_call(call, "org.freedesktop.portal.Camera", "AccessCamera") <= 0)
            return -ENOTSUP;
        sd_bus_message_enter_container(call, 'a', "{sv}");
        sd_bus_message_enter_container(call, 'e', "sv");
        sd_bus_message_skip(call, "s");
        sd_bus_message_read(call, "v", "s", &token);
        std::string sender = sd_bus_message_get_sender(call);
        sender.erase(0, 1);
        std::ranges::replace(sender, '.', '_');
        const auto path = "/org/freedesktop/portal/desktop/request/" + sender + "/" + token;
        if (!responses_.empty()) { // before the reply, as it may well be
            sd_bus_emit_signal(sd_bus_message_get_bus(call), path.c_str(), "org.freedesktop.portal.Request", "Response",
                               "ua{sv}", responses_.front(), 0);
            responses_.pop_front();
        }
        ++questions;
        return sd_bus_reply_method_return(call, "o", path.c_str());
    }

    std::deque<std::uint32_t> responses_;
    rigs::BusDouble double_;
};

class PortalCameraQuestionTest : public testing::Test {
protected:
    /// What the answer of a question that is not answered any more looks like: nobody holds it.
    std::weak_ptr<int> ask()
    {
        auto held = std::make_shared<int>(0);
        question.ask([this, held](bool granted) { answers.push_back(granted); });
        return held;
    }

    rigs::PrivateBus session{rigs::PrivateBus::Kind::session};
    rigs::LoopMainQueue mainQueue;
    BusConnection sessionBus{Bus::Kind::session};
    PortalCameraQuestion question{sessionBus, mainQueue};
    std::vector<bool> answers;
};

TEST_F(PortalCameraQuestionTest, YesAndNoArriveAndAClosedDialogIsNoAnswer)
{
    const Portal portal(session, {0, 1, 2});
    ask();
    ASSERT_TRUE(mainQueue.runUntil([&] { return answers == std::vector{true}; }));
    ask();
    ASSERT_TRUE(mainQueue.runUntil([&] { return answers == std::vector({true, false}); }));
    const auto closed = ask();
    ASSERT_TRUE(mainQueue.runUntil([&] { return closed.expired(); }));
    EXPECT_EQ(answers.size(), 2U);
    EXPECT_EQ(portal.questions, 3);
}

TEST_F(PortalCameraQuestionTest, WithoutAPortalOrABusTheQuestionIsLetGoOf)
{
    const auto noPortal = ask();
    ASSERT_TRUE(mainQueue.runUntil([&] { return noPortal.expired(); }));
    const auto open = [this] {
        const Portal portal(session);
        auto unanswered = ask();
        EXPECT_TRUE(rigs::waitUntil([&] { return portal.questions == 1; }));
        return unanswered;
    }();
    mainQueue.runFor(50ms);
    EXPECT_FALSE(open.expired()) << "the user still thinks";
    session.kill();
    ASSERT_TRUE(mainQueue.runUntil([&] { return open.expired(); }));
    const auto noBus = ask();
    ASSERT_TRUE(mainQueue.runUntil([&] { return noBus.expired(); }));
    EXPECT_TRUE(answers.empty());
}

TEST(Sandbox, IsKnownByItsMarks)
{
    const TemporaryFolder root;
    unsetenv("SNAP_NAME");
    EXPECT_FALSE(isSandboxed(root.path()));
    std::ofstream(root.path() / ".flatpak-info") << "[Application]\n";
    EXPECT_TRUE(isSandboxed(root.path()));
    setenv("SNAP_NAME", "guard", 1);
    EXPECT_TRUE(isSandboxed(root.path() / "nowhere"));
    unsetenv("SNAP_NAME");
}

} // namespace
} // namespace kestrovan
