#pragma once

#include "platform/Clock.h"
#include "platform/MainQueue.h"

#include <chrono>
#include <functional>
#include <memory>

namespace kestrovan {

/// A value that swings between 0 and 1 and back for as long as it runs, easing in and out at both ends. It stands
/// still, at no cost, while it does not run. Main thread.
class Pulse {
public:
    /// `sweep` is the time from 0 to 1. `moved` is called after each step, `frame` apart.
    Pulse(MainQueue& mainQueue, const Clock& clock, std::chrono::milliseconds sweep, std::chrono::milliseconds frame,
          std::function<void()> moved);

    /// Starts from 0; harmless if it runs already.
    void setRunning(bool running);
    bool isRunning() const { return timer_ != nullptr; }
    double phase() const { return phase_; } ///< 0 to 1; 0 while it does not run

private:
    void step();

    MainQueue& mainQueue_;
    const Clock& clock_;
    const std::chrono::milliseconds sweep_;
    const std::chrono::milliseconds frame_;
    std::function<void()> moved_;
    std::chrono::steady_clock::time_point start_;
    double phase_ = 0;
    std::unique_ptr<Timer> timer_;
};

} // namespace kestrovan
