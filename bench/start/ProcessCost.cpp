#include "ProcessCost.h"

#include <filesystem>
#include <fstream>

namespace kestrovan::bench {

namespace {

// A thread that waits, and so is woken, gives the processor up of its own will.
long voluntarySwitches(const std::filesystem::path& task)
{
    const std::string key = "voluntary_ctxt_switches:";
    std::ifstream status(task / "status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(key))
            return std::stol(line.substr(key.size()));
    return 0;
}

} // namespace

ProcessCost ProcessCost::of(pid_t process)
{
    ProcessCost cost;
    std::error_code ignored;
    for (const auto& task :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task", ignored)) {
        std::string name;
        std::ifstream(task.path() / "comm") >> name;
        std::chrono::nanoseconds::rep nanoseconds = 0;
        std::ifstream(task.path() / "schedstat") >> nanoseconds;
        cost.onProcessor += std::chrono::nanoseconds(nanoseconds);
        cost.wakeUps[name + " " + task.path().filename().string()] = voluntarySwitches(task.path());
    }
    return cost;
}

long ProcessCost::allWakeUps() const
{
    long sum = 0;
    for (const auto& thread : wakeUps)
        sum += thread.second;
    return sum;
}

} // namespace kestrovan::bench
