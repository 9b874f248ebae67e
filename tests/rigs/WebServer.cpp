#include "rigs/WebServer.h"

#include "rigs/Deadline.h"

#include <fstream>

namespace kestrovan::rigs {
namespace {

std::filesystem::path freshFile(const std::filesystem::path& folder)
{
    static int made = 0;
    return folder / ("port" + std::to_string(++made));
}

std::vector<std::string> commandOf(const std::string& portFile, const std::vector<std::string>& certificateAndKey)
{
    std::vector<std::string> command{"/usr/bin/python3", KESTROVAN_RIGS "/web_server.py", portFile};
    command.insert(command.end(), certificateAndKey.begin(), certificateAndKey.end());
    return command;
}

// 0 if the server does not come up.
int waitForPort(const std::filesystem::path& file)
{
    int port = 0;
    waitUntil([&] { return static_cast<bool>(std::ifstream(file) >> port); });
    return port;
}

} // namespace

WebServer::WebServer(const std::filesystem::path& folder, const std::vector<std::string>& certificateAndKey)
    : speaksTls_(!certificateAndKey.empty()), portFile_(freshFile(folder)),
      program_(commandOf(portFile_, certificateAndKey), false), port_(waitForPort(portFile_))
{}

std::string WebServer::address(const std::string& path, const std::string& host) const
{
    const std::string usual = speaksTls_ ? "localhost" : "127.0.0.1";
    return (speaksTls_ ? "https://" : "http://") + (host.empty() ? usual : host) + ":" + std::to_string(port_) + path;
}

} // namespace kestrovan::rigs
