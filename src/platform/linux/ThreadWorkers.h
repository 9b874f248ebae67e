#pragma once

#include "platform/Workers.h"

#include <memory>

namespace kestrovan {

class WorkerPool;

/// Workers on threads of this process: a pool for each priority (background yields to everything else, nice 10),
/// growing on demand, so that a task that hangs holds up no other.
///
/// Destroying it drops what has not begun and waits for running tasks, up to five seconds; a task that hangs longer
/// is left behind.
class ThreadWorkers final : public Workers {
public:
    ThreadWorkers();
    ThreadWorkers(const ThreadWorkers&) = delete;
    ThreadWorkers& operator=(const ThreadWorkers&) = delete;
    ~ThreadWorkers() override;

    void run(Priority priority, Task task) override;
    void runAfter(std::chrono::milliseconds delay, Priority priority, Task task) override;
    [[nodiscard]] std::unique_ptr<SerialQueue> makeSerialQueue(const std::string& label) override;

private:
    std::shared_ptr<WorkerPool> userInitiated_;
    std::shared_ptr<WorkerPool> background_;
};

} // namespace kestrovan
