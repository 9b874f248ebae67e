#include "platform/linux/SessionClient.h"

#include "platform/Diagnostics.h"

#include <systemd/sd-bus.h>

#include <string_view>
#include <utility>

namespace kestrovan {

namespace {

// The names are those of gnome-session's D-Bus interface, which the managers of MATE and Cinnamon took over.
constexpr const char* manager = "org.gnome.SessionManager";
constexpr const char* managerPath = "/org/gnome/SessionManager";
constexpr const char* clientInterface = "org.gnome.SessionManager.ClientPrivate";

// A manager is busy while the session starts. Whom it registers after that, it would ask in vain.
constexpr std::chrono::minutes registerPatience{2};

} // namespace

/// Our part on the bus's thread: what the manager knows us by.
class SessionClient::Registration {
public:
    /// With the client that the manager speaks to: the path of an object of its own.
    struct Heard {
        std::function<void(const std::string& client)> asked;
        Task ended;
    };

    Registration(Bus& bus, Diagnostics& diagnostics, Identity identity, Heard heard)
        : bus_(bus), diagnostics_(diagnostics), identity_(std::move(identity)), heard_(std::move(heard)),
          signals_(bus.onSignal(std::string("sender='") + manager + "',interface='" + clientInterface + "'",
                                [this](sd_bus_message* signal) { hear(signal); })),
          owner_(bus.onName(manager, [this](bool isOwned) { consider(isOwned); }))
    {}

    void respond(const std::string& client, const std::optional<std::string>& refusal)
    {
        const auto append = [&refusal](sd_bus_message* call) {
            return sd_bus_message_append(call, "bs", refusal ? 0 : 1, refusal.value_or("").c_str());
        };
        bus_.call({manager, client, clientInterface, "EndSessionResponse", false}, append, nullptr);
    }

private:
    void consider(bool isOwned)
    {
        if (isOwned && attempt_)
            return; // heard twice
        attempt_.reset();
        client_.clear();
        if (isOwned)
            enrol();
    }

    void enrol()
    {
        const auto append = [this](sd_bus_message* call) {
            return sd_bus_message_append(call, "ss", identity_.applicationId.c_str(), identity_.startupId.c_str());
        };
        bus_.call({manager, managerPath, manager, "RegisterClient", false, registerPatience}, append,
                  attempt_.emplace().guard([this](const BusReply& reply) {
                      attempt_.reset();
                      settle(reply);
                  }));
    }

    void settle(const BusReply& reply)
    {
        const char* client = nullptr;
        if (reply.message && sd_bus_message_read(reply.message, "o", &client) > 0) {
            client_ = client;
            manager_ = sd_bus_message_get_sender(reply.message);
        } else {
            diagnostics_.line(
                "The session's manager does not take Kestrovan as its client: a log-out is not refused (" +
                reply.errorText + ")");
        }
    }

    // Signals to us alone reach us whoever sends them.
    void hear(sd_bus_message* signal)
    {
        const std::string_view member = sd_bus_message_get_member(signal);
        if (client_ != sd_bus_message_get_path(signal) || manager_ != sd_bus_message_get_sender(signal))
            return;
        if (member == "QueryEndSession")
            heard_.asked(client_);
        if (member == "EndSession")
            respond(client_, std::nullopt);
        if (member == "EndSession" || member == "Stop")
            heard_.ended();
    }

    Bus& bus_;
    Diagnostics& diagnostics_;
    const Identity identity_;
    const Heard heard_;
    std::string client_;  ///< empty while we are none
    std::string manager_; ///< the unique name of the manager's connection
    std::optional<Lifetime> attempt_;
    Subscription signals_;
    Subscription owner_;
};

SessionClient::SessionClient(BusConnection& sessionBus, MainQueue& mainQueue, Diagnostics& diagnostics,
                             Identity identity, Refusal refusal, Task ended)
    : refusal_(std::move(refusal))
{
    const auto asked = lifetime_.guard([this](const std::string& client) { answer(client); });
    const Registration::Heard heard{
        [&mainQueue, asked](const std::string& client) { mainQueue.post([asked, client] { asked(client); }); },
        [&mainQueue, end = lifetime_.guard(std::move(ended))] { mainQueue.post(end); }};
    registration_ =
        BusResident<Registration>(sessionBus, [&diagnostics, identity = std::move(identity), heard](Bus& bus) {
            return std::make_unique<Registration>(bus, diagnostics, identity, heard);
        });
}

SessionClient::~SessionClient() = default;

void SessionClient::answer(const std::string& client) const
{
    registration_.perform(
        [client, refusal = refusal_()](Registration& registration) { registration.respond(client, refusal); });
}

} // namespace kestrovan
