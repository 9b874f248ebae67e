#pragma once

#include "platform/Workers.h"

#include <memory>
#include <string>
#include <thread>

namespace kestrovan {

/// A serial queue on one thread. Where its timers allow it (leeway), the kernel joins the wake-ups with others'.
/// It may also be destroyed by its own task, which then is not waited for.
///
/// Should the system have no thread to give, tasks wait, and each post or repeat asks again.
class ThreadSerialQueue final : public SerialQueue {
public:
    explicit ThreadSerialQueue(std::string label);
    ThreadSerialQueue(const ThreadSerialQueue&) = delete;
    ThreadSerialQueue& operator=(const ThreadSerialQueue&) = delete;
    ~ThreadSerialQueue() override;

    void post(Task task) override;
    [[nodiscard]] std::unique_ptr<Timer> repeat(std::chrono::milliseconds interval, std::chrono::milliseconds leeway,
                                                Task tick) override;

private:
    class Core;
    class Handle;

    std::shared_ptr<Core> core_;
};

} // namespace kestrovan
