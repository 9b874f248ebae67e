#pragma once

#include "rigs/Deadline.h"
#include "rigs/Program.h"
#include "rigs/TemporaryFolder.h"

#include <csignal>
#include <string>
#include <vector>

namespace kestrovan::rigs {

/// The program itself, in this process's surroundings (display, buses, mock devices) with a home of its own. It ends
/// with its object.
class RunningKestrovan {
public:
    /// `settings` is the content of its settings file, none if empty. `environment` holds further words for env(1).
    explicit RunningKestrovan(const std::string& settings = {}, std::vector<std::string> environment = {});

    /// Starts it again, or a second one beside it, in the same home. Waits for its end and returns its exit status.
    int runAgain(const std::vector<std::string>& environment = {});

    pid_t pid() const { return program_->pid(); }
    void signal(int number) { kill(program_->pid(), number); }
    bool isRunning() { return program_->isRunning(); }
    /// Its exit status; -1 if a signal ended it or it has not ended after a generous time.
    int waitForEnd();

    /// All lines that it has said so far.
    std::vector<std::string> lines() const;
    bool waitForLine(const std::string& start) const;

    /// The X11 window that people see, 0 if there is none.
    static std::uint32_t window();
    /// If it does not come, tells on standard error what the program has said, and where its threads are.
    bool waitForWindow() const;
    static bool waitForNoWindow()
    {
        return waitUntil([] { return window() == 0; });
    }

private:
    std::vector<std::string> command(std::vector<std::string> environment, const std::string& output) const;
    std::string file(const char* name) const { return (home_.path() / name).string(); }
    void tellItsState() const;

    TemporaryFolder home_;
    std::unique_ptr<Program> program_;
};

} // namespace kestrovan::rigs
