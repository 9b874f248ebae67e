#include "platform/linux/LogindPowerAssertions.h"
#include "rigs/BusDouble.h"
#include "rigs/LoopMainQueue.h"

#include <gmock/gmock.h>

#include <set>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using rigs::PrivateBus;
using rigs::waitUntil;

/// A service that keeps the session awake on request.
class InhibitService {
public:
    InhibitService(const PrivateBus& bus, const std::string& name, bool answersWithPath = false)
        : answersWithPath_(answersWithPath), double_(bus, name, [this](sd_bus_message* call) { return answer(call); })
    {}

    std::size_t wishes()
    {
        const std::scoped_lock lock(mutex_);
        return held_.size();
    }
    std::uint32_t lastFlags()
    {
        const std::scoped_lock lock(mutex_);
        return lastFlags_;
    }
    bool waitFor(std::size_t count)
    {
        return waitUntil([&] { return wishes() == count; });
    }

private:
    int answer(sd_bus_message* call)
    {
        const std::scoped_lock lock(mutex_);
        const std::string member = sd_bus_message_get_member(call);
        if (member == "Inhibit") {
            lastFlags_ = flagsOf(call);
            held_.insert(++last_);
            return answersWithPath_ ? sd_bus_reply_method_return(call, "o", pathOf(last_).c_str())
                                    : sd_bus_reply_method_return(call, "u", last_);
        }
        std::uint32_t cookie = 0;
        if (member == "Close")
            std::erase_if(held_, [&](auto number) { return pathOf(number) == sd_bus_message_get_path(call); });
        else if (sd_bus_message_read(call, "u", &cookie) > 0)
            held_.erase(cookie);
        return sd_bus_reply_method_return(call, "");
    }
    static std::uint32_t flagsOf(sd_bus_message* call)
    {
        std::uint32_t window = 0, flags = 0;
        const std::string signature = sd_bus_message_get_signature(call, 1);
        if (signature == "susu")
            sd_bus_message_read(call, "susu", nullptr, &window, nullptr, &flags);
        else if (signature == "sua{sv}")
            sd_bus_message_read(call, "su", nullptr, &flags);
        return flags;
    }
    static std::string pathOf(std::uint32_t number) { return "/wish/" + std::to_string(number); }

    const bool answersWithPath_;
    std::mutex mutex_;
    std::set<std::uint32_t> held_;
    std::uint32_t last_ = 40;
    std::uint32_t lastFlags_ = 0;
    rigs::BusDouble double_;
};

class SessionInhibitorTest : public testing::Test {
protected:
    Subscription begin() { return assertions.beginActivity(0xFF00FFFFFF, "A test"); }

    PrivateBus session{PrivateBus::Kind::session};
    rigs::LoopMainQueue mainQueue;
    BusConnection systemBus{Bus::Kind::system};
    BusConnection sessionBus{Bus::Kind::session};
    LogindPowerAssertions assertions{systemBus, sessionBus, mainQueue};
};

class EachSessionService : public SessionInhibitorTest, public testing::WithParamInterface<const char*> {};

TEST_P(EachSessionService, HoldsTheWishUntilItsEndAndTakesItAgain)
{
    const bool isPortal = std::string(GetParam()).find("portal") != std::string::npos;
    auto service = std::make_unique<InhibitService>(session, GetParam(), isPortal);
    auto activity = begin();
    ASSERT_TRUE(service->waitFor(1));
    service.reset();
    service = std::make_unique<InhibitService>(session, GetParam(), isPortal);
    ASSERT_TRUE(service->waitFor(1)) << "it has been restarted";
    activity.reset();
    EXPECT_TRUE(service->waitFor(0));
}

INSTANTIATE_TEST_SUITE_P(Desktops, EachSessionService,
                         testing::Values("org.gnome.SessionManager", "org.freedesktop.ScreenSaver",
                                         "org.freedesktop.PowerManagement", "org.freedesktop.portal.Desktop"),
                         [](const auto& name) {
                             std::string text = name.param;
                             std::erase(text, '.');
                             return text;
                         });

TEST_F(SessionInhibitorTest, TheDesktopsOwnServicesGoBeforeThePortal)
{
    InhibitService portal(session, "org.freedesktop.portal.Desktop", true);
    InhibitService screenSaver(session, "org.freedesktop.ScreenSaver");
    InhibitService power(session, "org.freedesktop.PowerManagement");
    auto activity = begin();
    ASSERT_TRUE(screenSaver.waitFor(1) && power.waitFor(1));
    EXPECT_EQ(portal.wishes(), 0U);
    activity.reset();
    EXPECT_TRUE(screenSaver.waitFor(0) && power.waitFor(0));
}

TEST_F(SessionInhibitorTest, LoggingOutIsAnotherWishForThoseWhoKnowOfIt)
{
    constexpr std::uint32_t suspendAndIdle = 12, logoutAndSwitch = 3;
    auto gnome = std::make_unique<InhibitService>(session, "org.gnome.SessionManager");
    InhibitService screenSaver(session, "org.freedesktop.ScreenSaver");
    InhibitService portal(session, "org.freedesktop.portal.Desktop", true);
    const auto stayLoggedIn = [this] {
        return BusResident<SessionInhibitor>(sessionBus, [](Bus& bus) {
            return std::make_unique<SessionInhibitor>(bus, SessionWish::stayLoggedIn, "A test");
        });
    };
    auto wish = stayLoggedIn();
    ASSERT_TRUE(gnome->waitFor(1));
    EXPECT_EQ(gnome->lastFlags(), logoutAndSwitch);
    auto activity = begin();
    ASSERT_TRUE(gnome->waitFor(2) && screenSaver.waitFor(1));
    EXPECT_EQ(gnome->lastFlags(), suspendAndIdle);
    wish.reset();
    ASSERT_TRUE(gnome->waitFor(1));

    gnome.reset();
    wish = stayLoggedIn();
    ASSERT_TRUE(portal.waitFor(1));
    EXPECT_EQ(portal.lastFlags(), logoutAndSwitch);
    EXPECT_EQ(screenSaver.wishes(), 1U);
}

TEST_F(SessionInhibitorTest, NoSessionIsNoTroubleAndAnActivityEndedAtOnceLeavesNothing)
{
    auto lasting = begin();
    session.kill();
    EXPECT_TRUE(begin()) << "ended at once";
    session.start();
    InhibitService screenSaver(session, "org.freedesktop.ScreenSaver");
    ASSERT_TRUE(screenSaver.waitFor(1)) << "taken when the session came";
    for (int i = 0; i < 20; ++i)
        begin().reset();
    lasting.reset();
    EXPECT_TRUE(screenSaver.waitFor(0));
}

} // namespace
} // namespace kestrovan
