#include "platform/simulated/SimulatedSpeaker.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;
using Seconds = std::chrono::duration<double>;

constexpr double framesPerSecond = 44100.0;
constexpr std::size_t headerBytes = 44;
constexpr std::size_t frameBytes = 4;
constexpr auto beepLength = 120ms;
constexpr double beepFrequency = 880.0;

std::size_t frameCount(const WavFile& file)
{
    return (file->size() - headerBytes) / frameBytes;
}

double leftSample(const WavFile& file, std::size_t frame)
{
    const auto offset = headerBytes + frame * frameBytes;
    const auto low = std::to_integer<unsigned>((*file)[offset]);
    const auto high = std::to_integer<unsigned>((*file)[offset + 1]);
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(low | (high << 8U)));
}

} // namespace

class SimulatedPlayer final : public AudioPlayer {
public:
    SimulatedPlayer(SimulatedSpeaker& speaker, WavFile file) : speaker_(speaker), file_(std::move(file)) {}
    ~SimulatedPlayer() override { end(); }

    void setLooping(bool endless) override { endless_ = endless; }
    void setVolume(float /*fraction*/) override {}
    void play() override
    {
        end();
        sound_ = std::make_shared<SimulatedSpeaker::Sound>(
            SimulatedSpeaker::Sound{file_, speaker_.clock_.steadyNow(), std::nullopt, endless_});
        speaker_.sounds_.push_back(sound_);
    }
    void stop() override { end(); }

private:
    void end()
    {
        if (const auto sound = std::exchange(sound_, nullptr))
            sound->stop = speaker_.clock_.steadyNow();
    }

    SimulatedSpeaker& speaker_;
    WavFile file_;
    std::shared_ptr<SimulatedSpeaker::Sound> sound_;
    bool endless_ = false;
};

AudioOutput::Result SimulatedSpeaker::makePlayer(WavFile file)
{
    if (failure)
        return {nullptr, *failure};
    if (!file || file->size() < headerBytes)
        return {nullptr, "not a WAV file"};
    return {std::make_unique<SimulatedPlayer>(*this, std::move(file)), {}};
}

void SimulatedSpeaker::maximize()
{
    ++maximizations_;
    changeLevel(100, false);
}

Subscription SimulatedSpeaker::keepAtMaximum()
{
    ++*holds_;
    return Subscription([holds = holds_] { --*holds; });
}

void SimulatedSpeaker::beep()
{
    beeps_.push_back(clock_.steadyNow());
}

void SimulatedSpeaker::setVolume(int percent, bool muted)
{
    changeLevel(percent, muted);
    if (isHeld())
        changeLevel(100, false);
}

void SimulatedSpeaker::changeLevel(int percent, bool muted)
{
    if (percent != volumePercent() || muted != isMuted())
        levels_.push_back({clock_.steadyNow(), percent, muted});
}

bool SimulatedSpeaker::isSounding(const Sound& sound, Moment moment) const
{
    if (moment < sound.start || (sound.stop && moment >= *sound.stop))
        return false;
    const Seconds length(static_cast<double>(frameCount(sound.file)) / framesPerSecond);
    return sound.endless || moment - sound.start < length;
}

bool SimulatedSpeaker::isLooping() const
{
    return std::ranges::any_of(
        sounds_, [&](const auto& sound) { return sound->endless && isSounding(*sound, clock_.steadyNow()); });
}

int SimulatedSpeaker::playing() const
{
    return static_cast<int>(
        std::ranges::count_if(sounds_, [&](const auto& sound) { return isSounding(*sound, clock_.steadyNow()); }));
}

double SimulatedSpeaker::heardAt(Moment moment) const
{
    double sum = 0.0;
    for (const auto& sound : sounds_) {
        if (!isSounding(*sound, moment))
            continue;
        const auto frame =
            static_cast<std::size_t>(std::llround(Seconds(moment - sound->start).count() * framesPerSecond));
        sum += leftSample(sound->file, frame % frameCount(sound->file));
    }
    for (const auto start : beeps_)
        if (moment >= start && moment < start + beepLength)
            sum += 8000.0 * std::sin(2.0 * std::numbers::pi * beepFrequency * Seconds(moment - start).count());
    const auto after = std::ranges::upper_bound(levels_, moment, {}, &Level::since);
    const auto& level = *std::prev(after);
    return level.muted ? 0.0 : sum * level.percent / 100.0;
}

std::vector<std::int16_t> SimulatedSpeaker::render(Moment from, Moment to) const
{
    const auto count = static_cast<std::size_t>(Seconds(to - from).count() * framesPerSecond);
    std::vector<std::int16_t> frames;
    frames.reserve(count * 2);
    for (std::size_t index = 0; index < count; ++index) {
        const Seconds offset(static_cast<double>(index) / framesPerSecond);
        const double heard = heardAt(from + std::chrono::round<std::chrono::nanoseconds>(offset));
        const auto sample = static_cast<std::int16_t>(std::clamp(heard, -32767.0, 32767.0));
        frames.insert(frames.end(), {sample, sample});
    }
    return frames;
}

} // namespace kestrovan
