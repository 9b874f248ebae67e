#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kestrovan {

/// A running program of ours. Destroying the object leaves no process behind.
class ChildProcess {
public:
    virtual ~ChildProcess() = default;

    virtual bool isRunning() const = 0;
    virtual void terminate() = 0;
};

/// Starts helper programs. Main thread; never blocks.
class ProcessLauncher {
public:
    virtual ~ProcessLauncher() = default;

    /// None if the program cannot be started. The child ends when this process ends, however it ends.
    [[nodiscard]] virtual std::unique_ptr<ChildProcess> launch(const std::string& executable,
                                                               const std::vector<std::string>& arguments) = 0;
};

} // namespace kestrovan
