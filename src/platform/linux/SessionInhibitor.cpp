#include "platform/linux/SessionInhibitor.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <array>
#include <utility>

namespace kestrovan {

namespace {

// Flags of org.gnome.SessionManager.Inhibit and of the portal's: logging out, switching users, suspending, becoming
// idle.
std::uint32_t flags(SessionWish wish)
{
    return wish == SessionWish::stayAwake ? 4U | 8U : 1U | 2U;
}

constexpr const char* application = "Kestrovan";

// What is granted to somebody whose patience is over could not be given back any more.
constexpr std::chrono::minutes inhibitPatience{2};

} // namespace

/// One service's way of being asked.
struct SessionInhibitor::Service {
    Bus::Call inhibit;
    std::string undo; ///< the method that ends it
    int (*append)(sd_bus_message* call, SessionWish wish, const char* reason);
    bool knowsLogout = false; ///< else all that it knows is staying awake
    bool isPortal = false;    ///< the answer is the path of an object with that method, not a number for it
};

/// What one service has granted.
class SessionInhibitor::Hold {
public:
    Hold(Bus& bus, const Service& service, SessionWish wish, const std::string& reason, std::function<void()> settled)
        : bus_(bus), service_(service), wish_(wish), reason_(reason), settled_(std::move(settled))
    {}
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold() { giveBack(bus_, service_, cookie_); }

    void follow()
    {
        owner_ = bus_.onName(service_.inhibit.destination, [this](bool isOwned) { consider(isOwned); });
    }
    bool isFollowing() const { return static_cast<bool>(owner_); }
    bool isSettled() const { return isSettled_; }
    bool isHeld() const { return !cookie_.empty(); }

private:
    void consider(bool isOwned);
    void take();
    void settle(std::string cookie);
    static std::string cookieOf(const Service& service, const BusReply& reply);
    static void giveBack(Bus& bus, const Service& service, const std::string& cookie);

    Bus& bus_;
    const Service& service_;
    const SessionWish wish_;
    const std::string& reason_;
    const std::function<void()> settled_;
    std::string cookie_; ///< number or path, empty while nothing is held
    bool hasHeard_ = false;
    bool isAsking_ = false;
    bool isSettled_ = false;
    Subscription owner_;
    Lifetime lifetime_;
};

void SessionInhibitor::Hold::consider(bool isOwned)
{
    const bool mayStart = !std::exchange(hasHeard_, true) && service_.inhibit.mayStartService;
    if (isOwned && isAsking_)
        return;      // it came because it was called
    cookie_.clear(); // whoever granted it is gone, or another has come in its place
    if (isOwned || mayStart)
        take();
    else
        settle({});
}

void SessionInhibitor::Hold::take()
{
    isAsking_ = true;
    const auto answer = [this, &bus = bus_, &service = service_, alive = lifetime_.watch()](const BusReply& reply) {
        // A wish that is granted to nobody any more would hold for as long as the connection does.
        if (alive.expired())
            giveBack(bus, service, cookieOf(service, reply));
        else
            settle(cookieOf(service, reply));
    };
    auto call = service_.inhibit;
    call.patience = inhibitPatience;
    bus_.call(
        call, [this](sd_bus_message* message) { return service_.append(message, wish_, reason_.c_str()); }, answer);
}

void SessionInhibitor::Hold::settle(std::string cookie)
{
    isAsking_ = false;
    cookie_ = std::move(cookie);
    isSettled_ = true;
    settled_();
}

std::string SessionInhibitor::Hold::cookieOf(const Service& service, const BusReply& reply)
{
    std::uint32_t number = 0;
    const char* path = nullptr;
    if (!reply.message)
        return {};
    if (service.isPortal)
        return sd_bus_message_read(reply.message, "o", &path) > 0 ? path : "";
    return sd_bus_message_read(reply.message, "u", &number) > 0 ? std::to_string(number) : "";
}

void SessionInhibitor::Hold::giveBack(Bus& bus, const Service& service, const std::string& cookie)
{
    if (cookie.empty())
        return;
    auto call = service.inhibit;
    call.member = service.undo;
    call.mayStartService = false;
    if (service.isPortal) {
        call.path = cookie;
        call.interface = "org.freedesktop.portal.Request";
        return bus.call(call, nullptr, nullptr);
    }
    const auto number = static_cast<std::uint32_t>(std::stoul(cookie));
    bus.call(
        call, [number](sd_bus_message* message) { return sd_bus_message_append(message, "u", number); }, nullptr);
}

namespace {

int appendNames(sd_bus_message* call, SessionWish /*wish*/, const char* reason)
{
    return sd_bus_message_append(call, "ss", application, reason);
}

int appendForGnome(sd_bus_message* call, SessionWish wish, const char* reason)
{
    constexpr std::uint32_t noWindow = 0;
    return sd_bus_message_append(call, "susu", application, noWindow, reason, flags(wish));
}

int appendForPortal(sd_bus_message* call, SessionWish wish, const char* reason)
{
    return sd_bus_message_append(call, "sua{sv}", "", flags(wish), 1, "reason", "s", reason);
}

} // namespace

SessionInhibitor::SessionInhibitor(Bus& bus, SessionWish wish, std::string reason)
    : bus_(bus), wish_(wish), reason_(std::move(reason))
{
    static const std::array<Service, 4> services{{
        {{"org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager", "Inhibit", false},
         "Uninhibit",
         appendForGnome,
         true},
        {{"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver", "Inhibit",
          false},
         "UnInhibit",
         appendNames},
        {{"org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit",
          "org.freedesktop.PowerManagement.Inhibit", "Inhibit", false},
         "UnInhibit",
         appendNames},
        {{"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Inhibit",
          "Inhibit", true},
         "Close",
         appendForPortal,
         true,
         true},
    }};
    for (const auto& service : services)
        if (wish_ == SessionWish::stayAwake || service.knowsLogout)
            holds_.emplace_back(bus_, service, wish_, reason_, lifetime_.guard([this] { considerPortal(); }));
    std::for_each(holds_.begin(), std::prev(holds_.end()), [](Hold& hold) { hold.follow(); });
}

SessionInhibitor::~SessionInhibitor() = default;

void SessionInhibitor::considerPortal()
{
    const auto portal = std::prev(holds_.end());
    const bool isDecided = std::all_of(holds_.begin(), portal, [](const Hold& hold) { return hold.isSettled(); });
    const bool isHeld = std::any_of(holds_.begin(), holds_.end(), [](const Hold& hold) { return hold.isHeld(); });
    if (isDecided && !isHeld && !portal->isFollowing())
        portal->follow();
}

} // namespace kestrovan
