#include "platform/linux/PortalMotionPreference.h"

#include "rigs/BusDouble.h"
#include "rigs/LoopMainQueue.h"

#include <gtest/gtest.h>

#include <array>

namespace kestrovan {
namespace {

/// A portal that knows one setting, and others that tell nothing.
class SettingsPortal {
public:
    SettingsPortal(const rigs::PrivateBus& bus, std::string group, std::string key, std::string type, std::string value)
        : group_(std::move(group)), key_(std::move(key)), type_(std::move(type)), value_(std::move(value)),
          double_(bus, "org.freedesktop.portal.Desktop", [this](sd_bus_message* call) { return answer(call); })
    {}

    void change(const std::string& value)
    {
        double_.perform([&](sd_bus* bus) {
            value_ = value;
            send([&](const char* type, auto content) {
                return sd_bus_emit_signal(bus, "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
                                          "SettingChanged", "ssv", group_.c_str(), key_.c_str(), type, content);
            });
        });
    }

private:
    int answer(sd_bus_message* call) const
    {
        if (sd_bus_message_is_method_call(call, "org.freedesktop.portal.Settings", "ReadAll") <= 0)
            return -ENOTSUP;
        return send([&](const char* type, auto content) {
            return sd_bus_reply_method_return(call, "a{sa{sv}}", 1, group_.c_str(), 3, "color-scheme", "u", 1,
                                              "enable-animations", "s", "of another type", key_.c_str(), type, content);
        });
    }
    /// Hands `sender` the type and the content of the setting.
    template <class Sender>
    int send(Sender sender) const
    {
        return type_ == "s" ? sender("s", value_.c_str()) : sender(type_.c_str(), std::stoi(value_));
    }

    const std::string group_;
    const std::string key_;
    const std::string type_;
    std::string value_;
    rigs::BusDouble double_;
};

class PortalMotionPreferenceTest : public testing::Test {
protected:
    bool becomes(const PortalMotionPreference& preference, bool isReduced)
    {
        return mainQueue.runUntil([&] { return preference.isReduced == isReduced; });
    }

    rigs::PrivateBus bus{rigs::PrivateBus::Kind::session};
    rigs::LoopMainQueue mainQueue;
    BusConnection connection{Bus::Kind::session};
};

TEST_F(PortalMotionPreferenceTest, HearsEachDesktopInItsOwnWords)
{
    using Words = std::array<const char*, 5>;
    for (const auto& [group, key, type, still, moving] :
         {Words{"org.freedesktop.appearance", "reduced-motion", "u", "1", "0"},
          Words{"org.gnome.desktop.interface", "enable-animations", "b", "0", "1"},
          Words{"org.kde.kdeglobals.KDE", "AnimationDurationFactor", "s", "0", "0.5"}}) {
        SettingsPortal portal(bus, group, key, type, still);
        PortalMotionPreference preference(connection, mainQueue);
        EXPECT_TRUE(becomes(preference, true)) << group;
        portal.change(moving);
        EXPECT_TRUE(becomes(preference, false)) << group;
    }
}

TEST_F(PortalMotionPreferenceTest, AsksAPortalThatComesLate)
{
    PortalMotionPreference preference(connection, mainQueue);
    const SettingsPortal portal(bus, "org.gnome.desktop.interface", "enable-animations", "b", "0");
    EXPECT_TRUE(becomes(preference, true));
}

} // namespace
} // namespace kestrovan
