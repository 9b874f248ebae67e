#pragma once

#include "platform/Lifetime.h"
#include "platform/linux/PulseServer.h"

#include <optional>
#include <vector>

namespace kestrovan {

/// Makes the default sink, and the inputs that are to be loud, 100 % loud and un-muted, and brings to the default sink
/// what somebody moved away from it. Where the server does not say which sink is the default one, it is that of the
/// loud inputs. Lives on the thread of the sound server.
class PulseLoudness {
public:
    explicit PulseLoudness(PulseServer& server);
    PulseLoudness(const PulseLoudness&) = delete;
    PulseLoudness& operator=(const PulseLoudness&) = delete;

    /// Once: now, or if there is no server, when one comes soon.
    void maximize();

    /// From hold() to release(), which nest, whenever the server tells that something has changed.
    void hold();
    void release();

private:
    using Clock = std::chrono::steady_clock;

    void check();
    void noticeChange();
    void askInputs();
    void considerSink(const pa_sink_info& sink);
    void raise(const pa_sink_info& sink);
    void considerInput(const pa_sink_input_info& input);
    void askPlace(std::uint32_t sink);
    void conclude();
    bool isAsking() const;

    PulseServer& server_;
    int holds_ = 0;
    bool isScheduled_ = false;
    bool isStale_ = false; ///< something has changed since the server was asked
    Clock::time_point lastCheck_;
    Clock::time_point asked_;
    Clock::time_point wantedUntil_; ///< a maximize() that found no server
    std::uint32_t defaultSink_ = PA_INVALID_INDEX;
    std::vector<std::uint32_t> strays_; ///< inputs of ours on other sinks
    std::optional<Clock::time_point> astraySince_;
    pulse::OperationHandle sinkQuery_;
    pulse::OperationHandle inputQuery_;
    pulse::OperationHandle placeQuery_;
    Subscription need_;
    Subscription changes_;
    Subscription link_;
    Lifetime lifetime_;
};

} // namespace kestrovan
