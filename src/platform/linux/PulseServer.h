#pragma once

#include "platform/Observable.h"
#include "platform/linux/Agenda.h"
#include "platform/linux/PulseHandles.h"

#include <set>

struct pollfd;

namespace kestrovan {

class Diagnostics;

/// The sound server (PulseAudio, or PipeWire's stand-in for it) as it is seen from the thread of its PulseConnection.
/// Nothing here waits but turn(); every callback runs on that thread. While there is no server it is looked for again
/// and again, ten times a second as long as somebody needs it.
class PulseServer {
public:
    PulseServer(pa_mainloop& loop, Diagnostics& diagnostics);
    PulseServer(const PulseServer&) = delete;
    PulseServer& operator=(const PulseServer&) = delete;

    /// None while there is no server. A context ends when onLink() tells so; what belongs to it must end then.
    pa_context* context() const { return isUp_ ? context_.get() : nullptr; }

    [[nodiscard]] Subscription onLink(std::function<void(bool isUp)> changed)
    {
        return links_.subscribe(std::move(changed));
    }

    /// Tells whenever a sink, a sink input or the choice of the default sink has changed, whoever did it.
    [[nodiscard]] Subscription onChange(std::function<void()> changed);

    /// Until the subscription ends, a sink input of this program counts among those that are to be loud. It must have
    /// been made already: PipeWire never ends the making of one whose volume is set meanwhile.
    [[nodiscard]] Subscription addLoudInput(std::uint32_t index);
    bool isLoudInput(std::uint32_t index) const { return loudInputs_.contains(index); }

    /// A missing server is looked for at once, not when it is due.
    void lookNow() { nextAttempt_ = {}; }
    /// The same, and often, until the subscription ends.
    [[nodiscard]] Subscription need();

    /// Runs `task` once, `delay` from now. It cannot be taken back: guard it.
    void after(std::chrono::steady_clock::duration delay, Task task) { agenda_.after(delay, std::move(task)); }

    /// The loop of the thread: waits for something to do and does it.
    void turn();

private:
    using Clock = Agenda::Clock;

    void connect();
    void noticeState();
    void lose(const std::string& reason);
    void subscribe();
    Clock::duration pause() const;
    static int poll(pollfd* descriptors, unsigned long count, int timeout, void* self);
    std::optional<Clock::time_point> wakeAt() const;

    pa_mainloop& loop_;
    Diagnostics& diagnostics_;
    pulse::ContextHandle context_;
    bool isUp_ = false;
    bool hasSaid_ = false; ///< that there is no server
    Clock::time_point nextAttempt_;
    int needs_ = 0;
    Signal<bool> links_;
    int listeners_ = 0;
    Signal<> changes_;
    std::set<std::uint32_t> loudInputs_;
    Agenda agenda_;
};

} // namespace kestrovan
