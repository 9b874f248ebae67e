#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace kestrovan::rigs {

/// A program started for a test; it is killed and waited for when the object goes.
class Program {
public:
    /// Found on the PATH; sees the caller's environment. `quiet` sends its messages nowhere.
    explicit Program(std::vector<std::string> command, bool quiet = true);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    pid_t pid() const { return pid_; }
    bool isRunning();
    /// Its exit status, -1 if a signal ended it.
    int wait();

private:
    pid_t pid_ = -1;
    int status_ = 0;
};

/// Runs a program to its end.
inline int run(std::vector<std::string> command)
{
    return Program(std::move(command)).wait();
}

} // namespace kestrovan::rigs
