#pragma once

#include <fstream>
#include <string>

namespace kestrovan::rigs {

/// Of this process: "VmRSS:" is what it has in memory now, "VmHWM:" the most since forgetPeak().
inline double mebibytes(std::string_view what)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(what))
            return std::stod(line.substr(what.size() + 1)) / 1024;
    return 0;
}

inline void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

} // namespace kestrovan::rigs
