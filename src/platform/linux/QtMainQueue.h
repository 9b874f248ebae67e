#pragma once

#include "platform/MainQueue.h"

namespace kestrovan {

/// The main queue on Qt's event loop. Made and destroyed on the main thread, with or without a QCoreApplication; tasks
/// posted before its exec() run once that runs, also while a dialog or the like runs a loop of its own.
///
/// Other threads must have stopped posting before it is destroyed; what has not run by then is dropped.
/// Timers of whole seconds and those below 500 ms are exact to the millisecond; others, the half-second poll above
/// all, may be off by a twentieth, so that Qt can join their wake-ups with others.
class QtMainQueue final : public MainQueue {
public:
    QtMainQueue();
    ~QtMainQueue() override;

    void post(Task task) override;
    void postAfter(std::chrono::milliseconds delay, Task task) override;
    [[nodiscard]] std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval, Task tick) override;

private:
    class Receiver;
    class LoopTimer;

    std::unique_ptr<Receiver> receiver_;
};

} // namespace kestrovan
