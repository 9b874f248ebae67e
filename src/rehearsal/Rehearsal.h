#pragma once

#include "rehearsal/Timeline.h"

#include <filesystem>

namespace kestrovan {

struct RehearsalOptions {
    std::filesystem::path folder; ///< where the timeline, the siren and the pictures go
    bool realTime = false;        ///< wait as long as it would really take
    AppLanguage language = AppLanguage::english;
};

/// The whole guard once through on a simulated laptop: armed, robbed, loud, and disarmed by its owner.
class Rehearsal {
public:
    Rehearsal(Text& text, DeterrentScreens& screens, RehearsalOptions options);

    /// False if anything went wrong; the timeline says what.
    bool run();

private:
    void arm();
    void robbery();
    void breakout();
    void wrongPin();
    void rightPin();
    void checkSiren();
    void checkPhoto();
    bool writeResults();
    bool writePhotos();
    void pass(std::chrono::milliseconds duration);
    void type(const std::string& digits);
    AppState& guard() { return guard_.appState; }

    const RehearsalOptions options_;
    SimulatedLaptop laptop_;
    Guard guard_;
    Timeline timeline_;
    std::chrono::steady_clock::time_point alarmStart_;
    std::chrono::steady_clock::time_point alarmEnd_;
};

} // namespace kestrovan
