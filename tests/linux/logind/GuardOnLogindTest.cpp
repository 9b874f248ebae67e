#include "LogindTest.h"
#include "rigs/GuardOnPower.h"
#include "rigs/TemporaryFolder.h"

#include <fstream>

namespace kestrovan {
namespace {

using testing::IsEmpty;
using testing::StartsWith;

// Two of the veto, three of the assertions, one of the child process.
constexpr std::size_t allLocks = 6;
constexpr std::size_t locksWithoutChild = allLocks - 1;

class GuardOnLogindTest : public LogindTest {
protected:
    void SetUp() override { ASSERT_TRUE(listens(machine.systemBus())); }

    void arm()
    {
        machine.guard().startArming();
        ASSERT_TRUE(mainQueue.runUntil([&] { return machine.state().isArmed(); }));
    }
    void armAndWait()
    {
        arm();
        ASSERT_TRUE(logind.waitForLockCount(allLocks));
    }
    bool sounds(AlarmReason reason)
    {
        return mainQueue.runUntil([&] { return machine.state() == GuardState::alarmTriggered(reason); });
    }
    /// The process of the child's lock that has come after `before`; 0 if none does.
    pid_t waitForHolderAfter(pid_t before) const
    {
        pid_t holder = 0;
        const bool isThere = rigs::waitUntil([&] {
            holder = logind.holderOf("The guard keeps the machine awake");
            return holder != 0 && holder != before;
        });
        return isThere ? holder : 0;
    }
    void disarm() { ASSERT_TRUE(machine.guard().disarm("")); }

