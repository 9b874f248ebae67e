#include "platform/linux/X11ServerKeys.h"

#include "rigs/Deadline.h"
#include "rigs/PrivateDisplay.h"
#include "rigs/Program.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

using namespace kestrovan;

namespace {

/// A server that Ctrl+Alt+Backspace kills, as a thief would like to.
class X11ServerKeysTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_FALSE(display.name().empty()) << "no X server";
        loadKeymap();
    }

    void loadKeymap() { ASSERT_EQ(rigs::run({"setxkbmap", "-layout", "us", "-option", "terminate:ctrl_alt_bksp"}), 0); }

    // The key press has been handled once another client has been served after it.
    bool survivesKill()
    {
        rigs::run({"xdotool", "key", "ctrl+alt+BackSpace"});
        return rigs::run({"xdotool", "getmouselocation"}) == 0 && display.isRunning();
    }

    bool diesOfKill()
    {
        rigs::run({"xdotool", "key", "ctrl+alt+BackSpace"});
        return rigs::waitUntil([this] { return !display.isRunning(); });
    }

    rigs::PrivateDisplay display;
};

/// A program that blocks the keys and is killed in the middle of it.
void blockAndDie()
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        X11ServerKeys keys;
        const char blocked = keys.block() ? 'y' : 'n';
        if (write(ends[1], &blocked, 1) == 1)
            pause();
        _exit(1);
    }
    close(ends[1]);
    char blocked = 0;
    ASSERT_EQ(read(ends[0], &blocked, 1), 1);
    close(ends[0]);
    EXPECT_EQ(blocked, 'y');
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

} // namespace

TEST_F(X11ServerKeysTest, BlockedKeysDoNothingUntilTheyAreRestored)
{
    X11ServerKeys keys;
    ASSERT_TRUE(keys.block());
    EXPECT_TRUE(survivesKill());
    keys.restore();
    EXPECT_TRUE(diesOfKill());
}

TEST_F(X11ServerKeysTest, TheNextRunPutsBackWhatAKilledOneLeft)
{
    blockAndDie();
    ASSERT_TRUE(survivesKill());
    {
        X11ServerKeys keys;
    }
    EXPECT_TRUE(diesOfKill());
}

TEST_F(X11ServerKeysTest, BlockingAgainCoversAKeymapThatWasLoadedMeanwhile)
{
    X11ServerKeys keys;
    ASSERT_TRUE(keys.block());
    loadKeymap();
    ASSERT_TRUE(keys.block());
    EXPECT_TRUE(survivesKill());
    keys.restore();
    EXPECT_TRUE(diesOfKill());
}

TEST_F(X11ServerKeysTest, ForeignNonsenseInThePropertyIsIgnored)
{
    ASSERT_EQ(rigs::run({"xprop", "-root", "-f", "_KESTROVAN_SAVED_SERVER_KEYS", "8c", "-set",
                         "_KESTROVAN_SAVED_SERVER_KEYS", "3, 255, 255, 255, 12, 1, 1, 1, 9, 9, 9"}),
              0);
    X11ServerKeys keys;
    EXPECT_TRUE(keys.block());
    EXPECT_TRUE(survivesKill());
}

TEST(X11ServerKeysWithoutServer, NothingHappens)
{
    setenv("DISPLAY", ":65123", 1);
    X11ServerKeys keys;
    EXPECT_FALSE(keys.block());
    keys.restore();
}
