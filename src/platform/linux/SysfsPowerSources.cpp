#include "platform/linux/SysfsPowerSources.h"

#include "platform/Diagnostics.h"
#include "platform/linux/NamedThread.h"
#include "platform/linux/PowerSupplies.h"
#include "platform/linux/Release.h"

#include <libudev.h>
#include <poll.h>

#include <array>
#include <cerrno>
#include <memory>

namespace kestrovan {

namespace {

using Udev = std::unique_ptr<udev, Release<udev_unref>>;
using Monitor = std::unique_ptr<udev_monitor, Release<udev_monitor_unref>>;
using Device = std::unique_ptr<udev_device, Release<udev_device_unref>>;

Monitor monitorPowerSupplies()
{
    const Udev library(udev_new());
    Monitor monitor(library ? udev_monitor_new_from_netlink(library.get(), "udev") : nullptr);
    if (!monitor || udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), "power_supply", nullptr) < 0 ||
        udev_monitor_enable_receiving(monitor.get()) < 0)
        return nullptr;
    return monitor;
}

} // namespace

SysfsPowerSources::SysfsPowerSources(MainQueue& mainQueue, Diagnostics& diagnostics, const std::filesystem::path& root)
    : mainQueue_(mainQueue), folder_(root / "class/power_supply")
{
    startListening(diagnostics);
}

SysfsPowerSources::~SysfsPowerSources()
{
    isEnding_ = true;
    wakeUp_.call();
    if (listener_)
        listener_->join();
}

std::optional<std::vector<PowerSourceDescription>> SysfsPowerSources::read()
{
    const auto supplies = readPowerSupplies(folder_);
    if (!supplies)
        return std::nullopt;
    std::vector<PowerSourceDescription> sources;
    if (auto together = describeTogether(*supplies))
        sources.push_back(std::move(*together));
    return sources;
}

Subscription SysfsPowerSources::notify(std::function<void()> changed)
{
    return listener_ ? changes_.subscribe(std::move(changed)) : Subscription();
}

void SysfsPowerSources::startListening(Diagnostics& diagnostics)
{
    std::shared_ptr<udev_monitor> monitor = monitorPowerSupplies();
    const auto announce = lifetime_.guard([this] {
        isAnnounced_ = false;
        changes_.tell();
    });
    if (monitor)
        listener_ = startNamedThread("kestrovan.udev", 0, [this, monitor, announce] { listen(*monitor, announce); });
    if (!listener_)
        diagnostics.line("Power supply events cannot be heard: a pulled charger is noticed by the poll alone.");
}

void SysfsPowerSources::listen(udev_monitor& monitor, const Task& announce)
{
    std::array<pollfd, 2> waits{{{wakeUp_.descriptor(), POLLIN, 0}, {udev_monitor_get_fd(&monitor), POLLIN, 0}}};
    while (!isEnding_) {
        // A socket that has failed reports it for ever; the poll of the guard is left then.
        if (::poll(waits.data(), waits.size(), -1) < 0 && errno != EINTR)
            return;
        if ((waits[1].revents & (POLLHUP | POLLNVAL)) != 0)
            return;
        if (waits[1].revents == 0)
            continue;
        // What came is of no interest, only that something did: a reading is complete by itself. An overflow of the
        // socket (no device, and an error that goes away by being read) is a change like any other.
        const Device device(udev_monitor_receive_device(&monitor));
        if (!isAnnounced_.exchange(true))
            mainQueue_.post(announce);
    }
}

} // namespace kestrovan