    rigs::GuardOnPower machine{mainQueue, diagnostics, logind.lid().procRoot()};
};

TEST_F(GuardOnLogindTest, NeitherLidNorKeyPutsAnArmedMachineToSleep)
{
    EXPECT_THAT(logind.locks(), IsEmpty());
    armAndWait();
    logind.lid().pressSleepKey();
    ASSERT_TRUE(logind.moveLid(true));
    ASSERT_TRUE(sounds(AlarmReason::lidClosed));
    mainQueue.runFor(300ms);
    EXPECT_EQ(logind.suspendCount(), 0);
    EXPECT_EQ(logind.locks().size(), allLocks);

    ASSERT_TRUE(logind.moveLid(false));
    disarm();
    EXPECT_TRUE(logind.waitForLockCount(0));
    EXPECT_EQ(logind.suspendCount(), 0);
    logind.lid().pressSleepKey();
    EXPECT_TRUE(rigs::waitUntil([&] { return logind.suspendCount() > 0; })) << "the key is the user's own again";
    EXPECT_THAT(diagnostics.all(), IsEmpty());
}

TEST_F(GuardOnLogindTest, NorDoesIdleTimeThoughLogindIsRestarted)
{
    ASSERT_TRUE(logind.isIdle()) << "nobody is there";
    armAndWait();
    EXPECT_FALSE(logind.isIdle());
    logind.restart();
    EXPECT_FALSE(logind.isIdle());
    EXPECT_TRUE(logind.waitForLockCount(allLocks)) << "none of them twice";
    EXPECT_FALSE(logind.isIdle());
    disarm();
    EXPECT_TRUE(rigs::waitUntil([&] { return logind.isIdle(); }));
}

TEST_F(GuardOnLogindTest, ASleepThatSomebodyAsksForFiresTheAlarmFirst)
{
    armAndWait();
    ASSERT_GE(logind.suspend(), 0) << "root may in spite of the locks";
    ASSERT_TRUE(sounds(AlarmReason::sleepAttempted));
    EXPECT_EQ(logind.suspendCount(), 0) << "the delay lock is still held";
    EXPECT_TRUE(rigs::waitUntil([&] { return logind.suspendCount() == 1; })) << "logind's patience is over";
}

TEST_F(GuardOnLogindTest, WithoutTheLidAlarmTheLidIsHeldAllTheSameAndSilent)
{
    machine.guard().toggleLidAlarm(false);
    arm();
    ASSERT_TRUE(logind.waitForLockCount(allLocks - 2)) << "all but the veto's";
    ASSERT_TRUE(logind.moveLid(true));
    mainQueue.runFor(300ms);
    EXPECT_EQ(logind.suspendCount(), 0);
    EXPECT_TRUE(machine.state().isArmed());
    machine.guard().toggleLidAlarm(true);
    EXPECT_TRUE(logind.waitForLockCount(allLocks));
    logind.lid().set(false);
}

TEST_F(GuardOnLogindTest, AHangingLogindHoldsUpNoStateAndKeepsNoLockInTheEnd)
{
    armAndWait();
    logind.daemon().signal(SIGSTOP);
    logind.lid().set(true);
    ASSERT_TRUE(sounds(AlarmReason::lidClosed)) << "the kernel tells of the lid";
    logind.lid().set(false);
    EXPECT_LT(timeOf([&] {
                  disarm();
                  machine.guard().triggerAlarm(AlarmReason::test);
                  disarm();
              }),
              atOnce);
    logind.daemon().signal(SIGCONT);
    EXPECT_TRUE(logind.waitForLockCount(0));
}

TEST_F(GuardOnLogindTest, AMissingHolderLeavesTheOtherHolds)
{
    const std::string path = ::getenv("PATH"); // NOLINT(concurrency-mt-unsafe)
    ::setenv("PATH", "/nowhere", 1);           // NOLINT(concurrency-mt-unsafe)
    arm();
    ::setenv("PATH", path.c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    ASSERT_TRUE(logind.waitForLockCount(locksWithoutChild));
    ASSERT_TRUE(logind.moveLid(true));
    EXPECT_TRUE(sounds(AlarmReason::lidClosed));
    EXPECT_EQ(logind.suspendCount(), 0);
    ASSERT_TRUE(logind.moveLid(false));
    disarm();
    EXPECT_TRUE(logind.waitForLockCount(0));
    EXPECT_THAT(diagnostics.all(), IsEmpty()) << "the child is one of three, nobody needs to hear of it";
}

TEST_F(GuardOnLogindTest, AKilledHolderIsReplacedUntilTheGuardIsDisarmed)
{
    armAndWait();
    pid_t holder = 0;
    for (int kills = 0; kills < 3; ++kills) {
        const pid_t before = std::exchange(holder, waitForHolderAfter(holder));
        ASSERT_NE(holder, 0) << "after " << before;
        ASSERT_EQ(::kill(holder, SIGKILL), 0);
    }
    holder = waitForHolderAfter(holder);
    EXPECT_NE(holder, 0);
    EXPECT_EQ(logind.locks().size(), allLocks);

    logind.daemon().signal(SIGSTOP);
    ASSERT_EQ(::kill(holder, SIGKILL), 0);
    EXPECT_LT(timeOf([&] { mainQueue.runFor(1ms); }), atOnce) << "logind is waited for elsewhere";
    logind.daemon().signal(SIGCONT);
    EXPECT_NE(waitForHolderAfter(holder), 0);
    disarm();
    EXPECT_TRUE(logind.waitForLockCount(0));
    mainQueue.runFor(300ms);
    EXPECT_THAT(logind.locks(), IsEmpty()) << "none comes back";
    EXPECT_THAT(diagnostics.all(), IsEmpty());
}

TEST(GuardWithoutServicesTest, WithoutAnyBusItArmsAndSoundsAllTheSameAndSaysSoOnce)
{
    rigs::MockLid lid;
    rigs::LoopMainQueue mainQueue;
    rigs::CollectedLines diagnostics;
    rigs::GuardOnPower machine(mainQueue, diagnostics, lid.procRoot());
    for (int i = 0; i < 2; ++i) {
        machine.guard().startArming();
        ASSERT_TRUE(mainQueue.runUntil([&] { return machine.state().isArmed(); }));
        lid.set(true);
        ASSERT_TRUE(mainQueue.runUntil([&] { return machine.state().isAlarmTriggered(); }));
        lid.set(false);
        ASSERT_TRUE(mainQueue.runUntil([&] { return !machine.guard().lidMonitor.isLidClosed; }));
        ASSERT_TRUE(machine.guard().disarm(""));
    }
    EXPECT_EQ(diagnostics.count("Sleep cannot be held back (logind: no system bus)"), 1);
    EXPECT_EQ(diagnostics.count("Warning: Failed to create PreventSystemSleep assertion: "), 2) << "at each arming";
    EXPECT_EQ(diagnostics.all().size(), 5U);
}

/// A guard in a process of its own.
class GuardProcessTest : public LogindTest {
protected:
    rigs::ServerProcess guardProcess(const std::string& state, const std::string& user = "0") const
    {
        return rigs::ServerProcess(
            {"/bin/sh", "-c", std::string("exec " GUARD_PROCESS " ") + state + " " + user + " > " + output.string()});
    }
    std::vector<std::string> lines() const
    {
        std::vector<std::string> all;
        std::ifstream file(output);
        for (std::string line; std::getline(file, line);)
            if (!line.starts_with("Power supply events")) // the mock's are for root alone
                all.push_back(line);
        return all;
    }

    TemporaryFolder folder;
    const std::filesystem::path output = folder.path() / "lines";
};

TEST_F(GuardProcessTest, OneThatIsKilledLeavesNoLockBehind)
{
    for (const auto* state : {"armed", "alarm"}) {
        auto process = guardProcess(state);
        process.start();
        ASSERT_TRUE(logind.waitForLockCount(allLocks)) << state;
        process.end(SIGKILL);
        EXPECT_TRUE(logind.waitForLockCount(0)) << state;
    }
}

TEST_F(GuardProcessTest, AUserWithoutASessionHoldsWhatPolkitGrantsAndSaysWhatNot)
{
    rigs::ServerProcess polkit({"/usr/lib/polkit-1/polkitd", "--no-debug"});
    polkit.start();
    ASSERT_TRUE(bus.waitForName("org.freedesktop.PolicyKit1"));
    constexpr const char* nobody = "65534";
    auto process = guardProcess("alarm", nobody);
    process.start();

    const std::multiset<std::string> granted{
        "block idle (Kestrovan Siren Blasting)",     "block idle (The guard is armed)",
        "delay shutdown (Kestrovan Siren Blasting)", "delay shutdown (The guard is armed)",
        "delay sleep (Kestrovan Siren Blasting)",    "delay sleep (The guard is armed)"};
    EXPECT_TRUE(rigs::waitUntil([&] { return logind.locks() == granted; })) << testing::PrintToString(logind.locks());
    EXPECT_TRUE(rigs::waitUntil([&] { return lines().size() == 2; }));
    EXPECT_THAT(lines(), testing::UnorderedElementsAre(
                             StartsWith("Sleep cannot be held back wholly (logind refuses sleep, handle-lid-switch, "
                                        "handle-suspend-key, handle-hibernate-key: "),
                             "Warning: Failed to create PreventSystemSleep assertion: 13"));
    process.end(SIGKILL);
    EXPECT_TRUE(logind.waitForLockCount(0));
}

} // namespace
} // namespace kestrovan
