#pragma once

#include "platform/linux/PcmSound.h"
#include "platform/linux/PulseConnection.h"

namespace kestrovan {

class PulsePlayback;

/// The alert sound that Workspace::beep() makes: a short tone, as an event sound as loud as the user likes such
/// sounds. Main thread; without a sound server it is silent.
class AlertSound {
public:
    /// Both outlive this object.
    AlertSound(PulseConnection& connection, Diagnostics& diagnostics);
    AlertSound(const AlertSound&) = delete;
    AlertSound& operator=(const AlertSound&) = delete;
    ~AlertSound(); ///< ends the tone

    /// Returns at once. A tone that still sounds begins again.
    void play();

private:
    PulseConnection& connection_;
    Diagnostics& diagnostics_;
    const PcmSound tone_;
    PulseResident<PulsePlayback> playback_;
};

} // namespace kestrovan
