#pragma once

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/PowerSources.h"
#include "platform/linux/WakeUp.h"

#include <atomic>
#include <filesystem>
#include <optional>
#include <thread>

struct udev_monitor;

namespace kestrovan {

class Diagnostics;

/// The power supplies of the kernel (Documentation/ABI/testing/sysfs-class-power), all told of as one source: what
/// the machine runs on is a property of the machine, and its batteries fill and empty together.
///
/// On the mains is a machine with a supply of type Mains, USB (USB-C chargers) or Wireless that is online; where no
/// supply says so, the batteries do. Supplies of scope "Device" (mice, headsets) belong to something else.
/// Changes are heard from udev, on a thread of its own. Main thread.
class SysfsPowerSources final : public PowerSources {
public:
    /// `root` is where sysfs is mounted.
    SysfsPowerSources(MainQueue& mainQueue, Diagnostics& diagnostics, const std::filesystem::path& root = "/sys");
    ~SysfsPowerSources() override;

    std::optional<std::vector<PowerSourceDescription>> read() override;
    [[nodiscard]] Subscription notify(std::function<void()> changed) override;

private:
    void startListening(Diagnostics& diagnostics);
    void listen(udev_monitor& monitor, const Task& announce);

    MainQueue& mainQueue_;
    std::string folder_;
    Signal<> changes_;
    std::atomic<bool> isAnnounced_ = false; ///< changes that come before the main thread has looked are one
    std::atomic<bool> isEnding_ = false;
    WakeUp wakeUp_;
    std::optional<std::thread> listener_;
    Lifetime lifetime_;
};

} // namespace kestrovan
