#include "LogindTest.h"
#include "platform/linux/PosixProcessLauncher.h"

namespace kestrovan {
namespace {

/// True while there is a child of this process, a zombie included.
bool hasChildren()
{
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

TEST(PosixProcessLauncherTest, WhatCannotBeStartedIsNone)
{
    PosixProcessLauncher launcher;
    EXPECT_EQ(launcher.launch("/no/such/program", {}), nullptr);
    EXPECT_FALSE(hasChildren());
}

TEST(PosixProcessLauncherTest, AChildThatEndsByItselfIsNoticedAndLeavesNoZombie)
{
    PosixProcessLauncher launcher;
    const auto child = launcher.launch("/bin/true", {});
    ASSERT_NE(child, nullptr);
    EXPECT_TRUE(rigs::waitUntil([&] { return !child->isRunning() && !hasChildren(); }));
    child->terminate();
}

TEST(PosixProcessLauncherTest, AStubbornChildIsKilled)
{
    PosixProcessLauncher launcher;
    auto child = launcher.launch("/bin/sh", {"-c", "trap '' TERM; while :; do sleep 0.1; done"});
    ASSERT_NE(child, nullptr);
    std::this_thread::sleep_for(200ms); // for the trap to be set
    child.reset();
    EXPECT_TRUE(rigs::waitUntil([] { return !hasChildren(); }));
}

TEST(PosixProcessLauncherTest, NoChildOutlivesTheLauncher)
{
    std::unique_ptr<PosixProcessLauncher> launcher = std::make_unique<PosixProcessLauncher>();
    launcher->launch("/bin/sh", {"-c", "trap '' TERM; while :; do sleep 0.1; done"});
    launcher.reset();
    EXPECT_FALSE(hasChildren());
}

} // namespace
} // namespace kestrovan
