#pragma once

#include "platform/AudioOutput.h"
#include "platform/Published.h"
#include "platform/Workers.h"

namespace kestrovan {

class Diagnostics;
class SystemVolume;
class Workspace;
struct Platform;

/// Makes the alarm loud and keeps it loud. Main thread; nothing here waits for the sound server.
class AlarmManager : public Observable {
public:
    explicit AlarmManager(const Platform& platform);
    ~AlarmManager() override;

    /// True from startAlarm() until stopAlarm(), even where no sound can be made.
    Published<bool> isPlaying{*this, false};

    /// Forces the volume up, starts the looping siren and beeps once. Harmless while playing.
    void startAlarm();
    void stopAlarm();

    /// Plays the siren once (2 s) for the user to hear it, during an alarm as well.
    void playTestBeep();

private:
    void maximizeVolume();
    void startVolumeEnforcement();
    void startSiren();

    AudioOutput& audioOutput_;
    SystemVolume& systemVolume_;
    Workspace& workspace_;
    MainQueue& mainQueue_;
    Diagnostics& diagnostics_;
    class Siren;
    const std::shared_ptr<Siren> sirenWavData_;
    std::unique_ptr<SerialQueue> volumeQueue_;
    std::unique_ptr<Timer> volumeEnforceTimer_;
    Subscription volumeHold_;
    std::unique_ptr<AudioPlayer> audioPlayer_;
};

} // namespace kestrovan
