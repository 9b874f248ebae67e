#pragma once

#include "core/AppState.h"

namespace kestrovan {

/// The guard with everything it works through, made in the right order for one laptop, real or simulated: what the
/// program, the rehearsal and the tests all run. Main thread.
struct Guard {
    Guard(const Platform& platform, DeterrentScreens& screens)
        : powerMonitor(platform.powerSources, platform.mainQueue),
          lidMonitor(platform.systemPower, platform.mainQueue, platform.workers), alarmManager(platform),
          cameraManager(platform), updateManager(platform), powerAssertionManager(platform),
          securityLockdownManager(platform, powerAssertionManager),
          appState(platform, {.powerMonitor = powerMonitor,
                              .lidMonitor = lidMonitor,
                              .alarmManager = alarmManager,
                              .cameraManager = cameraManager,
                              .updateManager = updateManager,
                              .powerAssertionManager = powerAssertionManager,
                              .securityLockdownManager = securityLockdownManager,
                              .deterrentScreens = screens})
    {}

    PowerMonitor powerMonitor;
    LidMonitor lidMonitor;
    AlarmManager alarmManager;
    CameraManager cameraManager;
    UpdateManager updateManager;
    PowerAssertionManager powerAssertionManager;
    SecurityLockdownManager securityLockdownManager;
    AppState appState;
};

} // namespace kestrovan
