#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace kestrovan::bench {

/// Runs the event loop until `condition` holds, and says whether it does. It is looked at after every event; `interval`
/// also has it looked at by the clock, for what changes elsewhere than in the loop.
template <class Condition>
bool runUntil(Condition condition, std::chrono::milliseconds interval = std::chrono::milliseconds::zero())
{
    using Clock = std::chrono::steady_clock;
    constexpr auto patience = std::chrono::seconds(5);
    const auto end = Clock::now() + patience;
    QTimer looks;
    if (interval.count() > 0)
        looks.start(interval);
    while (!condition() && Clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

inline void runFor(std::chrono::milliseconds duration)
{
    bool isOver = false;
    QTimer::singleShot(duration, Qt::PreciseTimer, [&isOver] { isOver = true; });
    while (!isOver)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace kestrovan::bench
