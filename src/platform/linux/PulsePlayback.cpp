#include "platform/linux/PulsePlayback.h"

#include "platform/Diagnostics.h"

#include <algorithm>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto retryInterval = 100ms;
// PipeWire may leave a stream in the making for ever, when another program touches it too early. Some outputs take long
// to wake up, so the patience grows.
constexpr std::chrono::milliseconds firstPatience = 2s;
constexpr std::chrono::milliseconds longestPatience = 16s;
// Of sound, held by the server: as long as this thread may be late without being heard to be.
constexpr pa_usec_t bufferLength = 100'000;

} // namespace

PulsePlayback::PulsePlayback(PulseServer& server, Diagnostics& diagnostics, PcmSound sound, Options options)
    : server_(server), diagnostics_(diagnostics), sound_(std::move(sound)), options_(std::move(options)),
      patience_(firstPatience)
{
    link_ = server_.onLink([this](bool isUp) {
        if (isUp)
            open();
        else
            close();
    });
    if (!isPassing())
        need_ = server_.need();
    open();
}

void PulsePlayback::open()
{
    auto* context = server_.context();
    if (!context && isPassing())
        end();
    if (!context || isOver_ || stream_)
        return;
    const pa_sample_spec format{PA_SAMPLE_S16LE, sound_.framesPerSecond, sound_.channels};
    pa_channel_map map{};
    pa_channel_map_init_extend(&map, sound_.channels, PA_CHANNEL_MAP_WAVEEX);
    const pulse::ProplistHandle properties(pa_proplist_new());
    if (isPassing())
        pa_proplist_sets(properties.get(), PA_PROP_MEDIA_ROLE, "event");
    stream_.reset(pa_stream_new_with_proplist(context, options_.name.c_str(), &format, &map, properties.get()));
    if (stream_)
        connect();
    else
        reopen();
}

void PulsePlayback::connect()
{
    // A stream's end is dealt with outside its own callback.
    const auto changed = [](pa_stream*, void* self) {
        auto& playback = *static_cast<PulsePlayback*>(self);
        playback.server_.after(0ms, playback.lifetime_.guard([&playback] { playback.considerState(); }));
    };
    const auto wanted = [](pa_stream*, std::size_t bytes, void* self) {
        static_cast<PulsePlayback*>(self)->fill(bytes);
    };
    pa_stream_set_state_callback(stream_.get(), changed, this);
    pa_stream_set_write_callback(stream_.get(), wanted, this);

    constexpr auto decideThat = static_cast<std::uint32_t>(-1);
    const auto buffered =
        static_cast<std::uint32_t>(pa_usec_to_bytes(bufferLength, pa_stream_get_sample_spec(stream_.get())));
    const pa_buffer_attr buffer{decideThat, buffered, decideThat, decideThat, decideThat};
    int flags = PA_STREAM_ADJUST_LATENCY;
    pa_cvolume loud{};
    pa_cvolume_set(&loud, sound_.channels, PA_VOLUME_NORM);
    // Given both, the server does not look up how loud somebody once liked this program to be.
    if (!isPassing())
        flags |= PA_STREAM_START_UNMUTED;
    if (pa_stream_connect_playback(stream_.get(), nullptr, &buffer, static_cast<pa_stream_flags_t>(flags),
                                   isPassing() ? nullptr : &loud, nullptr) < 0)
        considerState();
    else
        watchTheMaking();
}

void PulsePlayback::watchTheMaking()
{
    server_.after(patience_, lifetime_.guard([this, attempt = ++attempts_] {
        if (attempt != attempts_ || !stream_ || pa_stream_get_state(stream_.get()) != PA_STREAM_CREATING)
            return;
        patience_ = std::min(2 * patience_, longestPatience);
        reopen();
    }));
}

void PulsePlayback::considerState()
{
    if (!stream_ || !server_.context())
        return;
    const auto state = pa_stream_get_state(stream_.get());
    if (state == PA_STREAM_READY) {
        hasSaid_ = false;
        patience_ = firstPatience;
        if (!isPassing() && !loudness_)
            loudness_ = server_.addLoudInput(pa_stream_get_index(stream_.get()));
    }
    if (state != PA_STREAM_CREATING && state != PA_STREAM_READY) {
        // A sink that was removed takes its streams with it; another one may be there.
        say(pa_strerror(pa_context_errno(server_.context())));
        reopen();
    }
}

void PulsePlayback::close()
{
    loudness_.reset();
    drain_.reset();
    stream_.reset();
    if (isPassing())
        end();
}

void PulsePlayback::reopen()
{
    close();
    server_.after(retryInterval, lifetime_.guard([this] { open(); }));
}

void PulsePlayback::end()
{
    isOver_ = true;
    loudness_.reset();
    drain_.reset();
    stream_.reset();
    need_.reset();
}

void PulsePlayback::fill(std::size_t bytes)
{
    bytes -= bytes % pa_frame_size(pa_stream_get_sample_spec(stream_.get()));
    while (bytes > 0 && cursor_ < sound_.samples.size()) {
        const auto piece = std::min(bytes, sound_.samples.size() - cursor_);
        if (pa_stream_write(stream_.get(), &sound_.samples[cursor_], piece, nullptr, 0, PA_SEEK_RELATIVE) < 0)
            return;
        bytes -= piece;
        cursor_ += piece;
        if (options_.isEndless)
            cursor_ %= sound_.samples.size();
    }
    if (cursor_ < sound_.samples.size() || drain_)
        return;
    const auto drained = [](pa_stream*, int, void* self) {
        auto& playback = *static_cast<PulsePlayback*>(self);
        playback.server_.after(0ms, playback.lifetime_.guard([&playback] { playback.end(); }));
    };
    drain_.reset(pa_stream_drain(stream_.get(), drained, this));
}

void PulsePlayback::say(const std::string& reason)
{
    if (!std::exchange(hasSaid_, true))
        diagnostics_.line("Sound cannot be played now: " + reason);
}

} // namespace kestrovan
