#include "app/SingleInstance.h"

#include "l10n/Vendor.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// What a bus or a first program that hangs may cost a start.
constexpr auto patience = 1000ms;

constexpr int mostAttempts = 20;

constexpr const char* tokenKey = "activation-token";
constexpr const char* interface = "org.freedesktop.Application";
constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

// Of RequestName (D-Bus specification).
constexpr std::uint32_t doNotQueue = 4;
constexpr std::uint32_t primaryOwner = 1;
constexpr std::uint32_t alreadyOwner = 4;

/// As D-Bus programs by convention derive it from the name.
std::string objectPath()
{
    std::string path = std::string("/") + vendor::applicationId;
    std::ranges::replace(path, '.', '/');
    std::ranges::replace(path, '-', '_');
    return path;
}

int appendToken(sd_bus_message* call, const std::string& token)
{
    return token.empty() ? sd_bus_message_append(call, "a{sv}", 0)
                         : sd_bus_message_append(call, "a{sv}", 1, tokenKey, "s", token.c_str());
}

std::string readToken(sd_bus_message* call)
{
    std::string token;
    sd_bus_message_enter_container(call, SD_BUS_TYPE_ARRAY, "{sv}");
    while (sd_bus_message_enter_container(call, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const char* key = "";
        const char* value = nullptr;
        sd_bus_message_read(call, "s", &key);
        if (key == std::string_view(tokenKey) && sd_bus_message_read(call, "v", "s", &value) > 0)
            token = value;
        else
            sd_bus_message_skip(call, "v");
        sd_bus_message_exit_container(call);
    }
    return token;
}

} // namespace

/// Our part on the bus's thread: the name, the object, and the calls to whoever has the name already.
class SingleInstance::Name {
public:
    Name(Bus& bus, std::promise<Role> role, std::string launchToken, Activated activated)
        : bus_(bus), role_(std::move(role)), activated_(std::move(activated)), token_(std::move(launchToken)),
          link_(bus.onLink([this](Bus::Link link) { consider(link); }))
    {
        consider(bus.link());
    }
    Name(const Name&) = delete;
    Name& operator=(const Name&) = delete;
    ~Name() { sd_bus_slot_unref(object_); }

private:
    void consider(Bus::Link link)
    {
        object_ = sd_bus_slot_unref(object_);
        if (link == Bus::Link::down)
            settle(Role::alone);
        if (link != Bus::Link::up || isSecond_)
            return;
        // Before the name, so that nobody finds the one without the other.
        sd_bus_add_object(bus_.raw(), &object_, objectPath().c_str(), receive, this);
        requestName();
    }

    void requestName()
    {
        const auto append = [](sd_bus_message* call) {
            return sd_bus_message_append(call, "su", vendor::applicationId, doNotQueue);
        };
        bus_.call({busName, busPath, busName, "RequestName"}, append, lifetime_.guard([this](const BusReply& reply) {
            std::uint32_t answer = 0;
            if (!reply.message || sd_bus_message_read(reply.message, "u", &answer) < 0)
                return settle(Role::unknown);
            if (answer == primaryOwner || answer == alreadyOwner)
                return settle(Role::first);
            if (!isSettled_)
                activateFirst();
        }));
    }

    void activateFirst()
    {
        const auto append = [this](sd_bus_message* call) { return appendToken(call, token_); };
        bus_.call({vendor::applicationId, objectPath(), interface, "Activate", false}, append,
                  lifetime_.guard([this](const BusReply& reply) {
                      // One that is just ending has the name for another moment, and nobody behind it.
                      if (reply.error != 0 && reply.error != ETIMEDOUT && ++attempts_ < mostAttempts)
                          return requestName();
                      isSecond_ = true;
                      settle(reply.error == 0 ? Role::second : Role::secondMute);
                  }));
    }

    void settle(Role role)
    {
        if (!std::exchange(isSettled_, true))
            role_.set_value(role);
    }

    static int receive(sd_bus_message* call, void* self, sd_bus_error* /*error*/)
    {
        if (sd_bus_message_is_method_call(call, interface, "Activate") <= 0)
            return 0;
        static_cast<Name*>(self)->activated_(readToken(call));
        return sd_bus_reply_method_return(call, "");
    }

    Bus& bus_;
    std::promise<Role> role_;
    const Activated activated_;
    const std::string token_;
    bool isSettled_ = false;
    bool isSecond_ = false;
    int attempts_ = 0;
    sd_bus_slot* object_ = nullptr;
    Subscription link_;
    Lifetime lifetime_;
};

SingleInstance::SingleInstance(BusConnection& sessionBus, MainQueue& mainQueue, std::string launchToken,
                               Activated activated)
{
    auto promise = std::make_shared<std::promise<Role>>();
    role_ = promise->get_future();
    const Activated post = [&mainQueue, show = lifetime_.guard(std::move(activated))](const std::string& token) {
        mainQueue.post([show, token] { show(token); });
    };
    name_ = BusResident<Name>(sessionBus, [promise, launchToken = std::move(launchToken), post](Bus& bus) {
        return std::make_unique<Name>(bus, std::move(*promise), launchToken, post);
    });
}

SingleInstance::~SingleInstance() = default;

SingleInstance::Role SingleInstance::role()
{
    return role_.wait_for(patience) == std::future_status::ready ? role_.get() : Role::unknown;
}

} // namespace kestrovan
