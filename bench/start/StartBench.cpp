#include "Laptop.h"
#include "LatencyTable.h"
#include "ProcessCost.h"
#include "WindowWatch.h"
#include "rigs/RunningKestrovan.h"
#include "rigs/WitnessClient.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <span>
#include <thread>

using namespace kestrovan;
using namespace std::chrono_literals;
using bench::LatencyTable;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int runs = 200;
constexpr auto patience = 20s;

constexpr const char* settings =
    R"({"Kestrovan_Lang": "en", "Kestrovan_CameraCapture": false, "Kestrovan_AutoCheckUpdates": false,
        "Kestrovan_FullscreenArmed": false})";

/// From the start of a program until its window is there; its guard, if it has one, can be armed by then.
std::optional<LatencyTable::Milliseconds> timeToWindow(const std::string& program)
{
    bench::WindowWatch watch;
    const auto start = Clock::now();
    const rigs::Program running({program});
    if (!watch.waitForWindow(patience))
        return std::nullopt;
    return Clock::now() - start;
}

void addTo(LatencyTable::Row& row, std::optional<LatencyTable::Milliseconds> time)
{
    if (time)
        row.add(*time);
    else
        row.addFailure();
}

void measureStart(LatencyTable& table)
{
    auto& empty = table.row("process start -> window, empty Qt Quick program");
    auto& whole = table.row("process start -> window, Kestrovan");
    auto& own = table.row("what Kestrovan adds: guard ready to arm", {bench::median(150), bench::p99(150)});
    const TemporaryFolder home;
    setenv("HOME", home.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", home.path().c_str(), 1);
    for (int run = 0; run < runs; ++run) {
        const auto toolkit = timeToWindow(EMPTY_WINDOW);
        const auto program = timeToWindow(KESTROVAN_PROGRAM);
        addTo(empty, toolkit);
        addTo(whole, program);
        addTo(own, toolkit && program ? std::optional(*program - *toolkit) : std::nullopt);
    }
}

void measureIdle(LatencyTable& table, const rigs::TrayHost& tray, bool tellsThreads)
{
    constexpr auto duration = 30s;
    rigs::RunningKestrovan program(settings);
    tray.waitFor("Arm Protection");
    tray.press("Arm Protection");
    tray.waitFor("Disarm Protection");
    rigs::WitnessClient user;
    user.askToClose(rigs::RunningKestrovan::window());
    rigs::RunningKestrovan::waitForNoWindow();
    std::this_thread::sleep_for(3s);

    const auto before = bench::ProcessCost::of(program.pid());
    std::this_thread::sleep_for(duration);
    const auto after = bench::ProcessCost::of(program.pid());
    const auto seconds = std::chrono::duration<double>(duration).count();
    const auto busy = std::chrono::duration<double>(after.onProcessor - before.onProcessor).count();
    table.figure("armed and idle, window hidden: processor", 100 * busy / seconds, "%", 0.5);
    table.figure("armed and idle, window hidden: wake-ups",
                 static_cast<double>(after.allWakeUps() - before.allWakeUps()) / seconds, "/s", 15);
    if (!tellsThreads)
        return;
    for (const auto& [thread, count] : after.wakeUps)
        if (const auto last = before.wakeUps.find(thread); last != before.wakeUps.end())
            std::cout << thread << ": " << static_cast<double>(count - last->second) / seconds << " /s\n";
}

} // namespace

/// --threads also tells which thread wakes how often.
int main(int count, char** arguments)
{
    const std::span words(arguments, static_cast<std::size_t>(count));
    const bool tellsThreads = std::ranges::any_of(words, [](std::string_view word) { return word == "--threads"; });
    LatencyTable table("Start and idleness");
    const bench::Laptop laptop("800x600x24");
    measureIdle(table, laptop.tray, tellsThreads);
    measureStart(table);
    table.print();
}
