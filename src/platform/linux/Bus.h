#pragma once

#include "platform/MainQueue.h"
#include "platform/Observable.h"

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>

struct sd_bus;
struct sd_bus_message;
struct sd_bus_slot;

namespace kestrovan {

/// What a service answered to a call, or why there is no answer.
struct BusReply {
    int error = 0;                     ///< 0, else an errno: EACCES for a refusal, ETIMEDOUT, ECONNRESET, …
    std::string errorText;             ///< then, for people
    sd_bus_message* message = nullptr; ///< the answer, as long as the callback runs; none on an error
};

/// A message bus as it is seen from the thread of its BusConnection. Nothing here waits; every callback runs on that
/// thread. A lost connection is made again by itself, with all matches and name watches.
class Bus {
public:
    enum class Kind { system, session };
    enum class Link { connecting, up, down };
    using Clock = std::chrono::steady_clock;

    /// Not the bus's own 25 s: nobody waits, but much is put off until the answer.
    static constexpr std::chrono::milliseconds usualPatience{700};

    struct Call {
        std::string destination;
        std::string path;
        std::string interface;
        std::string member;
        bool mayStartService = true; ///< false: a service that does not run is not started for this
        std::chrono::milliseconds patience = usualPatience; ///< with a service that hangs
    };

    using Arguments = std::function<int(sd_bus_message* message)>; ///< appends them; below 0 on failure
    using Answer = std::function<void(const BusReply& reply)>;

    /// As the D-Bus Specification writes addresses.
    explicit Bus(std::string address) : address_(std::move(address)) {}
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    ~Bus();

    Link link() const { return link_; }
    int linkError() const { return linkError_; } ///< why the link is down, an errno

    [[nodiscard]] Subscription onLink(std::function<void(Link link)> changed)
    {
        return links_.subscribe(std::move(changed));
    }

    /// Calls a method. `answer`, if any, comes once: with ENOTCONN at once where the link is not up, with ETIMEDOUT
    /// from a service that hangs.
    void call(const Call& call, const Arguments& arguments, Answer answer);

    /// Tells whether somebody owns `name`: soon, and then whenever it changes hands. Silent while the link is down.
    [[nodiscard]] Subscription onName(const std::string& name, std::function<void(bool isOwned)> told);

    /// Receives the signals that fit `rule` (a match rule of the D-Bus specification, without the type).
    [[nodiscard]] Subscription onSignal(const std::string& rule, std::function<void(sd_bus_message* signal)> received);

    /// Runs `task` once, `delay` from now. It cannot be taken back: guard it.
    void after(std::chrono::milliseconds delay, Task task);

    /// For what is not offered here (names and objects of our own); none while the link is not up.
    sd_bus* raw() const { return link_ == Link::up ? bus_ : nullptr; }

    /// The loop of the thread: does what can be done now; true if it should be called again before waiting.
    bool turn();
    void prepareToWait(int& descriptor, short& events, std::optional<Clock::time_point>& until) const;

private:
    struct Match;
    struct PendingCall;
    struct WatchedName {
        std::optional<bool> isOwned;
        Signal<bool> told;
        Subscription match;
    };

    void connect();
    void disconnect();
    void fail(int error);
    void noticeReadiness();
    void install(Match& match);
    void askOwner(const std::string& name);
    void tellOwner(const std::string& name, bool isOwned);
    bool runDueTimers();

    const std::string address_;
    sd_bus* bus_ = nullptr;
    Link link_ = Link::connecting;
    int linkError_ = 0;
    Clock::time_point nextAttempt_; ///< to connect, or the end of the patience with the one that is being made
    std::chrono::milliseconds backOff_{0};
    Signal<Link> links_;
    std::map<std::string, WatchedName> names_;
    std::shared_ptr<std::list<std::shared_ptr<Match>>> matches_ = std::make_shared<std::list<std::shared_ptr<Match>>>();
    std::multimap<Clock::time_point, Task> timers_;
};

} // namespace kestrovan
