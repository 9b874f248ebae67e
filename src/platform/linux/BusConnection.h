#pragma once

#include "platform/linux/Bus.h"
#include "platform/linux/Mailbox.h"
#include "platform/linux/WakeUp.h"

#include <atomic>
#include <thread>

namespace kestrovan {

/// A connection to a message bus, on a thread of its own. No caller ever waits for the bus, and the end does not
/// either, whatever hangs: the thread never blocks in a call.
///
/// One of each kind serves the whole program. What lives on the bus's thread is made there and ended there: BusResident
/// does that. Everything that uses the connection ends before it.
class BusConnection {
public:
    /// The bus is the one that the environment names now, or would mean by naming none (D-Bus Specification,
    /// "Well-known Message Bus Instances").
    explicit BusConnection(Bus::Kind kind);
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection(); ///< runs what has been posted, then closes the connection

    /// Runs `task` on the bus's thread, in the order of posting, whether the bus is there or not. Any thread.
    /// Dropped where the system had no thread to give.
    void post(std::function<void(Bus& bus)> task);

private:
    void run();
    void wait(const Bus& bus) const;

    const std::string address_;
    Mailbox<Bus> posted_;
    std::atomic<bool> isEnding_ = false;
    WakeUp wakeUp_;
    std::optional<std::thread> thread_;
};

} // namespace kestrovan
