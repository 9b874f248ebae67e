#include "sensors/PowerMonitor.h"

#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"

#include <gtest/gtest.h>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;

class PowerMonitorTest : public ::testing::Test {
protected:
    PowerMonitorTest()
    {
        monitor->onPowerStateChanged = [this](const BatteryStatus& status) { reports.push_back(status); };
    }

    IcuText text;
    SimulatedLaptop laptop{text};
    std::unique_ptr<PowerMonitor> monitor = std::make_unique<PowerMonitor>(laptop.power(), laptop.time());
    std::vector<BatteryStatus> reports;
};

TEST_F(PowerMonitorTest, TheLastSourceThatCarriesAFieldDecidesIt)
{
    auto& sources = laptop.power().sources;
    sources = {{.state = "AC Power", .isCharging = true, .currentCapacity = 7, .maxCapacity = 9, .name = "first"},
               {.state = "Battery Power", .isCharging = {}, .currentCapacity = 50, .maxCapacity = 0, .name = {}},
               {}};
    EXPECT_EQ(monitor->fetchCurrentStatus(), (BatteryStatus{false, true, 77, "first"}));

    sources = {{.state = {}, .isCharging = {}, .currentCapacity = 120, .maxCapacity = 100, .name = {}}};
    EXPECT_EQ(monitor->fetchCurrentStatus(), (BatteryStatus{false, false, 100, "InternalBattery"}));
    sources->front().currentCapacity = -3;
    EXPECT_EQ(monitor->fetchCurrentStatus().currentPercentage, 0);
}

TEST_F(PowerMonitorTest, AMachineWithoutSourcesIsNotAMachineThatCannotBeAsked)
{
    laptop.power().sources = std::vector<PowerSourceDescription>{};
    EXPECT_EQ(monitor->fetchCurrentStatus(), (BatteryStatus{false, false, 100, "InternalBattery"}));
    laptop.power().sources.reset();
    EXPECT_EQ(monitor->fetchCurrentStatus(), (BatteryStatus{false, false, 0, "Unknown"}));
}

TEST_F(PowerMonitorTest, ReportsEveryChangeOnceAndNothingElse)
{
    laptop.advance(2s);
    EXPECT_TRUE(reports.empty());

    laptop.setBattery(99);
    laptop.advance(2s);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0], monitor->status.get());

    laptop.power().sources.reset();
    laptop.advance(500ms);
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_FALSE(reports[1].isACConnected);
}

TEST_F(PowerMonitorTest, NothingCallsBackAfterItsEnd)
{
    laptop.power().sources.reset();
    laptop.power().notifySources();
    monitor.reset();
    laptop.advance(2s);
    EXPECT_TRUE(reports.empty());
}

} // namespace
} // namespace kestrovan
