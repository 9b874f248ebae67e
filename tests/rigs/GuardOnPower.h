#pragma once

#include "core/Guard.h"
#include "core/NoDeterrentScreens.h"
#include "platform/linux/IcuText.h"
#include "platform/linux/LogindPowerAssertions.h"
#include "platform/linux/LogindSystemPower.h"
#include "platform/linux/PosixProcessLauncher.h"
#include "platform/linux/SysfsPowerSources.h"
#include "platform/linux/ThreadWorkers.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "rigs/MixedPlatform.h"

namespace kestrovan::rigs {

/// The whole guard on the power supplies, lid, sleep and holds of this machine, or of the rigs' stand-ins for them.
/// What it answers with (siren, screens, photographs) is simulated. One thread, that of `mainQueue`.
class GuardOnPower {
public:
    /// `procRoot`: where the kernel's file of the lid is; without one, logind is asked.
    GuardOnPower(MainQueue& mainQueue, Diagnostics& diagnostics, const std::filesystem::path& procRoot = "/nowhere")
        : sources_(mainQueue, diagnostics), systemPower_(systemBus_, sessionBus_, mainQueue, diagnostics, procRoot),
          assertions_(systemBus_, sessionBus_, mainQueue), guard_(platform(mainQueue, diagnostics), screens_)
    {
        guard().armDelayDuration = 1;
    }

    AppState& guard() { return guard_.appState; }
    GuardState state() { return guard().guardState; }
    BusConnection& systemBus() { return systemBus_; }

private:
    /// Only what watches the lid has a thread: the simulated parts know one alone.
    class LidWorkers final : public Workers {
    public:
        explicit LidWorkers(Workers& others) : others_(others) {}

        void run(Priority priority, Task task) override { others_.run(priority, std::move(task)); }
        void runAfter(std::chrono::milliseconds delay, Priority priority, Task task) override
        {
            others_.runAfter(delay, priority, std::move(task));
        }
        std::unique_ptr<SerialQueue> makeSerialQueue(const std::string& label) override
        {
            return label.ends_with("lidmonitor") ? threads_.makeSerialQueue(label) : others_.makeSerialQueue(label);
        }

    private:
        Workers& others_;
        ThreadWorkers threads_;
    };

    Platform platform(MainQueue& mainQueue, Diagnostics& diagnostics)
    {
        return mixed(laptop_.platform(), {.mainQueue = &mainQueue,
                                          .workers = &workers_,
                                          .diagnostics = &diagnostics,
                                          .powerSources = &sources_,
                                          .systemPower = &systemPower_,
                                          .powerAssertions = &assertions_,
                                          .processes = &processes_});
    }

    IcuText text_;
    SimulatedLaptop laptop_{text_};
    LidWorkers workers_{laptop_.time()};
    NoDeterrentScreens screens_;
    BusConnection systemBus_{Bus::Kind::system};
    BusConnection sessionBus_{Bus::Kind::session};
    SysfsPowerSources sources_;
    LogindSystemPower systemPower_;
    LogindPowerAssertions assertions_;
    PosixProcessLauncher processes_;
    Guard guard_;
};

} // namespace kestrovan::rigs
