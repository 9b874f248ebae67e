#include "overlay/FullscreenOverlayManager.h"

#include "GuardTest.h"

using namespace kestrovan;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct CountedView final : HostedView {
    explicit CountedView(int& alive) : count(alive) { ++count; }
    CountedView(const CountedView&) = delete;
    CountedView& operator=(const CountedView&) = delete;
    ~CountedView() override { --count; }
    QWindow* nativeWindow() override { return nullptr; }

    int& count;
};

/// The guard with deterrent screens on a laptop with a second screen at its left.
class FullscreenOverlayManagerTest : public testing::Test {
protected:
    FullscreenOverlayManagerTest() { desk.attached = {{"eDP-1", {1280, 0, 1920, 1080}}, {"DP-2", {0, 0, 1280, 1024}}}; }

    IcuText text;
    SimulatedLaptop laptop{text};
    SimulatedScreens& desk = laptop.screens();
    int views = 0;
    FullscreenOverlayManager manager{
        laptop.platform(), [this](AppState&, DeterrentScreens&) { return std::make_unique<CountedView>(views); }};
    Guard guard{laptop.platform(), manager};
};

} // namespace

TEST_F(FullscreenOverlayManagerTest, EachScreenIsCoveredExactlyAndTheFirstHasTheKeyboardAfterTheTurn)
{
    manager.showOverlay(guard.appState);
    EXPECT_THAT(desk.covered(), ElementsAre("eDP-1", "DP-2"));
    EXPECT_EQ(desk.keyScreen(), "DP-2");
    EXPECT_EQ(laptop.desktop().activations, 0);
    laptop.settle();
    EXPECT_EQ(desk.keyScreen(), "eDP-1");
    EXPECT_EQ(laptop.desktop().activations, 1);
    EXPECT_THAT(desk.history, ElementsAre("front eDP-1", "front DP-2", "key eDP-1"));
    for (const auto& window : desk.windows()) {
        EXPECT_EQ(window.traits.level, 1000);
        EXPECT_EQ(window.traits.collectionBehavior, 273U);
        EXPECT_TRUE(window.traits.canBecomeKey && window.traits.acceptsMouseMoved);
    }
    EXPECT_EQ(desk.windows().front().traits.screen, desk.attached.front());
}

TEST_F(FullscreenOverlayManagerTest, ShownAgainItIsAFreshSet)
{
    manager.showOverlay(guard.appState);
    desk.attached.pop_back();
    desk.history.clear();
    manager.showOverlay(guard.appState);
    laptop.settle();
    EXPECT_THAT(desk.covered(), ElementsAre("eDP-1"));
    EXPECT_THAT(desk.history, ElementsAre("out eDP-1", "out DP-2", "front eDP-1", "key eDP-1", "key eDP-1"));
    EXPECT_EQ(views, 1);

    desk.attached.clear();
    const auto before = laptop.desktop().activations;
    manager.showOverlay(guard.appState);
    laptop.settle();
    EXPECT_THAT(desk.windows(), IsEmpty());
    EXPECT_EQ(laptop.desktop().activations, before + 1) << "the program comes to the front without screens, too";
}

TEST_F(FullscreenOverlayManagerTest, HidingTakesAllAwayAndIsHarmlessOtherwise)
{
    manager.hideOverlay();
    manager.showOverlay(guard.appState);
    manager.hideOverlay();
    EXPECT_THAT(desk.windows(), IsEmpty());
    EXPECT_EQ(views, 0);
    laptop.settle();
    EXPECT_EQ(desk.keyScreen(), "");
    manager.hideOverlay();
}
