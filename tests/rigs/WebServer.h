#pragma once

#include "rigs/Program.h"

#include <filesystem>
#include <string>

namespace kestrovan::rigs {

/// A running web_server.py on a port of its own at 127.0.0.1. Its files are in `folder`, which must exist.
class WebServer {
public:
    /// With a certificate and its key (files, PEM) it speaks TLS.
    explicit WebServer(const std::filesystem::path& folder, const std::vector<std::string>& certificateAndKey = {});

    /// "http://127.0.0.1:port/path" or, with TLS, "https://localhost:port/path".
    std::string address(const std::string& path, const std::string& host = {}) const;
    int port() const { return port_; }

private:
    const bool speaksTls_;
    const std::filesystem::path portFile_;
    Program program_;
    const int port_;
};

} // namespace kestrovan::rigs
