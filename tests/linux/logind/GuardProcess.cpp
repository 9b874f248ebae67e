#include "platform/linux/StdoutDiagnostics.h"
#include "rigs/GuardOnPower.h"
#include "rigs/LoopMainQueue.h"

#include <cstdlib>
#include <string>

/// guard_process armed|alarm [user]
/// A guard that is in that state until it is killed, as the user with that number; says its lines.
int main(int count, char** arguments)
{
    using namespace kestrovan;
    const std::string state = count > 1 ? arguments[1] : "";
    const auto user = static_cast<uid_t>(count > 2 ? std::atoi(arguments[2]) : 0); // NOLINT(cert-err34-c)
    if (user != 0 && (::setresgid(user, user, user) != 0 || ::setresuid(user, user, user) != 0))
        return 1;
    StdoutDiagnostics diagnostics;
    rigs::LoopMainQueue mainQueue;
    rigs::GuardOnPower machine(mainQueue, diagnostics);
    if (state == "armed")
        machine.guard().startArming();
    else
        machine.guard().triggerAlarm(AlarmReason::test);
    while (true)
        mainQueue.runFor(std::chrono::hours(1));
}
