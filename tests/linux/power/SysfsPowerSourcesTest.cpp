#include "platform/linux/SysfsPowerSources.h"

#include "rigs/CollectedLines.h"
#include "rigs/Deadline.h"
#include "rigs/LoopMainQueue.h"
#include "rigs/MockPowerSupplies.h"
#include "sensors/PowerMonitor.h"

#include <gmock/gmock.h>

#include <atomic>
#include <fstream>
#include <thread>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using rigs::MockPowerSupplies;
using testing::IsEmpty;
using testing::Optional;

class SysfsPowerSourcesTest : public testing::Test {
protected:
    PowerSourceDescription onlySource()
    {
        const auto all = sources.read();
        EXPECT_TRUE(all && all->size() == 1) << "the machine is one source";
        return all && !all->empty() ? all->front() : PowerSourceDescription{};
    }

    MockPowerSupplies supplies;
    rigs::LoopMainQueue mainQueue;
    rigs::CollectedLines diagnostics;
    SysfsPowerSources sources{mainQueue, diagnostics};
};

const std::string onMains = PowerSourceDescription::acPower;
const std::string onBattery = PowerSourceDescription::batteryPower;

PowerSourceDescription nameAlone(const std::string& name, std::optional<std::string> state = std::nullopt)
{
    return {std::move(state), std::nullopt, std::nullopt, std::nullopt, name};
}

TEST_F(SysfsPowerSourcesTest, ALaptopIsOneSource)
{
    supplies.addLaptop();
    supplies.add("hidpp_battery_0",
                 {{"type", "Battery"}, {"scope", "Device"}, {"status", "Discharging"}, {"capacity", "3"}});

    EXPECT_EQ(onlySource(), (PowerSourceDescription{onMains, true, 48'000'000, 60'000'000, "BAT0"}));

    supplies.set("AC", "online", "0");
    supplies.set("BAT0", "status", "Discharging");
    EXPECT_EQ(onlySource(), (PowerSourceDescription{onBattery, false, 48'000'000, 60'000'000, "BAT0"}));
}

TEST_F(SysfsPowerSourcesTest, AUsbChargerIsTheMains)
{
    supplies.add("BAT0", {{"type", "Battery"}, {"status", "Charging"}, {"capacity", "40"}});
    supplies.add("ADP1", {{"type", "Mains"}, {"online", "0"}});
    supplies.add("ucsi-source-psy-USBC000:001", {{"type", "USB"}, {"online", "2"}});
    EXPECT_THAT(onlySource().state, Optional(onMains));

    supplies.set("ucsi-source-psy-USBC000:001", "online", "0");
    EXPECT_THAT(onlySource().state, Optional(onBattery)) << "whatever the battery still believes";
}

TEST_F(SysfsPowerSourcesTest, TheBatteryAnswersForMainsThatSayNothing)
{
    supplies.add("BAT0", {{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "40"}});
    EXPECT_THAT(onlySource().state, Optional(onBattery));
    supplies.set("BAT0", "status", "Full");
    EXPECT_THAT(onlySource().state, Optional(onMains));
    supplies.set("BAT0", "status", "Unknown");
    EXPECT_EQ(onlySource().state, std::nullopt);

    supplies.add("AC", {{"type", "Mains"}, {"online", "perhaps"}});
    supplies.set("BAT0", "status", "Discharging");
    EXPECT_THAT(onlySource().state, Optional(onBattery));
}

TEST_F(SysfsPowerSourcesTest, TwoBatteriesAreToldOfTogether)
{
    const auto battery = [](const char* status, const char* now, const char* full, const char* capacity) {
        return MockPowerSupplies::Attributes{{"type", "Battery"},
                                             {"status", status},
                                             {"energy_now", now},
                                             {"energy_full", full},
                                             {"capacity", capacity}};
    };
    supplies.add("AC", {{"type", "Mains"}, {"online", "1"}});
    supplies.add("BAT1", battery("Charging", "10000000", "20000000", "50"));
    supplies.add("BAT0", battery("Not charging", "50000000", "60000000", "83"));
    EXPECT_EQ(onlySource(), (PowerSourceDescription{onMains, true, 60'000'000, 80'000'000, "BAT0+BAT1"}));

    supplies.add("BAT2", {{"type", "Battery"}, {"charge_now", "100"}, {"charge_full", "1000"}, {"capacity", "11"}});
    EXPECT_THAT(onlySource().currentCapacity, Optional(50 + 83 + 11)) << "different units have no sum";
    EXPECT_THAT(onlySource().maxCapacity, Optional(300));
}

TEST_F(SysfsPowerSourcesTest, NothingThereIsAnEmptyListAndNoSysfsIsNone)
{
    EXPECT_THAT(sources.read(), testing::AnyOf(std::nullopt, Optional(IsEmpty())));
    supplies.add("hidpp_battery_0", {{"type", "Battery"}, {"scope", "Device"}});
    EXPECT_THAT(sources.read(), Optional(IsEmpty()));
    supplies.add("AC", {{"type", "Mains"}, {"online", "1"}});
    EXPECT_EQ(onlySource(), nameAlone("AC", onMains)) << "a desktop machine";
    supplies.add("BAT1", {{"type", "Battery"}, {"present", "0"}, {"status", "Unknown"}});
    EXPECT_THAT(onlySource().name, Optional(std::string("AC"))) << "an empty bay is no battery";

    SysfsPowerSources elsewhere(mainQueue, diagnostics, "/nowhere");
    EXPECT_EQ(elsewhere.read(), std::nullopt);
}

