#include "platform/linux/PortalMotionPreference.h"

#include "platform/MainQueue.h"

#include <systemd/sd-bus.h>

#include <cstdlib>
#include <map>
#include <string_view>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* settingsInterface = "org.freedesktop.portal.Settings";

// A portal that has to be started first is slow.
constexpr auto portalPatience = 10s;

constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* gnome = "org.gnome.desktop.interface";
constexpr const char* kde = "org.kde.kdeglobals.KDE";

/// The setting that a variant under the message's cursor holds, if it is one of those that tell, as: keep still or not.
/// The cursor is behind it afterwards.
std::optional<bool> readSetting(sd_bus_message* message, std::string_view group, std::string_view key)
{
    const char* content = nullptr;
    if (sd_bus_message_peek_type(message, nullptr, &content) <= 0)
        return std::nullopt;
    const std::string_view type(content);
    if (group == appearance && key == "reduced-motion" && type == "u") {
        std::uint32_t reduced = 0;
        sd_bus_message_read(message, "v", "u", &reduced);
        return reduced == 1;
    }
    if (group == gnome && key == "enable-animations" && type == "b") {
        int enabled = 1;
        sd_bus_message_read(message, "v", "b", &enabled);
        return enabled == 0;
    }
    if (group == kde && key == "AnimationDurationFactor" && type == "s") {
        const char* factor = "1";
        sd_bus_message_read(message, "v", "s", &factor);
        return std::strtod(factor, nullptr) == 0;
    }
    sd_bus_message_skip(message, "v");
    return std::nullopt;
}

} // namespace

/// Asks the portal, and follows it. Lives on the thread of the session bus.
class PortalMotionPreference::Reader {
public:
    Reader(Bus& bus, std::function<void(bool isReduced)> told)
        : bus_(bus), told_(std::move(told)),
          changes_(bus.onSignal(std::string("sender='") + portal + "',path='" + portalPath + "',interface='" +
                                    settingsInterface + "',member='SettingChanged'",
                                [this](sd_bus_message* signal) { hear(signal); })),
          owner_(bus.onName(portal,
                            [this](bool isOwned) {
                                if (isOwned)
                                    ask();
                            })),
          link_(bus.onLink([this](Bus::Link link) {
              if (link == Bus::Link::up)
                  ask();
          }))
    {
        ask();
    }

private:
    void ask()
    {
        if (bus_.link() != Bus::Link::up)
            return;
        const auto append = [](sd_bus_message* call) {
            return sd_bus_message_append(call, "as", 3, appearance, gnome, kde);
        };
        bus_.call({portal, portalPath, settingsInterface, "ReadAll", true, portalPatience}, append,
                  lifetime_.guard([this](const BusReply& reply) {
                      if (reply.message)
                          readAll(reply.message);
                  }));
    }

    void readAll(sd_bus_message* reply)
    {
        if (sd_bus_message_enter_container(reply, 'a', "{sa{sv}}") <= 0)
            return;
        while (sd_bus_message_enter_container(reply, 'e', "sa{sv}") > 0) {
            const char* group = nullptr;
            sd_bus_message_read(reply, "s", &group);
            readGroup(reply, group);
            sd_bus_message_exit_container(reply);
        }
        tell();
    }

    void readGroup(sd_bus_message* reply, const char* group)
    {
        if (!group || sd_bus_message_enter_container(reply, 'a', "{sv}") <= 0)
            return;
        while (sd_bus_message_enter_container(reply, 'e', "sv") > 0) {
            const char* key = nullptr;
            sd_bus_message_read(reply, "s", &key);
            note(reply, group, key ? key : "");
            sd_bus_message_exit_container(reply);
        }
        sd_bus_message_exit_container(reply);
    }

    void hear(sd_bus_message* signal)
    {
        const char* group = nullptr;
        const char* key = nullptr;
        if (sd_bus_message_read(signal, "ss", &group, &key) <= 0)
            return;
        note(signal, group, key);
        tell();
    }

    void note(sd_bus_message* message, const char* group, const char* key)
    {
        if (const auto isReduced = readSetting(message, group, key))
            wishes_[group] = *isReduced;
    }

    void tell() const
    {
        bool isReduced = false;
        for (const auto& wish : wishes_)
            isReduced = isReduced || wish.second;
        told_(isReduced);
    }

    Bus& bus_;
    const std::function<void(bool)> told_;
    std::map<std::string, bool> wishes_; ///< by group: to keep still
    Subscription changes_;
    Subscription owner_;
    Subscription link_;
    Lifetime lifetime_;
};

PortalMotionPreference::PortalMotionPreference(BusConnection& sessionBus, MainQueue& mainQueue)
{
    const auto told = lifetime_.guard([this](bool now) {
        if (now != isReduced)
            isReduced = now;
    });
    reader_ = BusResident<Reader>(sessionBus, [&mainQueue, told](Bus& bus) {
        return std::make_unique<Reader>(bus,
                                        [&mainQueue, told](bool now) { mainQueue.post([told, now] { told(now); }); });
    });
}

PortalMotionPreference::~PortalMotionPreference() = default;

} // namespace kestrovan
