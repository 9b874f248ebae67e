#include "parts/Pulse.h"

#include <cmath>
#include <utility>

namespace kestrovan {

namespace {

// The cubic Bézier curve from (0,0) to (1,1) with the control points (0.42, 0) and (0.58, 1).
double easeInOut(double time)
{
    const auto along = [](double first, double second, double t) {
        const auto s = 1 - t;
        return 3 * s * s * t * first + 3 * s * t * t * second + t * t * t;
    };
    double low = 0;
    double high = 1;
    for (int halving = 0; halving < 20; ++halving) {
        const auto middle = (low + high) / 2;
        (along(0.42, 0.58, middle) < time ? low : high) = middle;
    }
    return along(0, 1, low);
}

} // namespace

Pulse::Pulse(MainQueue& mainQueue, const Clock& clock, std::chrono::milliseconds sweep, std::chrono::milliseconds frame,
             std::function<void()> moved)
    : mainQueue_(mainQueue), clock_(clock), sweep_(sweep), frame_(frame), moved_(std::move(moved))
{}

void Pulse::setRunning(bool running)
{
    if (running == isRunning())
        return;
    phase_ = 0;
    start_ = clock_.steadyNow();
    timer_ = running ? mainQueue_.repeat(frame_, [this] { step(); }) : nullptr;
    moved_();
}

void Pulse::step()
{
    const std::chrono::duration<double> elapsed = clock_.steadyNow() - start_;
    const auto sweeps = std::fmod(elapsed / sweep_, 2.0);
    phase_ = easeInOut(sweeps <= 1 ? sweeps : 2 - sweeps);
    moved_();
}

} // namespace kestrovan
