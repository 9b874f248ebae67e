#pragma once

#include "rigs/Deadline.h"
#include "rigs/Program.h"
#include "rigs/TemporaryFolder.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace kestrovan::rigs {

/// A session of X11, which SESSION_MANAGER names from then on: asks its clients to let it end (see XsmpServer.cpp).
class XsmpSession {
public:
    explicit XsmpSession(const std::string& server)
    {
        mkfifo(file("orders").c_str(), 0600);
        server_ = std::make_unique<Program>(std::vector<std::string>{
            "sh", "-c", "exec \"$0\" < \"$1/orders\" > \"$1/answers\"", server, folder_.path().string()});
        orders_.open(file("orders")); // waits for the server to open its end
        waitUntil([this] { return !answers().empty(); });
        setenv("SESSION_MANAGER", answers().empty() ? "" : answers().front().c_str(), 1);
    }

    void logout() { orders_ << "logout" << std::endl; }
    std::ptrdiff_t count(const std::string& answer) const { return std::ranges::count(answers(), answer); }

private:
    std::string file(const char* name) const { return (folder_.path() / name).string(); }
    std::vector<std::string> answers() const
    {
        std::vector<std::string> lines;
        std::ifstream stream(file("answers"));
        for (std::string line; std::getline(stream, line) && !stream.eof();)
            lines.push_back(line);
        return lines;
    }

    TemporaryFolder folder_;
    std::unique_ptr<Program> server_;
    std::ofstream orders_;
};

} // namespace kestrovan::rigs
