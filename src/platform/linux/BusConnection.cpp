#include "platform/linux/BusConnection.h"

#include "platform/linux/NamedThread.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kestrovan {

namespace {

std::string valueOf(const char* variable)
{
    const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): nobody has begun to change them
    return value ? value : "";
}

// Not left to the bus's thread: it may not look at the environment while the main thread changes it, as Qt does.
std::string addressOf(Bus::Kind kind)
{
    const bool isSystem = kind == Bus::Kind::system;
    auto named = valueOf(isSystem ? "DBUS_SYSTEM_BUS_ADDRESS" : "DBUS_SESSION_BUS_ADDRESS");
    if (!named.empty())
        return named;
    return "unix:path=" + (isSystem ? "/run/dbus/system_bus_socket" : valueOf("XDG_RUNTIME_DIR") + "/bus");
}

} // namespace

BusConnection::BusConnection(Bus::Kind kind)
    : address_(addressOf(kind)),
      thread_(startNamedThread(kind == Bus::Kind::system ? "kestrovan.systembus" : "kestrovan.sessionbus", 0,
                               [this] { run(); }))
{}

BusConnection::~BusConnection()
{
    isEnding_ = true;
    wakeUp_.call();
    if (thread_)
        thread_->join();
}

void BusConnection::post(std::function<void(Bus&)> task)
{
    posted_.post(std::move(task));
    wakeUp_.call();
}

void BusConnection::run()
{
    Bus bus(address_);
    while (!isEnding_) {
        const bool hasRun = posted_.runOne(bus);
        const bool isBusy = bus.turn();
        if (!hasRun && !isBusy)
            wait(bus);
    }
    while (posted_.runOne(bus)) {
    }
}

void BusConnection::wait(const Bus& bus) const
{
    std::array<pollfd, 2> waits{{{wakeUp_.descriptor(), POLLIN, 0}, {-1, 0, 0}}};
    std::optional<Bus::Clock::time_point> until;
    bus.prepareToWait(waits[1].fd, waits[1].events, until);

    timespec patience{};
    if (until) {
        const auto left = std::max(*until - Bus::Clock::now(), Bus::Clock::duration::zero());
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        patience = {.tv_sec = seconds.count(), .tv_nsec = (left - seconds).count()};
    }
    ::ppoll(waits.data(), waits.size(), until ? &patience : nullptr, nullptr);
    if (waits[0].revents != 0)
        wakeUp_.acknowledge();
}

} // namespace kestrovan
