#pragma once

#include "platform/MainQueue.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>

namespace kestrovan {

/// The signals by which terminals, scripts and the system ask a program to end (SIGTERM, SIGINT, SIGHUP, SIGQUIT), as
/// calls on the main thread. Those that whoever started the program has set to be ignored (as nohup does) stay ignored.
/// One at a time; needs the QCoreApplication.
class QuitSignals {
public:
    explicit QuitSignals(Task requested);
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;
    ~QuitSignals(); ///< signals do again what they did before

private:
    struct Replaced {
        int number;
        struct sigaction before;
    };

    std::array<Replaced, 4> replaced_;
    QSocketNotifier notifier_;
};

} // namespace kestrovan
