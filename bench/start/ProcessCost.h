#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <string>

namespace kestrovan::bench {

/// What a process has cost the machine so far, all its threads together: /proc/PID/task/*/schedstat and status.
struct ProcessCost {
    std::chrono::nanoseconds onProcessor{0};
    std::map<std::string, long> wakeUps; ///< of each thread, by its name and number

    static ProcessCost of(pid_t process);

    long allWakeUps() const;
};

} // namespace kestrovan::bench
