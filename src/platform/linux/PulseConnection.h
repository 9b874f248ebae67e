#pragma once

#include "platform/linux/Mailbox.h"
#include "platform/linux/PulseHandles.h"
#include "platform/linux/Resident.h"
#include "platform/linux/WakeUp.h"

#include <atomic>
#include <optional>
#include <thread>

namespace kestrovan {

class Diagnostics;
class PulseServer;

/// The connection to the sound server, on a thread of its own. No caller ever waits for the server, whether it is
/// missing, hangs or dies. One serves the whole program; everything that uses it ends before it.
class PulseConnection {
public:
    /// `diagnostics` outlives the connection and hears of it, once, when there is no sound server.
    explicit PulseConnection(Diagnostics& diagnostics);
    PulseConnection(const PulseConnection&) = delete;
    PulseConnection& operator=(const PulseConnection&) = delete;
    ~PulseConnection(); ///< runs what has been posted, then closes the connection

    /// Runs `task` on the connection's thread, in the order of posting, whether there is a server or not. Any thread.
    /// Dropped where the system had no thread to give.
    void post(std::function<void(PulseServer& server)> task);

private:
    void run();

    Diagnostics& diagnostics_;
    Mailbox<PulseServer> posted_;
    std::atomic<bool> isEnding_ = false;
    WakeUp wakeUp_;
    pulse::MainloopHandle loop_;
    std::optional<std::thread> thread_;
};

/// An object that lives on the thread of the sound server.
template <class T>
using PulseResident = Resident<PulseConnection, T>;

} // namespace kestrovan