TEST_F(SysfsPowerSourcesTest, WhatMakesNoSenseIsAbsent)
{
    supplies.add("BAT0", {{"type", "Battery"},
                          {"status", "\xff\xfe"},
                          {"energy_now", "1000"},
                          {"energy_full", ""},
                          {"charge_now", ""},
                          {"charge_full", "1000"},
                          {"capacity", ""}});
    for (const char* nonsense :
         {"", "-1", "99999999999999999999", "9223372036854775807", "12 apples", "0x10", "\n", "4e6"}) {
        for (const char* attribute : {"energy_full", "charge_now", "capacity"})
            supplies.set("BAT0", attribute, nonsense);
        EXPECT_EQ(onlySource(), nameAlone("BAT0")) << nonsense;
    }
    supplies.remove("BAT0");
    supplies.add("BAT1", {{"type", "Battery"}, {"energy_now", "5"}, {"energy_full", "0"}, {"capacity", "101"}});
    supplies.add("odd", {{"online", "1"}});
    EXPECT_EQ(onlySource(), nameAlone("BAT1"));
}

void addPlainSupply(const std::filesystem::path& folder, const char* type, const char* online)
{
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "type") << type << "\n";
    std::ofstream(folder / "online") << online << "\n";
}

TEST_F(SysfsPowerSourcesTest, SuppliesMayComeAndGoDuringAReading)
{
    const std::filesystem::path root = testing::TempDir() + "kestrovan_supplies";
    const auto folder = root / "class/power_supply";
    addPlainSupply(folder / "AC", "Mains", "1");
    SysfsPowerSources plain(mainQueue, diagnostics, root);
    std::atomic<bool> isDone = false;
    std::thread hand([&] {
        for (int i = 0; i < 300; ++i) {
            addPlainSupply(folder / "ADP2", "Mains", "0");
            std::filesystem::remove_all(folder / "ADP2");
        }
        isDone = true;
    });
    while (!isDone)
        EXPECT_THAT(plain.read().value().at(0).state, Optional(onMains));
    hand.join();
    std::filesystem::remove_all(root);
}

TEST_F(SysfsPowerSourcesTest, EveryEventReachesTheMainThread)
{
    supplies.addLaptop();
    int calls = 0;
    const auto mainThread = std::this_thread::get_id();
    auto subscription = sources.notify([&] {
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
        ++calls;
    });
    ASSERT_TRUE(subscription);
    for (int event = 1; event <= 20; ++event) {
        supplies.sendEvent("AC");
        ASSERT_TRUE(mainQueue.runUntil([&] { return calls == event; })) << event;
    }

    subscription.reset();
    supplies.sendEvent("AC");
    mainQueue.runFor(50ms);
    EXPECT_EQ(calls, 20);
}

TEST_F(SysfsPowerSourcesTest, EventsDoNotPileUpBeforeABusyMainThread)
{
    supplies.addLaptop();
    int calls = 0;
    const auto subscription = sources.notify([&] { ++calls; });
    for (int i = 0; i < 8; ++i) { // more would not fit into the mock's socket
        supplies.sendEvent("AC");
        std::this_thread::sleep_for(2ms);
    }
    ASSERT_TRUE(rigs::waitUntil([&] { return mainQueue.waiting() > 0; }));
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(mainQueue.waiting(), 1U);
    EXPECT_TRUE(mainQueue.runUntil([&] { return calls > 0; }));
}

TEST_F(SysfsPowerSourcesTest, APulledChargerIsNoticedByTheEventAndWithoutOne)
{
    supplies.addLaptop();
    PowerMonitor monitor(sources, mainQueue);
    ASSERT_TRUE(monitor.status->isACConnected);
    ASSERT_EQ(monitor.status->currentPercentage, 80);

    supplies.set("AC", "online", "0");
    ASSERT_TRUE(mainQueue.runUntil([&] { return !monitor.status->isACConnected; })) << "by the poll";
    supplies.set("AC", "online", "1");
    supplies.sendEvent("AC");
    ASSERT_TRUE(mainQueue.runUntil([&] { return monitor.status->isACConnected; }));
    supplies.remove("AC");
    supplies.set("BAT0", "status", "Discharging");
    EXPECT_TRUE(mainQueue.runUntil([&] { return !monitor.status->isACConnected; })) << "the charger's supply vanished";
}

TEST_F(SysfsPowerSourcesTest, NoEventArrivesAfterTheEnd)
{
    supplies.addLaptop();
    int calls = 0;
    {
        SysfsPowerSources shortLived(mainQueue, diagnostics);
        const auto subscription = shortLived.notify([&] { ++calls; });
        for (int i = 0; i < 8; ++i)
            supplies.sendEvent("AC");
    }
    mainQueue.runFor(50ms);
    EXPECT_EQ(calls, 0);
    EXPECT_THAT(diagnostics.all(), IsEmpty());
}

} // namespace
} // namespace kestrovan
