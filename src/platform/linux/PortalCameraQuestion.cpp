#include "platform/linux/PortalCameraQuestion.h"

#include "platform/MainQueue.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

namespace kestrovan {

namespace {

constexpr const char* token = "kestrovan_camera";

// Responses of org.freedesktop.portal.Request; anything else means that the question came to nothing.
constexpr std::uint32_t granted = 0;
constexpr std::uint32_t refused = 1;

// The object by which a portal answers, known beforehand: the answer may come before the call's own reply.
std::string requestPath(Bus& bus)
{
    const char* name = nullptr;
    if (!bus.raw() || sd_bus_get_unique_name(bus.raw(), &name) < 0)
        return {};
    std::string sender(name + 1); // without the colon
    std::ranges::replace(sender, '.', '_');
    return "/org/freedesktop/portal/desktop/request/" + sender + "/" + token;
}

} // namespace

bool isSandboxed(const std::filesystem::path& root)
{
    std::error_code ignored;
    return std::filesystem::exists(root / ".flatpak-info", ignored) ||
           std::getenv("SNAP_NAME") != nullptr; // NOLINT(concurrency-mt-unsafe)
}

/// One question at the portal. Lives on the thread of the session bus.
class PortalCameraQuestion::Request {
public:
    using Settled = std::function<void(std::optional<bool> granted)>;

    Request(Bus& bus, Settled settled)
        : bus_(bus), settled_(std::move(settled)), link_(bus.onLink([this](Bus::Link) { considerLink(); }))
    {
        considerLink();
    }

private:
    void considerLink()
    {
        if (bus_.link() == Bus::Link::up)
            put();
        else if (bus_.link() == Bus::Link::down)
            settled_(std::nullopt);
    }

    void put()
    {
        response_ = bus_.onSignal("sender='org.freedesktop.portal.Desktop',path='" + requestPath(bus_) +
                                      "',interface='org.freedesktop.portal.Request',member='Response'",
                                  [this](sd_bus_message* signal) { hear(signal); });
        const auto append = [](sd_bus_message* call) {
            return sd_bus_message_append(call, "a{sv}", 1, "handle_token", "s", token);
        };
        bus_.call({"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Camera",
                   "AccessCamera"},
                  append, lifetime_.guard([this](const BusReply& reply) {
                      if (reply.error != 0 && reply.error != ETIMEDOUT) // a portal that has to be started first is slow
                          settled_(std::nullopt);
                  }));
    }

    void hear(sd_bus_message* signal)
    {
        std::uint32_t response = 0;
        if (sd_bus_message_read(signal, "u", &response) > 0)
            settled_(response == granted   ? std::optional(true)
                     : response == refused ? std::optional(false)
                                           : std::nullopt);
    }

    Bus& bus_;
    Settled settled_;
    Subscription link_;
    Subscription response_;
    Lifetime lifetime_;
};

PortalCameraQuestion::PortalCameraQuestion(BusConnection& sessionBus, MainQueue& mainQueue)
    : sessionBus_(sessionBus), mainQueue_(mainQueue)
{}

PortalCameraQuestion::~PortalCameraQuestion() = default;

void PortalCameraQuestion::ask(Answer answer)
{
    answer_ = std::move(answer);
    const auto tell = lifetime_.guard([this, question = ++question_](std::optional<bool> granted) {
        if (question == question_)
            settle(granted);
    });
    const Request::Settled settled = [&mainQueue = mainQueue_, tell](std::optional<bool> granted) {
        mainQueue.post([tell, granted] { tell(granted); });
    };
    request_ =
        BusResident<Request>(sessionBus_, [settled](Bus& bus) { return std::make_unique<Request>(bus, settled); });
}

void PortalCameraQuestion::settle(std::optional<bool> granted)
{
    request_.reset();
    if (const auto answer = std::exchange(answer_, nullptr); answer && granted)
        answer(*granted);
}

} // namespace kestrovan
