#pragma once

#include "rigs/Program.h"

#include <memory>
#include <string>
#include <vector>

namespace kestrovan::rigs {

/// An X server in memory under a free display number, which DISPLAY names from then on.
class PrivateDisplay {
public:
    explicit PrivateDisplay(std::vector<std::string> server = {"Xvfb", "-screen", "0", "800x600x24"});

    /// Empty if the server did not start.
    const std::string& name() const { return name_; }
    bool isRunning() { return server_->isRunning(); }

private:
    std::unique_ptr<Program> server_;
    std::string name_;
};

} // namespace kestrovan::rigs
