#pragma once

#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "update/UpdateManager.h"

#include <gmock/gmock.h>

#include <memory>

namespace kestrovan::test {

inline constexpr const char* autoCheckKey = "Kestrovan_AutoCheckUpdates";
inline constexpr const char* serverAddressKey = "Kestrovan_UpdateServerURL";

/// The update manager on a simulated laptop.
class UpdateTest : public ::testing::Test {
protected:
    UpdateTest() { start(); }

    /// Starts the program (again) on the settings of the laptop.
    void start() { manager = std::make_unique<UpdateManager>(laptop.platform()); }
    void startWithServer(SettingsValue address)
    {
        laptop.settings().setValue(serverAddressKey, std::move(address));
        start();
    }
    std::string storedServer() { return laptop.settings().read<std::string>(serverAddressKey).value_or("none"); }
    std::string error() const
    {
        const auto* message = manager->updateStatus->errorMessage();
        return message ? *message : "no error";
    }

    IcuText text;
    SimulatedLaptop laptop{text};
    std::unique_ptr<UpdateManager> manager;
};

} // namespace kestrovan::test
