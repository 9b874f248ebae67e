#pragma once

#include "platform/linux/BusResident.h"
#include "platform/linux/LogindLock.h"
#include "platform/linux/SessionInhibitor.h"

#include <atomic>
#include <memory>

class QObject;

namespace kestrovan {

class Diagnostics;

/// Keeps the user's session from being ended: locks of systemd-logind against power-off and its keys, a wish to the
/// session manager on the message bus, and a refusal to the one of X11 (XSMP), whichever there are. Where the end can
/// not be refused it is delayed by logind's InhibitDelayMaxSec (5 s unless configured).
///
/// Taken again whenever a service returns; what logind refuses is one line, said once. Needs a QGuiApplication that
/// outlives it. Main thread; never waits.
class SessionKeeper {
public:
    /// The connections outlive this object.
    SessionKeeper(BusConnection& systemBus, BusConnection& sessionBus, Diagnostics& diagnostics);
    SessionKeeper(const SessionKeeper&) = delete;
    SessionKeeper& operator=(const SessionKeeper&) = delete;
    ~SessionKeeper();

    void hold(bool wanted);

private:
    using Said = std::shared_ptr<std::atomic<bool>>;

    BusResident<LogindLock> lock(const char* mode, std::vector<std::string> parts);

    BusConnection& systemBus_;
    BusConnection& sessionBus_;
    Diagnostics& diagnostics_;
    Said hasComplained_ = std::make_shared<std::atomic<bool>>(false);
    BusResident<LogindLock> block_;
    BusResident<LogindLock> delay_;
    BusResident<SessionInhibitor> sessionManager_;
    std::unique_ptr<QObject> x11Refusal_; ///< the context of the answer to the session manager of X11
};

} // namespace kestrovan
