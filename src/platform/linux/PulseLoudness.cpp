#include "platform/linux/PulseLoudness.h"

#include <algorithm>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// Every change of ours is told to us as well, and PipeWire tells of it in several parts: one look at the end of them
// is enough. Short enough for nobody to hear it.
constexpr auto restBetweenChecks = 10ms;
// A server moves the sounds to a new default sink by itself, PipeWire a moment after it has told of it. A sound that
// is moved by its own program stays where it was put, which should be the exception.
constexpr auto patienceWithStrays = 1s;
// Nobody likes the volume to jump up long after the sound that it was meant for.
constexpr auto patienceWithServer = 2s;
// The library itself waits 30 s for an answer.
constexpr auto patienceWithAnswers = 1s;
// A sound card's own steps may round what was asked for.
constexpr pa_volume_t tolerance = PA_VOLUME_NORM / 200;

bool isFull(const pa_cvolume& volume)
{
    return pa_cvolume_min(&volume) >= PA_VOLUME_NORM - tolerance &&
           pa_cvolume_max(&volume) <= PA_VOLUME_NORM + tolerance;
}

// Channel by channel: a single volume for all of them leaves the balance as it is, all the way to one side.
pa_cvolume full(const pa_cvolume& present)
{
    pa_cvolume volume{};
    return *pa_cvolume_set(&volume, present.channels, PA_VOLUME_NORM);
}

bool isRunning(const pulse::OperationHandle& operation)
{
    return operation && pa_operation_get_state(operation.get()) == PA_OPERATION_RUNNING;
}

} // namespace

PulseLoudness::PulseLoudness(PulseServer& server) : server_(server)
{
    link_ = server_.onLink([this](bool isUp) {
        if (isUp && (holds_ > 0 || Clock::now() < wantedUntil_))
            check();
    });
}

void PulseLoudness::maximize()
{
    wantedUntil_ = Clock::now() + patienceWithServer;
    server_.lookNow();
    check();
}

void PulseLoudness::hold()
{
    if (++holds_ > 1)
        return;
    need_ = server_.need();
    changes_ = server_.onChange([this] { noticeChange(); });
    check();
}

void PulseLoudness::release()
{
    if (--holds_ > 0)
        return;
    changes_.reset();
    need_.reset();
    astraySince_.reset();
}

void PulseLoudness::noticeChange()
{
    if (isScheduled_)
        return;
    isScheduled_ = true;
    const auto rest = std::max(lastCheck_ + restBetweenChecks - Clock::now(), Clock::duration::zero());
    server_.after(rest, lifetime_.guard([this] {
        isScheduled_ = false;
        if (holds_ > 0)
            check();
    }));
}

bool PulseLoudness::isAsking() const
{
    return isRunning(sinkQuery_) || isRunning(inputQuery_);
}

void PulseLoudness::check()
{
    if (!server_.context())
        return;
    lastCheck_ = Clock::now();
    isStale_ = isAsking() && lastCheck_ - asked_ < patienceWithAnswers;
    if (isStale_)
        return;
    asked_ = lastCheck_;
    const auto told = [](pa_context*, const pa_sink_info* sink, int, void* self) {
        if (sink)
            static_cast<PulseLoudness*>(self)->considerSink(*sink);
        else
            static_cast<PulseLoudness*>(self)->askInputs();
    };
    defaultSink_ = PA_INVALID_INDEX;
    sinkQuery_.reset(pa_context_get_sink_info_by_name(server_.context(), "@DEFAULT_SINK@", told, this));
}

void PulseLoudness::considerSink(const pa_sink_info& sink)
{
    defaultSink_ = sink.index;
    raise(sink);
}

void PulseLoudness::raise(const pa_sink_info& sink)
{
    auto* context = server_.context();
    const auto loud = full(sink.volume);
    if (sink.mute != 0)
        pulse::send(pa_context_set_sink_mute_by_index(context, sink.index, 0, nullptr, nullptr));
    if (!isFull(sink.volume))
        pulse::send(pa_context_set_sink_volume_by_index(context, sink.index, &loud, nullptr, nullptr));
}

void PulseLoudness::askInputs()
{
    const auto told = [](pa_context*, const pa_sink_input_info* input, int, void* self) {
        if (input)
            static_cast<PulseLoudness*>(self)->considerInput(*input);
        else
            static_cast<PulseLoudness*>(self)->conclude();
    };
    strays_.clear();
    inputQuery_.reset(pa_context_get_sink_input_info_list(server_.context(), told, this));
}

void PulseLoudness::considerInput(const pa_sink_input_info& input)
{
    if (!server_.isLoudInput(input.index))
        return;
    auto* context = server_.context();
    const auto loud = full(input.volume);
    if (input.mute != 0)
        pulse::send(pa_context_set_sink_input_mute(context, input.index, 0, nullptr, nullptr));
    if (!isFull(input.volume))
        pulse::send(pa_context_set_sink_input_volume(context, input.index, &loud, nullptr, nullptr));
    if (defaultSink_ == PA_INVALID_INDEX)
        askPlace(input.sink);
    else if (input.sink != defaultSink_)
        strays_.push_back(input.index);
}

// PipeWire can come up so that a client never hears which sink is the default one. The sound plays on it all the same.
void PulseLoudness::askPlace(std::uint32_t sink)
{
    const auto told = [](pa_context*, const pa_sink_info* info, int, void* self) {
        if (info)
            static_cast<PulseLoudness*>(self)->raise(*info);
    };
    placeQuery_.reset(pa_context_get_sink_info_by_index(server_.context(), sink, told, this));
}

void PulseLoudness::conclude()
{
    const auto now = Clock::now();
    if (strays_.empty()) {
        astraySince_.reset();
    } else if (now - astraySince_.value_or(now) >= patienceWithStrays) {
        astraySince_ = now;
        for (const auto input : strays_)
            pulse::send(pa_context_move_sink_input_by_index(server_.context(), input, defaultSink_, nullptr, nullptr));
    } else if (!astraySince_) {
        astraySince_ = now;
    }
    if (std::exchange(isStale_, false))
        noticeChange();
}

} // namespace kestrovan
