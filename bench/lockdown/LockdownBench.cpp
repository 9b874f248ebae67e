// From the alarm to a machine that is locked down: keys grabbed and filtered on a real X server, locks held by a real
// logind, seen from outside (the records that logind keeps of them).
#include "LatencyTable.h"
#include "core/Guard.h"
#include "core/NoDeterrentScreens.h"
#include "platform/linux/BusConnection.h"
#include "platform/linux/IcuText.h"
#include "platform/linux/LogindPowerAssertions.h"
#include "platform/linux/LogindSystemPower.h"
#include "platform/linux/MakePresentationOptions.h"
#include "platform/linux/PosixProcessLauncher.h"
#include "platform/linux/QtKeyEvents.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "rigs/CollectedLines.h"
#include "rigs/MixedPlatform.h"
#include "rigs/PrivateDisplay.h"
#include "rigs/QtProgram.h"
#include "rigs/RealLogind.h"
#include "rigs/WitnessClient.h"

using namespace kestrovan;
using namespace std::chrono_literals;
using bench::LatencyTable;

namespace {

constexpr int runs = 200;

/// Notes when the keys are filtered, which is the last thing to happen to them.
class TimedKeyEvents final : public KeyEvents {
public:
    Subscription addLocalMonitor(Filter filter) override
    {
        auto subscription = events_.addLocalMonitor(std::move(filter));
        filtered = std::chrono::steady_clock::now();
        return subscription;
    }

    std::optional<std::chrono::steady_clock::time_point> filtered;

private:
    QtKeyEvents events_;
};

/// The locks that logind keeps a record of: ours, and those of the child process.
struct Locks {
    int own = 0;
    int childs = 0;
};

Locks countLocks()
{
    Locks found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/run/systemd/inhibit", ignored)) {
        if (entry.path().extension() == ".ref" || entry.path().filename().string().starts_with('.'))
            continue;
        std::ifstream stream(entry.path());
        const std::string record{std::istreambuf_iterator<char>(stream), {}};
        ++(record.find("PID=" + std::to_string(getpid()) + "\n") != std::string::npos ? found.own : found.childs);
    }
    return found;
}

/// The guard on a laptop whose desktop, keyboard, logind and child processes are real.
class Laptop {
public:
    bool isReady() const { return !display_.name().empty(); }

    void measure(LatencyTable::Row& keys, LatencyTable::Row& own, LatencyTable::Row& all)
    {
        std::optional<std::chrono::steady_clock::time_point> ownHeld, allHeld;
        keyEvents_.filtered.reset();
        const auto start = std::chrono::steady_clock::now();
        guard_.triggerAlarm(AlarmReason::test);
        const bool isHeld = rigs::QtProgram::until([&] {
            const auto locks = countLocks();
            const auto now = std::chrono::steady_clock::now();
            if (!ownHeld && locks.own == ownLocks)
                ownHeld = now;
            if (!allHeld && locks.own == ownLocks && locks.childs == 1)
                allHeld = now;
            return keyEvents_.filtered && allHeld;
        });
        if (!isHeld || witness_.openMenu(false)) {
            keys.addFailure();
        } else {
            keys.add(*keyEvents_.filtered - start);
            own.add(*ownHeld - start);
            all.add(*allHeld - start);
        }
        guard_.disarm(std::nullopt);
        rigs::QtProgram::until([] {
            const auto left = countLocks();
            return left.own + left.childs == 0;
        });
    }

private:
    // Two assertions (and a delay), the veto and its delay, the session's block and its delay.
    static constexpr int ownLocks = 7;

    rigs::PrivateDisplay display_;
    rigs::PrivateBus system_{rigs::PrivateBus::Kind::system};
    rigs::RealLogind logind_{system_};
    rigs::WitnessClient witness_;
    rigs::QtProgram program_{"xcb"};
    QtMainQueue mainQueue_;
    rigs::CollectedLines lines_;
    BusConnection systemBus_{Bus::Kind::system};
    BusConnection sessionBus_{Bus::Kind::session};
    LogindPowerAssertions assertions_{systemBus_, sessionBus_, mainQueue_};
    LogindSystemPower power_{systemBus_, sessionBus_, mainQueue_, lines_};
    PosixProcessLauncher processes_;
    std::unique_ptr<PresentationOptions> presentation_ = makePresentationOptions(systemBus_, sessionBus_, lines_);
    TimedKeyEvents keyEvents_;
    IcuText text_;
    SimulatedLaptop others_{text_};
    NoDeterrentScreens screens_;
    Guard parts_{rigs::mixed(others_.platform(), {.mainQueue = &mainQueue_,
                                                  .diagnostics = &lines_,
                                                  .systemPower = &power_,
                                                  .powerAssertions = &assertions_,
                                                  .processes = &processes_,
                                                  .presentation = presentation_.get(),
                                                  .keyEvents = &keyEvents_}),
                 screens_};
    AppState& guard_ = parts_.appState;
};

} // namespace

int main()
{
    LatencyTable table("Lockdown");
    auto& keys = table.row("alarm -> keys grabbed and filtered", {bench::p99(60)});
    auto& own = table.row("alarm -> all locks of ours held by logind", {bench::p99(60)});
    auto& all = table.row("alarm -> the child process's lock, too");
    Laptop laptop;
    for (int run = 0; laptop.isReady() && run < runs; ++run)
        laptop.measure(keys, own, all);
    table.print();
}
