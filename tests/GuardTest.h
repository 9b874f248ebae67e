#pragma once

#include "core/Guard.h"
#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"

#include <gmock/gmock.h>

namespace kestrovan {

inline void PrintTo(const GuardState& state,
                    std::ostream* out) // NOLINT(readability-identifier-naming): GoogleTest's name
{
    *out << state.localizedTitle(AppLanguage::english);
}

} // namespace kestrovan

namespace kestrovan::test {

/// Screens that only remember whether they are shown.
class RecordingScreens final : public DeterrentScreens {
public:
    void showOverlay(AppState& /*appState*/) override
    {
        isShown = true;
        ++shows;
    }
    void hideOverlay() override
    {
        isShown = false;
        if (onHide)
            onHide();
    }

    bool isShown = false;
    int shows = 0;
    std::function<void()> onHide;
};

/// The guard on a simulated laptop, as it is on a fresh installation unless `before` changes that.
class GuardTest : public ::testing::Test {
protected:
    GuardTest() { start(); }

    /// Starts the program (again), on whatever the laptop's disk holds.
    void start()
    {
        parts.reset();
        parts = std::make_unique<Guard>(laptop.platform(), screens);
        laptop.settle();
    }
    AppState& guard() { return parts->appState; }
    GuardState state() { return guard().guardState; }

    void armAndWait()
    {
        guard().startArming();
        laptop.advance(std::chrono::seconds(guard().armDelayDuration));
    }
    void armAndSound()
    {
        armAndWait();
        laptop.unplugCharger();
    }
    void typePin(const std::string& digits)
    {
        for (const char digit : digits)
            laptop.type(std::string(1, digit));
    }

    IcuText text;
    SimulatedLaptop laptop{text};
    RecordingScreens screens;
    std::unique_ptr<Guard> parts;
};

} // namespace kestrovan::test
