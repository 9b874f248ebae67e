#include "OverlayTest.h"
#include "platform/linux/WaylandPresentationOptions.h"
#include "rigs/CollectedLines.h"
#include "rigs/GlaringProgram.h"
#include "rigs/NestedKwin.h"

using namespace kestrovan;
using rigs::NestedKwin;
using test::PlainSheet;

namespace {

constexpr std::uint32_t kiosk = 506;
constexpr QRgb glare = 0xFF40FF;

struct Desktop {
    NestedKwin compositor;
    rigs::QtProgram program{"wayland"};
};

class KwinOverlayTest : public test::OverlayTest {
protected:
    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override
    {
        ASSERT_TRUE(desktop->compositor.isReady()) << "no compositor";
        ASSERT_TRUE(until([&] { return screens->screens().size() == 2; }));
    }

    bool areBoth(QRgb color) { return camera.colorOf({0, 0, 2 * NestedKwin::width, NestedKwin::height}) == color; }

    static inline std::unique_ptr<Desktop> desktop;
    rigs::GlaringProgram camera;
};

} // namespace

TEST_F(KwinOverlayTest, BothScreensAreCoveredAndKeysAndShortcutsAreOurs)
{
    const auto stolen = std::make_shared<std::string>();
    PlainSheet film(stolen, glare);
    const auto play = [&] {
        film.showFullScreen();
        return until([&] { return film.isExposed() && film.isActive(); });
    };
    ASSERT_TRUE(play());
    ASSERT_TRUE(until([&] {
        NestedKwin::press("alt+F4");
        return !film.isVisible();
    })) << "the compositor's shortcuts do not work at all";
    ASSERT_TRUE(play());

    rigs::CollectedLines diagnostics;
    WaylandPresentationOptions presentation(diagnostics);
    presentation.setOptions(kiosk);
    auto windows = show();
    windows.front()->makeKey();
    ASSERT_TRUE(until([&] { return areBoth(PlainSheet::ours); }));
    ASSERT_TRUE(hearsKeys({"xdotool", "key", "7"}));
    for (const auto* chord : {"alt+F4", "alt+Tab", "super+d", "ctrl+F10", "alt+F3", "ctrl+alt+Escape"})
        NestedKwin::press(chord);
    rigs::run({"xdotool", "click", "1"}); // the last chord has made it kill what is clicked, if the compositor heard it
    film.requestActivate();
    EXPECT_TRUE(hearsKeys({"xdotool", "key", "8"}));
    EXPECT_TRUE(areBoth(PlainSheet::ours));
    EXPECT_TRUE(film.isVisible());
    EXPECT_EQ(*stolen, "");

    presentation.setOptions(0);
    windows.clear();
    EXPECT_TRUE(until([&] { return film.isActive() && !areBoth(PlainSheet::ours); }));
    EXPECT_TRUE(diagnostics.all().empty());
}
