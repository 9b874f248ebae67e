#include "platform/linux/AlertSound.h"

#include "platform/linux/PulsePlayback.h"

#include <cmath>
#include <numbers>

namespace kestrovan {

namespace {

constexpr std::uint32_t framesPerSecond = 44100;
constexpr double seconds = 0.16;
constexpr double frequency = 880.0;
constexpr double loudness = 0.5;
constexpr double decayPerSecond = 25.0;

// A struck bell, roughly: it comes and goes without a click.
PcmSound makeTone()
{
    constexpr auto frames = static_cast<std::size_t>(framesPerSecond * seconds);
    auto samples = std::make_shared<std::vector<std::byte>>();
    samples->reserve(frames * 2);
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double time = static_cast<double>(frame) / framesPerSecond;
        const double envelope = loudness * std::exp(-decayPerSecond * time) * (1.0 - time / seconds);
        const double value = envelope * std::sin(2.0 * std::numbers::pi * frequency * time);
        const auto sample = static_cast<unsigned>(static_cast<int>(value * 32767.0));
        samples->push_back(static_cast<std::byte>(sample & 0xFFU));
        samples->push_back(static_cast<std::byte>(sample >> 8U & 0xFFU));
    }
    return {framesPerSecond, 1, samples, *samples};
}

} // namespace

AlertSound::AlertSound(PulseConnection& connection, Diagnostics& diagnostics)
    : connection_(connection), diagnostics_(diagnostics), tone_(makeTone())
{}

AlertSound::~AlertSound() = default;

void AlertSound::play()
{
    playback_ =
        PulseResident<PulsePlayback>(connection_, [&diagnostics = diagnostics_, tone = tone_](PulseServer& server) {
            const PulsePlayback::Options options{false, PulsePlayback::Manner::passing, "Alert"};
            return std::make_unique<PulsePlayback>(server, diagnostics, tone, options);
        });
}

} // namespace kestrovan
