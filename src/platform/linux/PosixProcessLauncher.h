#pragma once

#include "platform/ChildProcess.h"
#include "platform/linux/ChildReaper.h"

namespace kestrovan {

/// Starts helper programs with posix_spawn, on a leash: their standard input is a pipe whose other end only this
/// process holds. It closes when this process ends, killed or not, and a program that reads its input ends with it. (A
/// parent-death signal would be bound to the thread that has forked, and one that is killed sends nothing.) A program
/// that does not read its input outlives a killed parent. Output of the children is dropped.
///
/// "/usr/bin/caffeinate" stands for the system's own tool that keeps the machine awake while it runs, which here is
/// `systemd-inhibit`: it holds a block lock of logind's for as long as `cat` reads the leash. If it dies or is refused,
/// another takes its place, so that it counts as running until it is terminated.
class PosixProcessLauncher final : public ProcessLauncher {
public:
    std::unique_ptr<ChildProcess> launch(const std::string& executable,
                                         const std::vector<std::string>& arguments) override;

private:
    class Process;

    std::shared_ptr<ChildReaper> reaper_ = std::make_shared<ChildReaper>(); ///< shared with the processes
};

} // namespace kestrovan
