#pragma once

#include "rigs/Program.h"

#include <csignal>
#include <memory>
#include <string>
#include <vector>

namespace kestrovan::rigs {

/// A server that a test starts, stops, and can let hang or die. It ends with its object.
class ServerProcess {
public:
    explicit ServerProcess(std::vector<std::string> command) : command_(std::move(command)) {}

    void start() { program_ = std::make_unique<Program>(command_); }
    void signal(int number) const { ::kill(program_->pid(), number); }
    void end(int number)
    {
        if (!program_)
            return;
        signal(number);
        signal(SIGCONT);
        program_->wait();
        program_.reset();
    }

private:
    std::vector<std::string> command_;
    std::unique_ptr<Program> program_;
};

} // namespace kestrovan::rigs
