#include "platform/linux/Bus.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// A bus that is restarted is back within a moment; one that does not exist must not cost wake-ups.
constexpr auto firstBackOff = 100ms;
constexpr auto longestBackOff = 5000ms;

// A bus that takes the connection but does not answer is as good as none.
constexpr auto handshakeTimeLimit = 5000ms;

// Somebody whose bus hangs wants to know the owner when it goes on.
constexpr auto ownerRetry = 1000ms;

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

std::uint64_t microseconds(std::chrono::microseconds duration)
{
    return static_cast<std::uint64_t>(duration.count());
}

BusReply replyOf(sd_bus_message* message)
{
    const sd_bus_error* error = sd_bus_message_get_error(message);
    if (!error)
        return {.error = 0, .errorText = {}, .message = message};
    const int number = sd_bus_error_get_errno(error);
    return {.error = number != 0 ? number : EIO,
            .errorText = error->message ? error->message : error->name,
            .message = nullptr};
}

BusReply failure(int error)
{
    return {.error = error, .errorText = std::strerror(error), .message = nullptr}; // NOLINT(concurrency-mt-unsafe)
}

} // namespace

/// A signal that somebody waits for. The slot is the bus library's part of it, none while the link is down.
struct Bus::Match : std::enable_shared_from_this<Match> {
    Match(std::string text, std::function<void(sd_bus_message*)> callback)
        : rule("type='signal'," + std::move(text)), received(std::move(callback))
    {}
    Match(const Match&) = delete;
    Match& operator=(const Match&) = delete;
    ~Match() { drop(); }

    void drop() { slot = sd_bus_slot_unref(slot); }

    static int deliver(sd_bus_message* message, void* match, sd_bus_error*)
    {
        const auto self = static_cast<Match*>(match)->shared_from_this(); // the callback may end the subscription
        self->received(message);
        return 0;
    }

    std::string rule;
    std::function<void(sd_bus_message*)> received;
    sd_bus_slot* slot = nullptr;
};

/// A call on its way; it lives as long as the bus library's slot for it.
struct Bus::PendingCall {
    Answer answer;

    void finish(const BusReply& reply)
    {
        if (const auto once = std::exchange(answer, nullptr))
            once(reply);
    }
    static int deliver(sd_bus_message* message, void* call, sd_bus_error*)
    {
        static_cast<PendingCall*>(call)->finish(replyOf(message));
        return 0;
    }
    static void destroy(void* call)
    {
        const std::unique_ptr<PendingCall> self(static_cast<PendingCall*>(call));
        self->finish(failure(ECONNRESET));
    }
};

Bus::~Bus()
{
    disconnect();
}

void Bus::call(const Call& call, const Arguments& arguments, Answer answer)
{
    auto pending = std::make_unique<PendingCall>(PendingCall{std::move(answer)});
    if (link_ != Link::up)
        return pending->finish(failure(ENOTCONN));
    sd_bus_message* message = nullptr;
    int result = sd_bus_message_new_method_call(bus_, &message, call.destination.c_str(), call.path.c_str(),
                                                call.interface.c_str(), call.member.c_str());
    if (result >= 0 && !call.mayStartService)
        result = sd_bus_message_set_auto_start(message, 0);
    if (result >= 0 && arguments)
        result = arguments(message);

    sd_bus_slot* slot = nullptr;
    if (result >= 0)
        result =
            sd_bus_call_async(bus_, &slot, message, PendingCall::deliver, pending.get(), microseconds(call.patience));
    sd_bus_message_unref(message);
    if (result < 0)
        return pending->finish(failure(-result));
    sd_bus_slot_set_destroy_callback(slot, PendingCall::destroy);
    sd_bus_slot_set_floating(slot, 1);
    sd_bus_slot_unref(slot);
    (void)pending.release();
}

Subscription Bus::onSignal(const std::string& rule, std::function<void(sd_bus_message*)> received)
{
    const auto match = std::make_shared<Match>(rule, std::move(received));
    matches_->push_back(match);
    if (link_ == Link::up)
        install(*match);
    return Subscription([matches = std::weak_ptr(matches_), match] {
        match->drop();
        if (const auto list = matches.lock())
            list->remove(match);
    });
}

void Bus::install(Match& match)
{
    // Without a callback for the installation a refused rule would end the connection.
    const auto ignore = [](sd_bus_message*, void*, sd_bus_error*) { return 0; };
    sd_bus_add_match_async(bus_, &match.slot, match.rule.c_str(), Match::deliver, ignore, &match);
}

