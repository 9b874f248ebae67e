#include "platform/linux/PulseAudioOutput.h"

#include "platform/linux/PulsePlayback.h"

#include <algorithm>

namespace kestrovan {

namespace {

class PulsePlayer final : public AudioPlayer {
public:
    PulsePlayer(PulseConnection& connection, Diagnostics& diagnostics, PcmSound sound)
        : connection_(&connection), diagnostics_(diagnostics), sound_(std::move(sound))
    {}

    /// The player may be kept by a task that lives longer than the output and its connection.
    void endWith(Signal<>& outputEnding)
    {
        outputEnding_ = outputEnding.subscribe([this] {
            stop();
            connection_ = nullptr;
        });
    }

    void setLooping(bool endless) override { isEndless_ = endless; }
    void setVolume(float fraction) override { fraction_ = std::clamp(fraction, 0.0F, 1.0F); }
    void play() override
    {
        if (!connection_)
            return;
        auto make = [&diagnostics = diagnostics_, sound = fraction_ < 1.0F ? scaled(sound_, fraction_) : sound_,
                     isEndless = isEndless_](PulseServer& server) {
            const PulsePlayback::Options options{isEndless, PulsePlayback::Manner::insistent, "Siren"};
            return std::make_unique<PulsePlayback>(server, diagnostics, sound, options);
        };
        playback_ = PulseResident<PulsePlayback>(*connection_, std::move(make));
    }
    void stop() override { playback_.reset(); }

private:
    PulseConnection* connection_; ///< none once the output is gone
    Diagnostics& diagnostics_;
    const PcmSound sound_;
    bool isEndless_ = false;
    float fraction_ = 1.0F;
    PulseResident<PulsePlayback> playback_;
    Subscription outputEnding_;
};

} // namespace

AudioOutput::Result PulseAudioOutput::makePlayer(WavFile file)
{
    auto [sound, error] = readWav(std::move(file));
    if (!sound)
        return {nullptr, std::move(error)};
    auto player = std::make_unique<PulsePlayer>(connection_, diagnostics_, *std::move(sound));
    player->endWith(ending_);
    return {std::move(player), {}};
}

} // namespace kestrovan
