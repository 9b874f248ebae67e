#pragma once

#include "platform/AudioOutput.h"
#include "platform/Observable.h"
#include "platform/linux/PulseConnection.h"

namespace kestrovan {

/// The speakers through the sound server. What plays loops without a gap, un-muted and at 100 % of the output; it
/// survives the death of the server and the loss of its output, and begins late if the server comes late.
class PulseAudioOutput final : public AudioOutput {
public:
    /// Both outlive this object, of whose players none makes a sound any more after its end.
    PulseAudioOutput(PulseConnection& connection, Diagnostics& diagnostics)
        : connection_(connection), diagnostics_(diagnostics)
    {}
    PulseAudioOutput(const PulseAudioOutput&) = delete;
    PulseAudioOutput& operator=(const PulseAudioOutput&) = delete;
    ~PulseAudioOutput() override { ending_.tell(); }

    /// Takes 16-bit PCM of up to 8 channels.
    Result makePlayer(WavFile file) override;

private:
    PulseConnection& connection_;
    Diagnostics& diagnostics_;
    Signal<> ending_;
};

} // namespace kestrovan
