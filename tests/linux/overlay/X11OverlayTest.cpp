#include "OverlayTest.h"
#include "rigs/GlaringProgram.h"
#include "rigs/TwoOutputs.h"

using namespace kestrovan;
using rigs::GlaringProgram;
using test::PlainSheet;
using testing::UnorderedElementsAreArray;
using Kind = GlaringProgram::Kind;

namespace {

/// Two outputs, another program's windows, and the window manager that is asked for.
class Desktop {
public:
    using Command = std::vector<std::string>;
    void manageWith(const Command& windowManager)
    {
        if (windowManager == running_)
            return;
        running_ = windowManager;
        manager_.reset();
        // One of them keeps its settings with a service on the session bus.
        Command command{"env", "HOME=" + home(), "XDG_CONFIG_HOME=" + home(),
                        "DBUS_SESSION_BUS_ADDRESS=" + busAddress(), "NO_AT_BRIDGE=1"};
        command.insert(command.end(), windowManager.begin(), windowManager.end());
        manager_ = std::make_unique<rigs::Program>(std::move(command));
    }

    rigs::TwoOutputs outputs;

private:
    std::string home() const { return folder_.path().string(); }
    std::string busAddress() const { return "unix:path=" + home() + "/bus"; }

    TemporaryFolder folder_;
    rigs::Program bus_{{"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + busAddress()}};
    std::unique_ptr<rigs::Program> manager_;
    Command running_;
    rigs::QtProgram program_{"xcb"};
};

const Desktop::Command openbox{"openbox", "--sm-disable"};
// Its compositor does not draw what lies beyond the first of these outputs.
const Desktop::Command xfwm{"xfwm4", "--compositor=off"};

class X11OverlayTest : public test::OverlayTest {
protected:
    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override
    {
        ASSERT_TRUE(desktop->outputs.isReady()) << "no X server";
        desktop->outputs.plug(0);
        desktop->outputs.plug(1);
        ASSERT_TRUE(until([&] { return screens->screens().size() == 2; }));
        manageWith(openbox);
    }
    void manageWith(const Desktop::Command& windowManager)
    {
        desktop->manageWith(windowManager);
        // It is there when it lets a window fill a screen.
        const auto window = others.open(Kind::fullScreen, {10, 10, 50, 50});
        ASSERT_TRUE(until([&] { return others.colorOf(first) == GlaringProgram::glare; })) << windowManager.front();
        others.close(window);
    }

    bool isCovered(const Screen& screen) { return others.colorOf(screen.frame) == PlainSheet::ours; }
    bool areBothCovered() { return isCovered(both[0]) && isCovered(both[1]); }
    bool hearsKeys() { return OverlayTest::hearsKeys({"xdotool", "key", "7"}); }

    static inline std::unique_ptr<Desktop> desktop;
    const std::array<Screen, 2>& both = desktop->outputs.screens();
    const ScreenFrame& first = both[0].frame;
    const ScreenFrame& second = both[1].frame;
    GlaringProgram others;
};

class X11OverlayUnderTest : public X11OverlayTest, public testing::WithParamInterface<Desktop::Command> {};

} // namespace

TEST_P(X11OverlayUnderTest, EveryPixelIsCoveredWhateverWasThereAndWhateverComes)
{
    ASSERT_NO_FATAL_FAILURE(manageWith(GetParam()));
    EXPECT_THAT(screens->screens(), UnorderedElementsAreArray(both));
    const auto panel = others.open(Kind::dock, {0, 0, first.width, 30});
    const auto menu = others.open(Kind::popUp, {second.x + 20, 20, 200, 100});
    const auto film = others.open(Kind::fullScreen, {20, 20, 200, 100});
    ASSERT_TRUE(until([&] { return others.colorOf(first) == GlaringProgram::glare && others.seesGlare(second); }));

    auto windows = show();
    ASSERT_TRUE(until([&] { return areBothCovered(); }));
    EXPECT_TRUE(hearsKeys());
    for (const auto window : {panel, menu, film}) {
        others.raise(window);
        ASSERT_TRUE(until([&] { return areBothCovered(); }));
    }
    for (const auto kind : {Kind::popUp, Kind::plain, Kind::dock, Kind::fullScreen, Kind::popUp}) {
        others.open(kind, {first.width - 100, 50, 300, 60}); // over both
        ASSERT_TRUE(until([&] { return areBothCovered(); })) << static_cast<int>(kind);
    }
    EXPECT_TRUE(hearsKeys());

    windows.clear();
    EXPECT_TRUE(until([&] { return others.seesGlare(first) && others.seesGlare(second); }));
}

INSTANTIATE_TEST_SUITE_P(EachManager, X11OverlayUnderTest, testing::Values(openbox, xfwm),
                         [](const auto& given) { return given.param.front(); });

TEST_F(X11OverlayTest, AProgramThatInsistsIsOvertakenEachTime)
{
    const auto windows = show();
    ASSERT_TRUE(until([&] { return areBothCovered(); }));
    const auto rival = others.open(Kind::popUp, {100, 100, 200, 200});
    for (int round = 0; round < 20; ++round) {
        others.raise(rival);
        for (int turn = 0; turn < 5; ++turn)
            QCoreApplication::processEvents();
    }
    EXPECT_TRUE(until([&] { return areBothCovered(); }));
}

TEST_F(X11OverlayTest, TheKeyboardComesBackFromWhoeverTakesIt)
{
    const auto windows = show();
    ASSERT_TRUE(hearsKeys());
    const auto rival = others.open(Kind::popUp, {100, 100, 200, 200});
    for (int round = 0; round < 3; ++round) {
        others.takeFocus(rival);
        ASSERT_TRUE(until([&] { return others.focus() != rival; }));
        EXPECT_TRUE(hearsKeys());
    }
}

TEST_F(X11OverlayTest, AWindowThatSomebodyTakesAwayComesBack)
{
    others.open(Kind::popUp, {0, 0, first.width + second.width, first.height});
    const auto windows = show();
    for (const auto takeAway : {&GlaringProgram::unmap, &GlaringProgram::close, &GlaringProgram::unmap}) {
        ASSERT_TRUE(until([&] { return areBothCovered(); }));
        ASSERT_TRUE(hearsKeys());
        std::invoke(takeAway, others, others.focus());
        EXPECT_FALSE(areBothCovered());
    }
    EXPECT_TRUE(until([&] { return areBothCovered(); }));
    EXPECT_TRUE(hearsKeys());
}

TEST_F(X11OverlayTest, ANewSetTakesOverWithoutASlitInTime)
{
    const ScreenFrame desk{0, 0, first.width + second.width, first.height};
    others.open(Kind::popUp, desk);
    auto windows = show();
    ASSERT_TRUE(until([&] { return areBothCovered(); }));
    for (int round = 0; round < 5; ++round) {
        windows.clear();
        windows = show();
        for (int turn = 0; turn < 20; ++turn) {
            QCoreApplication::processEvents();
            ASSERT_FALSE(others.seesGlare({first.width - 50, 0, 100, 100})) << round << ", " << turn;
        }
    }
    EXPECT_TRUE(until([&] { return areBothCovered(); }));
    EXPECT_TRUE(hearsKeys());
}

TEST_F(X11OverlayTest, AScreenTakesItsWindowWithItAndBringsItBack)
{
    const auto windows = show();
    for (int round = 0; round < 100; ++round) { // whatever is under way
        desktop->outputs.unplug(round % 2 == 0 ? 0 : 1);
        QCoreApplication::processEvents();
        desktop->outputs.plug(round % 2 == 0 ? 0 : 1);
        QCoreApplication::processEvents();
    }
    windows[1]->makeKey();
    ASSERT_TRUE(until([&] { return areBothCovered(); }));
    desktop->outputs.unplug(1);
    ASSERT_TRUE(until([&] { return screens->screens().size() == 1; }));
    EXPECT_TRUE(isCovered(both[0]));
    EXPECT_TRUE(hearsKeys()) << "the window with the keyboard has gone";
    desktop->outputs.plug(1);
    ASSERT_TRUE(until([&] { return areBothCovered(); }));
    EXPECT_TRUE(hearsKeys());
}

TEST_F(X11OverlayTest, AfterADarknessEachScreenIsCoveredAgain)
{
    auto windows = show();
    desktop->outputs.unplug(0);
    desktop->outputs.unplug(1);
    ASSERT_TRUE(until([&] { return screens->screens() != std::vector{both[1]}; }));
    windows.front()->makeKey();
    for (const std::size_t index : {0U, 1U}) {
        desktop->outputs.plug(index);
        EXPECT_TRUE(until([&] { return isCovered(both[index]); })) << index;
        EXPECT_TRUE(hearsKeys());
    }
    windows.clear();
    EXPECT_TRUE(until([&] { return !isCovered(both[0]) && !isCovered(both[1]); }));
}
