#include "platform/linux/PulseServer.h"

#include "platform/Diagnostics.h"

#include <poll.h>

#include <algorithm>
#include <limits>
#include <thread>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto pauseWhenNeeded = 100ms;
constexpr auto pauseWhenIdle = 1s;

} // namespace

PulseServer::PulseServer(pa_mainloop& loop, Diagnostics& diagnostics) : loop_(loop), diagnostics_(diagnostics)
{
    pa_mainloop_set_poll_func(&loop_, poll, this);
}

Subscription PulseServer::onChange(std::function<void()> changed)
{
    ++listeners_;
    subscribe();
    auto registration = std::make_shared<Subscription>(changes_.subscribe(std::move(changed)));
    return Subscription([this, registration] {
        registration->reset();
        --listeners_;
        subscribe();
    });
}

Subscription PulseServer::addLoudInput(std::uint32_t index)
{
    loudInputs_.insert(index);
    changes_.tell();
    return Subscription([this, index] { loudInputs_.erase(index); });
}

Subscription PulseServer::need()
{
    ++needs_;
    lookNow();
    return Subscription([this] { --needs_; });
}

void PulseServer::turn()
{
    while (agenda_.runDue()) {
    }
    if (!context_ && Clock::now() >= nextAttempt_) {
        connect();
        noticeState(); // It may have failed already, and then nothing would end the waiting.
    }
    if (pa_mainloop_iterate(&loop_, true, nullptr) < 0)
        std::this_thread::sleep_for(pauseWhenNeeded); // The system is out of something; a loop without rest is no help.
    noticeState();
}

// A context that has failed never recovers: each attempt is a new one.
void PulseServer::connect()
{
    const pulse::ProplistHandle properties(pa_proplist_new());
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_NAME, "Kestrovan");
    context_.reset(pa_context_new_with_proplist(pa_mainloop_get_api(&loop_), nullptr, properties.get()));
    if (context_)
        pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    else
        lose("no connection can be made");
}

// After each turn, not in the context's callback: what belongs to a context that has failed can then be let go of at
// once, without pulling it from under the library's feet.
void PulseServer::noticeState()
{
    if (!context_)
        return;
    const auto state = pa_context_get_state(context_.get());
    if (!PA_CONTEXT_IS_GOOD(state)) {
        lose(pa_strerror(pa_context_errno(context_.get())));
    } else if (state == PA_CONTEXT_READY && !isUp_) {
        isUp_ = true;
        hasSaid_ = false;
        subscribe();
        links_.tell(true);
    }
}

void PulseServer::lose(const std::string& reason)
{
    if (std::exchange(isUp_, false))
        links_.tell(false);
    context_.reset();
    nextAttempt_ = Clock::now() + pause();
    if (!std::exchange(hasSaid_, true))
        diagnostics_.line("Sound server unavailable: " + reason);
}

void PulseServer::subscribe()
{
    if (!isUp_)
        return;
    const auto told = [](pa_context*, pa_subscription_event_type_t, std::uint32_t, void* self) {
        static_cast<PulseServer*>(self)->changes_.tell();
    };
    pa_context_set_subscribe_callback(context_.get(), told, this);
    const int mask = PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SINK_INPUT | PA_SUBSCRIPTION_MASK_SERVER;
    pulse::send(pa_context_subscribe(
        context_.get(), listeners_ > 0 ? static_cast<pa_subscription_mask_t>(mask) : PA_SUBSCRIPTION_MASK_NULL, nullptr,
        nullptr));
}

PulseServer::Clock::duration PulseServer::pause() const
{
    return needs_ > 0 ? Clock::duration(pauseWhenNeeded) : Clock::duration(pauseWhenIdle);
}

// The loop's own timers go by the time of day, which may jump.
int PulseServer::poll(pollfd* descriptors, unsigned long count, int timeout, void* self)
{
    const auto until = static_cast<PulseServer*>(self)->wakeAt();
    if (until) {
        // Rounded up: to wake a moment too early is to spin.
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*until - Clock::now()).count();
        const auto patience = static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
        timeout = timeout < 0 ? patience : std::min(timeout, patience);
    }
    return ::poll(descriptors, count, timeout);
}

std::optional<PulseServer::Clock::time_point> PulseServer::wakeAt() const
{
    const auto next = agenda_.next();
    if (context_)
        return next;
    return std::min(next.value_or(nextAttempt_), nextAttempt_);
}

} // namespace kestrovan
