#pragma once

#include "rigs/MockPowerSupplies.h"
#include "rigs/PrivateDisplay.h"
#include "rigs/RealLogind.h"
#include "rigs/TrayHost.h"

namespace kestrovan::bench {

/// All that the program finds on a laptop on the mains whose desktop has a tray.
struct Laptop {
    explicit Laptop(const std::string& screen) : display({"Xvfb", "-screen", "0", screen}) { supplies.addLaptop(); }

    rigs::PrivateDisplay display;
    rigs::PrivateBus systemBus{rigs::PrivateBus::Kind::system};
    rigs::PrivateBus sessionBus{rigs::PrivateBus::Kind::session};
    rigs::RealLogind logind{systemBus};
    rigs::MockPowerSupplies supplies;
    rigs::TrayHost tray{sessionBus};
};

} // namespace kestrovan::bench
