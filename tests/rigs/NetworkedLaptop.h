#pragma once

#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "rigs/LoopMainQueue.h"
#include "rigs/MixedPlatform.h"
#include "update/UpdateManager.h"

#include <memory>

namespace kestrovan::rigs {

/// A simulated laptop on the real network, and on the real time that this takes.
class NetworkedLaptop {
public:
    /// A manager that has just begun to check at `address`; it must not outlive `http` or this laptop.
    std::unique_ptr<UpdateManager> startCheck(const std::string& address, Http& http)
    {
        auto manager =
            std::make_unique<UpdateManager>(mixed(laptop_.platform(), {.mainQueue = &queue_, .http = &http}));
        manager->setServerURL(address);
        manager->checkForUpdates(false);
        return manager;
    }
    /// False if the check does not end.
    bool awaitEnd(const UpdateManager& manager)
    {
        return queue_.runUntil([&] { return !manager.updateStatus->isChecking(); }, 60s);
    }

private:
    IcuText text_;
    SimulatedLaptop laptop_{text_};
    LoopMainQueue queue_;
};

} // namespace kestrovan::rigs
