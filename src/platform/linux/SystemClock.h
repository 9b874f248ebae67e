#pragma once

#include "platform/Clock.h"

namespace kestrovan {

/// The machine's own clocks. The steady one stands still while the machine sleeps (CLOCK_MONOTONIC).
class SystemClock final : public Clock {
public:
    std::chrono::system_clock::time_point now() const override { return std::chrono::system_clock::now(); }
    std::chrono::steady_clock::time_point steadyNow() const override { return std::chrono::steady_clock::now(); }
};

} // namespace kestrovan
