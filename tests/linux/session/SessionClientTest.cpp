#include "platform/linux/SessionClient.h"

#include "rigs/CollectedLines.h"
#include "rigs/GnomeSession.h"
#include "rigs/LoopMainQueue.h"

#include <gmock/gmock.h>

namespace kestrovan {
namespace {

using rigs::GnomeSession;
using testing::IsEmpty;

class SessionClientTest : public testing::Test {
protected:
    static constexpr const char* registration = "register test.application start-12";

    /// Until the manager has heard this, and nothing else.
    bool hears(GnomeSession& session, const std::vector<std::string>& all)
    {
        return mainQueue.runUntil([&] { return session.heard() == all; });
    }

    rigs::PrivateBus bus{rigs::PrivateBus::Kind::session};
    rigs::LoopMainQueue mainQueue;
    rigs::CollectedLines diagnostics;
    BusConnection connection{Bus::Kind::session};
    std::optional<std::string> refusal;
    int ends = 0;
    SessionClient client{connection,
                         mainQueue,
                         diagnostics,
                         {.applicationId = "test.application", .startupId = "start-12"},
                         [this] { return refusal; },
                         [this] { ++ends; }};
};

TEST_F(SessionClientTest, RegistersOnceWithEveryManagerThatComesAndOverEveryBus)
{
    refusal = "Armed";
    auto session = std::make_unique<GnomeSession>(bus);
    for (const bool isBusLost : {false, true}) {
        ASSERT_TRUE(hears(*session, {registration}));
        session.reset();
        if (isBusLost) {
            bus.kill();
            bus.start();
        }
        session = std::make_unique<GnomeSession>(bus);
    }
    ASSERT_TRUE(hears(*session, {registration}));
    session->say("QueryEndSession");
    EXPECT_TRUE(hears(*session, {registration, "no: Armed"}));
    EXPECT_THAT(diagnostics.all(), IsEmpty());
}

TEST_F(SessionClientTest, ObeysNobodyButTheManagerAndOnlyWhatIsMeantForIt)
{
    refusal = "Armed";
    GnomeSession session(bus);
    ASSERT_TRUE(hears(session, {registration}));
    for (const char* member : {"QueryEndSession", "EndSession", "Stop"}) {
        session.sayFalsely(bus, member);
        session.say(member, "/org/gnome/SessionManager/Client8");
    }
    session.say("QueryEndSession");
    EXPECT_TRUE(hears(session, {registration, "no: Armed"}));
    EXPECT_EQ(ends, 0);
    session.say("Stop");
    EXPECT_TRUE(mainQueue.runUntil([this] { return ends == 1; }));
}

TEST_F(SessionClientTest, AManagerThatRefusesIsOneLine)
{
    const GnomeSession session(bus, -EACCES);
    const auto said = [this] { return diagnostics.count("a log-out is not refused (Permission denied)"); };
    EXPECT_TRUE(mainQueue.runUntil([&] { return said() == 1; }));
}

} // namespace
} // namespace kestrovan
