#pragma once

#include "platform/AudioOutput.h"
#include "platform/Clock.h"
#include "platform/SystemVolume.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace kestrovan {

/// The machine's speakers. It remembers what was played and how loud, and can render it as it was heard.
class SimulatedSpeaker final : public AudioOutput, public SystemVolume {
public:
    explicit SimulatedSpeaker(const Clock& clock) : clock_(clock) {}

    Result makePlayer(WavFile file) override;
    void maximize() override;
    Subscription keepAtMaximum() override;

    void beep();
    /// Somebody else turns the sound down; undone at once while the volume is held.
    void setVolume(int percent, bool muted);

    bool isLooping() const; ///< an endless sound plays now
    int playing() const;    ///< how many sounds play now
    int volumePercent() const { return levels_.back().percent; }
    bool isMuted() const { return levels_.back().muted; }
    int beeps() const { return static_cast<int>(beeps_.size()); }
    int maximizations() const { return maximizations_; }
    bool isHeld() const { return *holds_ > 0; }

    /// 16-bit stereo frames at 44,100 a second, of the stretch between two moments of the clock.
    std::vector<std::int16_t> render(std::chrono::steady_clock::time_point from,
                                     std::chrono::steady_clock::time_point to) const;

    std::optional<std::string> failure; ///< set: players cannot be made

private:
    friend class SimulatedPlayer;
    using Moment = std::chrono::steady_clock::time_point;
    struct Sound {
        WavFile file;
        Moment start;
        std::optional<Moment> stop;
        bool endless;
    };
    struct Level {
        Moment since;
        int percent;
        bool muted;
    };

    void changeLevel(int percent, bool muted);
    bool isSounding(const Sound& sound, Moment moment) const;
    double heardAt(Moment moment) const;

    const Clock& clock_;
    std::vector<std::shared_ptr<Sound>> sounds_;
    std::vector<Level> levels_{{{}, 35, false}};
    std::vector<Moment> beeps_;
    std::shared_ptr<int> holds_ = std::make_shared<int>(0);
    int maximizations_ = 0;
};

} // namespace kestrovan
