#include "EventLoop.h"
#include "LatencyTable.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/linux/SmallFile.h"
#include "rigs/CollectedLines.h"
#include "rigs/GuardOnPower.h"
#include "rigs/MockPowerSupplies.h"
#include "rigs/RealLogind.h"

#include <array>
#include <random>

using namespace kestrovan;
using namespace std::chrono_literals;
using bench::LatencyTable;
using bench::runFor;
using bench::runUntil;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int runs = 200;

// Two of the veto, three of the assertions, one of the child process.
constexpr std::size_t allLocks = 6;

/// So that what is measured stands in no fixed relation to the polls.
void runForUpTo(std::chrono::milliseconds most)
{
    static std::mt19937 generator(1); // NOLINT(cert-msc51-cpp): the same runs every time
    std::uniform_int_distribution<std::chrono::milliseconds::rep> length(0, most.count());
    runFor(std::chrono::milliseconds(length(generator)));
}

/// How long it takes from `cause` until `effect` is there.
template <class Cause, class Effect>
void measure(LatencyTable::Row& row, Cause cause, Effect effect)
{
    const auto start = Clock::now();
    cause();
    if (runUntil(effect))
        row.add(Clock::now() - start);
    else
        row.addFailure();
}

/// The guard on its real loop.
struct Machine {
    explicit Machine(const std::filesystem::path& procRoot = "/nowhere") : onPower(queue, diagnostics, procRoot) {}

    /// Armed, without the seconds that are counted down.
    void arm()
    {
        onPower.guard().guardState = GuardState::armed();
        onPower.guard().lidMonitor.armedStateMayHaveChanged();
    }
    void disarm() { onPower.guard().disarm(""); }
    bool sounds() { return onPower.state().isAlarmTriggered(); }

    QtMainQueue queue;
    rigs::CollectedLines diagnostics;
    rigs::GuardOnPower onPower;
};

class Charger {
public:
    Charger() { supplies_.addLaptop(); }

    void set(bool isPlugged) { supplies_.set("AC", "online", isPlugged ? "1" : "0"); }
    void announce() { supplies_.sendEvent("AC"); }
    void setAndAnnounce(bool isPlugged)
    {
        set(isPlugged);
        announce();
    }

private:
    rigs::MockPowerSupplies supplies_;
};

void measureMonitor(LatencyTable& table, Charger& charger)
{
    QtMainQueue queue;
    rigs::CollectedLines diagnostics;
    SysfsPowerSources sources(queue, diagnostics);
    PowerMonitor monitor(sources, queue);
    auto& row = table.row("event of a supply -> onPowerStateChanged", {bench::p99(20)});
    bool isPlugged = true;
    bool isTold = false;
    monitor.onPowerStateChanged = [&](const BatteryStatus& status) { isTold = status.isACConnected == isPlugged; };
    for (int run = 0; run < runs; ++run) {
        isPlugged = !isPlugged;
        isTold = false;
        charger.set(isPlugged);
        measure(
            row, [&] { charger.announce(); }, [&] { return isTold; });
        runFor(1ms);
    }
    charger.setAndAnnounce(true);
}

void measureCharger(LatencyTable& table, Charger& charger, bool announces)
{
    auto& row = announces ? table.row("event of a supply -> alarm, whole guard", {bench::p99(20)})
                          : table.row("charger pulled, no event -> alarm", {bench::worst(550)});
    Machine machine;
    for (int run = 0; run < runs; ++run) {
        charger.setAndAnnounce(true);
        runUntil([&] { return machine.onPower.guard().powerMonitor.status->isACConnected; });
        machine.arm();
        runForUpTo(announces ? 5ms : 500ms);
        charger.set(false);
        const auto announce = [&] {
            if (announces)
                charger.announce();
        };
        measure(row, announce, [&] { return machine.sounds(); });
        machine.disarm();
    }
}

