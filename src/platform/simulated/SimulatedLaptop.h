#pragma once

#include "platform/MotionPreference.h"
#include "platform/Platform.h"
#include "platform/simulated/SimulatedDesk.h"
#include "platform/simulated/SimulatedHttp.h"
#include "platform/simulated/SimulatedPower.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedSpeaker.h"
#include "platform/simulated/SimulatedStorage.h"
#include "platform/simulated/VirtualTime.h"

namespace kestrovan {

/// A whole laptop in memory and in virtual time: pull its charger, close its lid, press its keys, look at what it does.
/// It starts on the mains, fully charged, lid open. One thread.
class SimulatedLaptop {
public:
    /// `text` is the real thing: there is nothing in it to simulate.
    explicit SimulatedLaptop(Text& text);

    Platform platform();

    // What people do to it. Each lets the machine react at once, without time passing.
    void plugCharger();
    void unplugCharger();
    void setBattery(int percent);
    void closeLid();
    void openLid();
    bool askForSleep(); ///< as the idle timer does; true if the machine may sleep
    void fallAsleep();  ///< as the sleep menu does: announced, not asked
    void wakeUp();
    void powerOff(); ///< somebody asks the desktop to shut down
    void screensSleep();
    bool type(const std::string& character); ///< true if the key was swallowed before any window
    bool press(KeyEvent::Code key);

    void advance(std::chrono::milliseconds duration) { time_.advance(duration); }
    void settle() { time_.settle(); }

    VirtualTime& time() { return time_; }
    SimulatedSpeaker& speaker() { return speaker_; }
    SimulatedPower& power() { return power_; }
    SimulatedHolds& holds() { return holds_; }
    SimulatedDesktop& desktop() { return desktop_; }
    SimulatedCamera& camera() { return camera_; }
    SimulatedHttp& web() { return web_; }
    SimulatedScreens& screens() { return screens_; }
    SimulatedSettings& settings() { return settings_; }
    SimulatedFiles& files() { return files_; }
    SimulatedDiagnostics& diagnostics() { return diagnostics_; }
    MotionPreference& motion() { return motion_; }

private:
    void setSource(bool onMains, int percent);

    Text& text_;
    VirtualTime time_;
    SimulatedSpeaker speaker_{time_};
    SimulatedPower power_{time_};
    SimulatedHolds holds_{time_};
    SimulatedDesktop desktop_{speaker_};
    SimulatedCamera camera_;
    SimulatedSettings settings_;
    SimulatedFiles files_;
    SimulatedDiagnostics diagnostics_;
    SimulatedHttp web_{time_};
    SimulatedScreens screens_;
    MotionPreference motion_;
    bool onMains_ = true;
    int percent_ = 100;
    std::intptr_t lastRequest_ = 0;
};

} // namespace kestrovan
