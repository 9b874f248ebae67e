#include "LatencyTable.h"
#include "platform/linux/CurlHttp.h"
#include "platform/linux/Descriptor.h"
#include "rigs/NetworkedLaptop.h"
#include "rigs/TemporaryFolder.h"
#include "rigs/TestCertificate.h"
#include "rigs/WebServer.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <array>
#include <fstream>
#include <limits>

using namespace kestrovan;
using bench::LatencyTable;
using std::chrono::steady_clock;

namespace {

constexpr const char* manifestPath = "/manifest/4096?";

void measureValidation(LatencyTable& table)
{
    IcuText text;
    SimulatedLaptop laptop(text);
    const UpdateManager manager(laptop.platform());
    for (const std::string address : {"https://updates.kestrovan.example/version.json", "http://0251.0376.0251.0376/",
                                      "http://１６９。２５４。１６９。２５４/", "https://bücher.example/a b"}) {
        auto& row = table.row("valid or not: " + address, {bench::p95(0.02)});
        for (int run = 0; run < 5000; ++run) {
            const auto start = steady_clock::now();
            const auto verdict = manager.validateServerURL(address);
            const auto end = steady_clock::now();
            if (verdict.isValid == verdict.errorMsg.has_value())
                row.addFailure();
            row.add(end - start);
        }
    }
}

// What the server takes for itself: the least that anybody waits who asks it for the same.
LatencyTable::Milliseconds askBarely(int port)
{
    const auto start = steady_clock::now();
    const Descriptor connection(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_port = htons(static_cast<in_port_t>(port));
    server.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const std::string request = std::string("GET ") + manifestPath + " HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n";
    std::array<char, 65536> answer{};
    if (connect(connection.get(), reinterpret_cast<const sockaddr*>(&server), sizeof server) == 0 &&
        send(connection.get(), request.data(), request.size(), MSG_NOSIGNAL) > 0)
        while (recv(connection.get(), answer.data(), answer.size(), 0) > 0)
            continue;
    return steady_clock::now() - start;
}

/// A check from the call to the status that it ends with, or none if that is not the right one.
std::optional<LatencyTable::Milliseconds> timeCheck(rigs::NetworkedLaptop& laptop, const std::string& address,
                                                    Http& http)
{
    const auto start = steady_clock::now();
    const auto manager = laptop.startCheck(address, http);
    if (!laptop.awaitEnd(*manager) || !manager->updateStatus->availableUpdate())
        return std::nullopt;
    return steady_clock::now() - start;
}

void add(LatencyTable::Row& row, std::optional<LatencyTable::Milliseconds> duration,
         LatencyTable::Milliseconds others = {})
{
    if (duration)
        row.add(*duration - others);
    else
        row.addFailure();
}

void measureChecks(LatencyTable& table, const rigs::WebServer& server)
{
    constexpr int runs = 200;
    auto& bare = table.row("the server's own time");
    auto& usual = table.row("a check, beyond the server's own time", {bench::p95(15)});
    auto& first = table.row("a program's first check, beyond the same", {bench::p95(15)});
    rigs::NetworkedLaptop laptop;
    CurlHttp http;
    for (int run = 0; run < runs; ++run) {
        const auto servers = askBarely(server.port());
        bare.add(servers);
        add(usual, timeCheck(laptop, server.address(manifestPath), http), servers);
        CurlHttp fresh;
        add(first, timeCheck(laptop, server.address(manifestPath), fresh), servers);
    }
}

// With the system's authorities, all of which the first check has to read.
void measureSecureChecks(LatencyTable& table, const std::filesystem::path& folder)
{
    const auto made = rigs::makeCertificate(folder, {});
    const auto authorities = folder / "authorities.pem";
    std::ofstream(authorities) << std::ifstream("/etc/ssl/certs/ca-certificates.crt").rdbuf()
                               << std::ifstream(made.certificate).rdbuf();
    const rigs::WebServer server(folder, {made.certificate, made.key});
    auto& usual = table.row("a check over TLS, the server's time included");
    auto& first = table.row("a program's first check over TLS, likewise");
    rigs::NetworkedLaptop laptop;
    CurlHttp http(authorities);
    for (int run = 0; run < 50; ++run) {
        CurlHttp fresh(authorities);
        add(first, timeCheck(laptop, server.address(manifestPath), fresh));
        add(usual, timeCheck(laptop, server.address(manifestPath), http));
    }
}

/// Of this program, in kilobytes.
double memory(const std::string& field)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(field))
            return std::stod(line.substr(field.size()));
    return 0;
}

/// By how many megabytes this program grows at most during a check.
double growthOverCheck(const std::string& address)
{
    rigs::NetworkedLaptop laptop;
    std::ofstream("/proc/self/clear_refs") << 5; // the peak begins anew
    const auto before = memory("VmRSS:");
    CurlHttp http;
    const auto manager = laptop.startCheck(address, http);
    const bool hasEnded = laptop.awaitEnd(*manager);
    return hasEnded ? (memory("VmHWM:") - before) / 1024 : std::numeric_limits<double>::infinity();
}

// The first check brings libraries into memory, whatever the server sends.
void measureMemory(LatencyTable& table, const rigs::WebServer& server)
{
    constexpr double limit = 2;
    table.figure("memory of a program's first check", growthOverCheck(server.address(manifestPath)), "MB");
    table.figure("memory of six seconds of an endless body", growthOverCheck(server.address("/endless?")), "MB", limit);
}

} // namespace

int main()
{
    const TemporaryFolder folder;
    const rigs::WebServer server(folder.path());
    LatencyTable table("Updates");
    measureMemory(table, server);
    measureValidation(table);
    measureChecks(table, server);
    measureSecureChecks(table, folder.path());
    table.print();
}
