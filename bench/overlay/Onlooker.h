#pragma once

#include "platform/Screens.h"
#include "rigs/GlaringProgram.h"

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <vector>

namespace kestrovan::bench {

/// Somebody who watches the screens of DISPLAY all the time, from a thread of their own, and sees when they change from
/// a glaring desktop to the deterrent.
class Onlooker {
public:
    using Clock = std::chrono::steady_clock;

    explicit Onlooker(std::vector<Screen> screens);
    Onlooker(const Onlooker&) = delete;
    Onlooker& operator=(const Onlooker&) = delete;
    ~Onlooker();

    /// Begins to watch until the corners of all screens are those of a picture.
    void watch();
    bool isDone() const { return isDone_; }
    Clock::time_point covered() const { return covered_; } ///< nothing glared any more; once it is done
    Clock::time_point drawn() const { return drawn_; }     ///< and nothing was black any more

    /// Whether not a single pixel glares now.
    bool isAllCovered();

private:
    void look(const std::stop_token& stop);
    bool isAnyCorner(std::uint32_t color);

    std::vector<Screen> screens_;
    rigs::GlaringProgram eyes_;
    Clock::time_point covered_;
    Clock::time_point drawn_;
    std::atomic<bool> isDone_ = false;
    std::jthread thread_;
};

} // namespace kestrovan::bench
