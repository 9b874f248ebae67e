#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>

struct sd_bus;
struct sd_bus_message;

namespace kestrovan {

/// The lid as logind tells of it (LidClosed), for machines whose kernel has no file for it. logind does not announce
/// a change of it, so it has to be asked.
///
/// It is asked over a connection of its own. Each ask() takes what has been answered since the one before, asks again
/// and waits a little for that answer; one that comes later is taken next time. While an answer is overdue nobody
/// waits for it.
class LogindLid {
public:
    LogindLid() = default;
    LogindLid(const LogindLid&) = delete;
    LogindLid& operator=(const LogindLid&) = delete;
    ~LogindLid();

    /// The last answer, which is this call's own where logind gives it within `patience`; none as long as there has
    /// been none. A logind that is gone or hangs does not take it back: whoever works with the lid shut on a big screen
    /// must not seem to open and shut it when logind is restarted. Any thread.
    std::optional<bool> ask(std::chrono::milliseconds patience);

private:
    using Clock = std::chrono::steady_clock;
    enum class Lid { unknown, open, closed };

    void connect();
    void takeAnswer();
    void askAgain();
    void waitForAnswer(std::chrono::milliseconds patience);
    void disconnect();
    void receive(sd_bus_message* reply);

    std::mutex mutex_; ///< over all but lid_; never waited for
    sd_bus* bus_ = nullptr;
    bool isAwaited_ = false;
    Clock::time_point nextAttempt_;
    std::atomic<Lid> lid_ = Lid::unknown;
};

} // namespace kestrovan
