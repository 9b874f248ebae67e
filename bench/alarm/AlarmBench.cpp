// From the charger's event to the siren in another program's ears: the whole guard on real services, with its windows
// on a real X server, also while the services that must not matter hang.
#include "EventLoop.h"
#include "LatencyTable.h"
#include "app/LinuxPlatform.h"
#include "core/Guard.h"
#include "overlay/FullscreenOverlayManager.h"
#include "overlay/HostingView.h"
#include "rigs/MockPowerSupplies.h"
#include "rigs/MonitorRecorder.h"
#include "rigs/RealLogind.h"
#include "rigs/SoundServer.h"
#include "rigs/TemporaryFolder.h"
#include "rigs/TwoOutputs.h"

#include <QApplication>
#include <QQuickWindow>

#include <cstdlib>

using namespace kestrovan;
using namespace std::chrono_literals;
using bench::LatencyTable;
using bench::runFor;
using bench::runUntil;
using rigs::SoundServer;

namespace {

constexpr int runs = 200;
constexpr auto lookInterval = 5ms;

// Above the alert sound, which is heard at the same time, and reached by the siren within its first 0.1 ms.
constexpr int sirenAmplitude = 20'000;

/// A laptop with its charger, bus and logind, for every guard that runs on it.
struct Hardware {
    Hardware() { supplies.addLaptop(); }

    void setCharger(bool isPlugged) { supplies.set("AC", "online", isPlugged ? "1" : "0"); }
    void announceCharger() { supplies.sendEvent("AC"); }

    rigs::PrivateBus bus{rigs::PrivateBus::Kind::system};
    rigs::RealLogind logind{bus};
    rigs::MockPowerSupplies supplies{logind.lid().testbed()};
};

/// The program without its main window.
class Machine {
public:
    explicit Machine(Hardware& hardware) : hardware_(hardware)
    {
        views_.load();
        guard().toggleCameraCapture(false);
    }

    AppState& guard() { return guard_.appState; }

    /// Armed on mains, without the seconds that are counted down.
    bool arm()
    {
        hardware_.setCharger(true);
        hardware_.announceCharger();
        if (!runUntil([this] { return guard().powerMonitor.status->isACConnected; }))
            return false;
        guard().guardState = GuardState::armed();
        guard().lidMonitor.armedStateMayHaveChanged();
        return true;
    }

    bool unplugCharger()
    {
        hardware_.setCharger(false);
        hardware_.announceCharger();
        return runUntil([this] { return guard().guardState->isAlarmTriggered(); });
    }

    void measure(LatencyTable::Row& row, const rigs::MonitorRecorder& recorder)
    {
        const auto isSilent = [&] { return recorder.peak(100ms) == 0; };
        if (!arm() || !runUntil(isSilent, lookInterval))
            return row.addFailure();
        hardware_.setCharger(false);
        const auto before = recorder.count();
        const auto start = std::chrono::steady_clock::now();
        hardware_.announceCharger();
        const auto heard = [&] { return recorder.firstAbove(sirenAmplitude, before); };
        if (runUntil([&] { return heard().has_value(); }, lookInterval))
            row.add(recorder.arrivalOf(*heard()) - start);
        else
            row.addFailure();
        guard().disarm(std::nullopt);
    }

private:
    Hardware& hardware_;
    LinuxGround ground_;
    LinuxPlatform platform_{ground_, [](auto answer) { answer(false); }};
    HostingViews views_{platform_.platform()};
    FullscreenOverlayManager screens_{platform_.platform(),
                                      [this](auto& guard, auto& screens) { return views_.make(guard, screens); }};
    Guard guard_{platform_.platform(), screens_};
};

void measureAll(LatencyTable& table, Hardware& hardware, SoundServer::Kind kind, const std::string& name)
{
    // PipeWire itself takes up to 30 ms to play anything.
    const bool isPulseAudio = kind == SoundServer::Kind::pulseAudio;
    const auto targets = isPulseAudio ? std::vector{bench::p99(60)} : std::vector<LatencyTable::Target>{};
    auto& usual = table.row(name + ": charger's event -> siren in the monitor", targets);
    auto& hung = table.row(name + ": the same, logind stopped", targets);

    SoundServer server(kind);
    std::optional<rigs::PrivateBus> sessionBus; // PipeWire brings its own
    if (isPulseAudio)
        sessionBus.emplace(rigs::PrivateBus::Kind::session);
    if (!server.start())
        return;
    const rigs::MonitorRecorder recorder("first", 1, rigs::MonitorRecorder::Pace::hurried);
    if (!recorder.isListening())
        return;
    Machine machine(hardware);
    runFor(1s); // everything that begins with the program has begun
    for (int run = 0; run < runs; ++run)
        machine.measure(usual, recorder);
    hardware.logind.daemon().signal(SIGSTOP);
    for (int run = 0; run < runs; ++run)
        machine.measure(hung, recorder);
    hardware.logind.daemon().signal(SIGCONT);
}

/// The longest time for which the siren was not to be heard. It passes through zero hundreds of times a second.
std::chrono::duration<double, std::milli> longestSilence(const std::vector<std::int16_t>& samples)
{
    constexpr double samplesInAMillisecond = 44.1;
    constexpr int audible = 1'000;
    std::size_t longest = 0;
    std::size_t current = 0;
    for (const int sample : samples) {
        current = std::abs(sample) < audible ? current + 1 : 0;
        longest = std::max(longest, current);
    }
    return std::chrono::duration<double, std::milli>(static_cast<double>(longest) / samplesInAMillisecond);
}

void changeScreensInAlarm(LatencyTable& table, Hardware& hardware, const rigs::TwoOutputs& outputs)
{
    constexpr int changes = 200;
    SoundServer server(SoundServer::Kind::pulseAudio);
    const rigs::PrivateBus sessionBus(rigs::PrivateBus::Kind::session);
    auto& row = table.row("longest silence in the siren while a screen comes and goes 200 times", {bench::worst(20)});
    if (!server.start())
        return row.addFailure();
    const rigs::MonitorRecorder recorder("first", 1, rigs::MonitorRecorder::Pace::hurried);
    Machine machine(hardware);
    if (!recorder.isListening() || !machine.arm() || !machine.unplugCharger() ||
        !runUntil([&] { return recorder.firstAbove(sirenAmplitude, 0).has_value(); }, lookInterval))
        return row.addFailure();
    const auto from = recorder.count();
    for (int change = 0; change < changes; ++change) {
        change % 2 == 0 ? outputs.unplug(1) : outputs.plug(1);
        runFor(20ms);
    }
    row.add(longestSilence(recorder.samples(from)));
    machine.guard().disarm(std::nullopt);
}

} // namespace

int main(int count, char** arguments)
{
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    const TemporaryFolder home;
    setenv("HOME", home.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", home.path().c_str(), 1);
    const rigs::TwoOutputs outputs;
    Hardware hardware;
    const QApplication application(count, arguments);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    LatencyTable table("From the charger to the siren");
    measureAll(table, hardware, SoundServer::Kind::pulseAudio, "PulseAudio");
    measureAll(table, hardware, SoundServer::Kind::pipeWire, "PipeWire");
    changeScreensInAlarm(table, hardware, outputs);
    table.print();
}
