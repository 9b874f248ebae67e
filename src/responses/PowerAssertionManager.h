#pragma once

#include "platform/ChildProcess.h"
#include "platform/Lifetime.h"
#include "platform/Published.h"

#include <cstdint>

namespace kestrovan {

class Diagnostics;
class PowerAssertions;
struct Platform;

/// Keeps the machine awake by three means at once, each of which alone would do: two power assertions, an activity of
/// this process, and a child process. Main thread.
class PowerAssertionManager : public Observable {
public:
    explicit PowerAssertionManager(const Platform& platform);

    /// True between start and stop, whatever could be had.
    Published<bool> isPreventingSleep{*this, false};

    /// Takes all three, labelled with `reason`. While already active it changes nothing, not even the label.
    void startPreventingSleep(const std::string& reason);
    void stopPreventingSleep();

private:
    void createAssertions(const std::string& reason);
    void launchCaffeinate();

    PowerAssertions& assertions_;
    ProcessLauncher& processes_;
    Diagnostics& diagnostics_;
    std::uint32_t systemSleepAssertionID_ = 0;
    std::uint32_t userIdleAssertionID_ = 0;
    Subscription processActivity_;
    std::unique_ptr<ChildProcess> caffeinateProcess_;
    Lifetime lifetime_;
};

} // namespace kestrovan
