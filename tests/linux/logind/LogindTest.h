#pragma once

#include "platform/linux/BusResident.h"
#include "rigs/CollectedLines.h"
#include "rigs/LoopMainQueue.h"
#include "rigs/RealLogind.h"

#include <gmock/gmock.h>

namespace kestrovan {

using namespace std::chrono_literals;
using rigs::timeOf;

/// A machine with a logind, and no session.
class LogindTest : public testing::Test {
protected:
    /// Until the bus knows of every signal that has been asked for so far over `connection`.
    static bool listens(BusConnection& connection)
    {
        const auto isAnswered = std::make_shared<std::atomic<bool>>(false);
        const BusResident<Subscription> question(connection, [isAnswered](Bus& home) {
            return std::make_unique<Subscription>(
                home.onName("org.freedesktop.DBus", [isAnswered](bool) { *isAnswered = true; }));
        });
        return rigs::waitUntil([&] { return isAnswered->load(); });
    }

    // What "at once" means on a loaded machine; a call that waits for logind takes 700 ms and more.
    static constexpr auto atOnce = 300ms;

    rigs::PrivateBus bus{rigs::PrivateBus::Kind::system};
    rigs::RealLogind logind{bus};
    rigs::LoopMainQueue mainQueue;
    rigs::CollectedLines diagnostics;
    BusConnection systemBus{Bus::Kind::system};
    BusConnection sessionBus{Bus::Kind::session};
};

} // namespace kestrovan
