#pragma once

#include <chrono>

namespace kestrovan {

/// The time of day, for what people read, and a steady time, for durations. Any thread.
class Clock {
public:
    virtual ~Clock() = default;

    virtual std::chrono::system_clock::time_point now() const = 0;
    virtual std::chrono::steady_clock::time_point steadyNow() const = 0;
};

} // namespace kestrovan