Subscription Bus::onName(const std::string& name, std::function<void(bool)> told)
{
    auto& watched = names_[name];
    if (!watched.match) {
        const std::string rule = std::string("sender='") + busName + "',interface='" + busName +
                                 "',member='NameOwnerChanged',arg0='" + name + "'";
        watched.match = onSignal(rule, [this, name](sd_bus_message* signal) {
            const char *changed = nullptr, *before = nullptr, *now = nullptr;
            if (sd_bus_message_read(signal, "sss", &changed, &before, &now) > 0)
                tellOwner(name, *now != '\0');
        });
        askOwner(name);
    }
    struct Listener {
        std::function<void(bool)> told;
        bool hasHeard = false;

        void tell(bool isOwned)
        {
            hasHeard = true;
            told(isOwned);
        }
    };
    const auto listener = std::make_shared<Listener>(Listener{std::move(told)});
    // What others have heard already, this one hears late, unless news come first.
    if (watched.isOwned)
        after(0ms, [&watched, late = std::weak_ptr(listener)] {
            if (const auto self = late.lock(); self && !self->hasHeard && watched.isOwned)
                self->tell(*watched.isOwned);
        });
    return watched.told.subscribe([listener](bool isOwned) { listener->tell(isOwned); });
}

void Bus::askOwner(const std::string& name)
{
    if (link_ != Link::up)
        return;
    const auto append = [&name](sd_bus_message* message) { return sd_bus_message_append(message, "s", name.c_str()); };
    call({busName, busPath, busName, "NameHasOwner"}, append, [this, name](const BusReply& reply) {
        int isOwned = 0;
        if (reply.message && sd_bus_message_read(reply.message, "b", &isOwned) > 0)
            tellOwner(name, isOwned != 0);
        else if (reply.error == ETIMEDOUT)
            after(ownerRetry, [this, name] { askOwner(name); });
    });
}

void Bus::tellOwner(const std::string& name, bool isOwned)
{
    auto& watched = names_[name];
    watched.isOwned = isOwned;
    watched.told.tell(isOwned);
}

void Bus::after(std::chrono::milliseconds delay, Task task)
{
    timers_.emplace(Clock::now() + delay, std::move(task));
}

bool Bus::turn()
{
    bool isBusy = runDueTimers();
    if (!bus_ && Clock::now() >= nextAttempt_)
        connect();
    if (!bus_)
        return isBusy;
    const int result = sd_bus_process(bus_, nullptr);
    if (result < 0) {
        fail(-result);
        return isBusy;
    }
    noticeReadiness();
    if (link_ != Link::up && Clock::now() >= nextAttempt_)
        fail(ETIMEDOUT);
    return isBusy || result > 0;
}

bool Bus::runDueTimers()
{
    if (timers_.empty() || timers_.begin()->first > Clock::now())
        return false;
    const auto due = timers_.extract(timers_.begin());
    due.mapped()();
    return true;
}

void Bus::prepareToWait(int& descriptor, short& events, std::optional<Clock::time_point>& until) const
{
    const auto noLaterThan = [&until](Clock::time_point time) { until = until ? std::min(*until, time) : time; };
    descriptor = -1;
    if (!timers_.empty())
        noLaterThan(timers_.begin()->first);
    if (link_ != Link::up)
        noLaterThan(nextAttempt_);
    if (!bus_)
        return;
    descriptor = sd_bus_get_fd(bus_);
    events = static_cast<short>(std::max(sd_bus_get_events(bus_), 0));
    std::uint64_t time = UINT64_MAX; // of CLOCK_MONOTONIC, as the steady clock's
    if (sd_bus_get_timeout(bus_, &time) >= 0 && time != UINT64_MAX)
        noLaterThan(Clock::time_point(std::chrono::microseconds(time)));
}

void Bus::connect()
{
    sd_bus* opened = nullptr;
    int result = sd_bus_new(&opened);
    if (result >= 0)
        result = sd_bus_set_address(opened, address_.c_str());
    if (result >= 0)
        result = sd_bus_set_bus_client(opened, true);
    if (result >= 0)
        result = sd_bus_start(opened);
    if (result < 0) {
        sd_bus_unref(opened);
        return fail(-result);
    }
    bus_ = opened;
    nextAttempt_ = Clock::now() + handshakeTimeLimit;
}

void Bus::noticeReadiness()
{
    if (link_ == Link::up || sd_bus_is_ready(bus_) <= 0)
        return;
    backOff_ = 0ms;
    link_ = Link::up;
    for (const auto& match : *matches_)
        install(*match);
    for (const auto& watched : names_)
        askOwner(watched.first);
    links_.tell(link_);
}

void Bus::fail(int error)
{
    const bool isNews = link_ != Link::down;
    disconnect();
    linkError_ = error;
    backOff_ = backOff_ == 0ms ? firstBackOff : std::min(backOff_ * 2, longestBackOff);
    nextAttempt_ = Clock::now() + backOff_;
    if (isNews)
        links_.tell(link_);
}

void Bus::disconnect()
{
    link_ = Link::down;
    for (const auto& match : *matches_)
        match->drop();
    for (auto& watched : names_)
        watched.second.isOwned.reset();
    sd_bus_close_unref(std::exchange(bus_, nullptr)); // the calls on their way are answered now
}

} // namespace kestrovan
