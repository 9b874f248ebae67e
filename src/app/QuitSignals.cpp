#include "app/QuitSignals.h"

#include "platform/linux/WakeUp.h"

#include <cerrno>

namespace kestrovan {

namespace {

// Outlives every handler that uses it.
const WakeUp& arrival()
{
    static const WakeUp wakeUp;
    return wakeUp;
}

void noteArrival(int /*number*/)
{
    const int error = errno;
    arrival().call();
    errno = error;
}

} // namespace

QuitSignals::QuitSignals(Task requested)
    : replaced_{{{SIGTERM, {}}, {SIGINT, {}}, {SIGHUP, {}}, {SIGQUIT, {}}}},
      notifier_(arrival().descriptor(), QSocketNotifier::Read)
{
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [requested = std::move(requested)] {
        arrival().acknowledge();
        requested();
    });
    struct sigaction action {};
    action.sa_handler = noteArrival;
    action.sa_flags = SA_RESTART;
    for (auto& [number, before] : replaced_) {
        ::sigaction(number, nullptr, &before);
        if (before.sa_handler != SIG_IGN)
            ::sigaction(number, &action, nullptr);
    }
}

QuitSignals::~QuitSignals()
{
    for (const auto& [number, before] : replaced_)
        ::sigaction(number, &before, nullptr);
}

} // namespace kestrovan