void measureLid(LatencyTable& table, rigs::RealLogind& logind, bool hasKernelFile)
{
    auto& row = table.row(hasKernelFile ? "lid closed -> alarm" : "lid closed -> alarm, lid asked of logind",
                          {bench::p99(200)});
    Machine machine(hasKernelFile ? logind.lid().procRoot() : "/nowhere");
    for (int run = 0; run < runs; ++run) {
        logind.lid().set(false);
        runUntil([&] { return !machine.onPower.guard().lidMonitor.isLidClosed; });
        machine.arm();
        logind.waitForLockCount(2); // else the machine sleeps
        runForUpTo(150ms);
        measure(
            row, [&] { logind.lid().set(true); }, [&] { return machine.sounds(); });
        logind.moveLid(false);
        machine.disarm();
    }
}

void measureLocks(LatencyTable& table, rigs::RealLogind& logind)
{
    auto& row = table.row("alarm -> all locks held, real logind", {bench::p99(60)});
    Machine machine;
    runFor(500ms); // the connections are made when the program starts
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        machine.onPower.guard().triggerAlarm(AlarmReason::test);
        if (logind.waitForLockCount(allLocks))
            row.add(Clock::now() - start);
        else
            row.addFailure();
        machine.disarm();
        logind.waitForLockCount(0);
    }
}

void measureHangingLogind(LatencyTable& table, rigs::RealLogind& logind)
{
    auto& row = table.row("what all of this costs the alarm, logind hangs", {bench::p99(10)});
    Machine machine;
    runFor(500ms);
    logind.daemon().signal(SIGSTOP);
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        machine.onPower.guard().triggerAlarm(AlarmReason::test);
        row.add(Clock::now() - start);
        machine.disarm();
        runFor(1ms);
    }
    logind.daemon().signal(SIGCONT);
}

/// How often the threads of the guard have been woken so far; the rigs have others.
long wakeUps()
{
    constexpr std::array ours{"lidmonitor", "systembus", "sessionbus", "udev", "children"};
    long sum = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        const auto name = readSmallFile(AT_FDCWD, task.path() / "comm").value_or("");
        const bool isMain = task.path().filename() == std::to_string(::getpid());
        if (!isMain && std::ranges::find(ours, name) == ours.end())
            continue;
        std::ifstream status(task.path() / "status");
        const std::string key = "voluntary_ctxt_switches:";
        for (std::string line; std::getline(status, line);)
            if (line.starts_with(key))
                sum += std::stol(line.substr(key.size()));
    }
    return sum;
}

void measureIdle(LatencyTable& table, const rigs::RealLogind& logind, const std::filesystem::path& procRoot,
                 const std::string& name)
{
    constexpr auto duration = 10s;
    Machine machine(procRoot);
    machine.onPower.guard().armDelayDuration = 1;
    machine.onPower.guard().startArming();
    runUntil([&] { return machine.onPower.state().isArmed(); });
    logind.waitForLockCount(allLocks);
    runFor(500ms);
    const auto before = wakeUps();
    runFor(duration);
    const auto seconds = static_cast<double>(std::chrono::seconds(duration).count());
    table.figure("armed and idle, " + name + ": wake-ups", static_cast<double>(wakeUps() - before) / seconds, "/s", 15);
}

} // namespace

int main(int count, char** arguments)
{
    const QCoreApplication application(count, arguments);
    LatencyTable table("Charger, lid and sleep");
    const rigs::PrivateBus bus(rigs::PrivateBus::Kind::system);
    {
        Charger charger;
        measureMonitor(table, charger);
        measureCharger(table, charger, true);
        measureCharger(table, charger, false);
    }
    rigs::RealLogind logind(bus);
    measureLid(table, logind, true);
    measureLid(table, logind, false);
    measureLocks(table, logind);
    measureHangingLogind(table, logind);
    measureIdle(table, logind, logind.lid().procRoot(), "lid from the kernel");
    measureIdle(table, logind, "/nowhere", "lid from logind");
    table.print();
}
