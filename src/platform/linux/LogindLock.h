#pragma once

#include "platform/Lifetime.h"
#include "platform/linux/Bus.h"
#include "platform/linux/Descriptor.h"

#include <string>
#include <vector>

namespace kestrovan {

/// One inhibitor lock of logind (org.freedesktop.login1.Manager.Inhibit), held from construction to destruction as far
/// as logind lets this user: refused as a whole, it is tried part by part. It is taken again whenever logind or the bus
/// returns; what was held stays held until the new one is. Lives on the bus's thread.
class LogindLock {
public:
    struct Request {
        std::vector<std::string> parts; ///< "sleep", "idle", "handle-lid-switch", …
        std::string mode;               ///< "block" or "delay"
        std::string why;                ///< for people
    };
    /// What came of an attempt.
    struct Outcome {
        bool isHeld = false;              ///< at least in part
        std::vector<std::string> refused; ///< parts
        int error = 0;                    ///< of what is not held, an errno
        std::string errorText;
    };

    /// `decided` is called after every attempt, and once before its end where logind lets itself be waited for: whether
    /// that is a logind that hangs or a slow one, nobody can tell, so a late answer still counts. Attempts that a dying
    /// logind left without an answer are repeated, with growing pauses.
    LogindLock(Bus& bus, Request request, std::function<void(const Outcome&)> decided);

private:
    struct Attempt {
        std::vector<Descriptor> granted;
        std::size_t awaited = 0;
        bool isUnanswered = false;
        Outcome outcome;
    };
    using Ask = std::shared_ptr<Attempt>;

    void considerLink();
    void considerOwner(bool isOwned);
    void take();
    void askFor(const Ask& attempt, const std::vector<std::string>& parts);
    void receive(const Ask& attempt, const std::vector<std::string>& parts, const BusReply& reply);
    static void noteFailure(Attempt& attempt, const std::string& part, const BusReply& reply);
    void conclude(const Ask& attempt);
    void reportDelay(const Ask& attempt);
    void decide(const Outcome& outcome);

    Bus& bus_;
    const Request request_;
    const std::function<void(const Outcome&)> decided_;
    std::vector<Descriptor> held_;
    Ask current_; ///< the answers to earlier attempts are of no interest any more
    std::chrono::milliseconds pause_{0};
    bool knowsOwner_ = false;
    Subscription link_;
    Subscription owner_;
    Lifetime lifetime_;
};

} // namespace kestrovan
