#include "OverlayTest.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/WaylandScreenCover.h"
#include "rigs/HeadlessSway.h"

#include <QImage>

#include <array>

using namespace kestrovan;
using test::PlainSheet;
using testing::UnorderedElementsAreArray;

namespace {

constexpr QRgb glare = 0xFF40FF; ///< of everything that is not ours
constexpr const char* configuration = "xwayland disable\n"
                                      "output * bg #FF40FF solid_color\n"
                                      "output WL-1 resolution 800x600 position 0 0\n"
                                      "output WL-2 resolution 640x480 position 800 0\n"
                                      "bar {\n  position top\n  colors {\n    background #FF40FF\n  }\n}\n"
                                      "default_border none\n";
const std::array<Screen, 2> both{Screen{"WL-1", {0, 0, 800, 600}}, Screen{"WL-2", {800, 0, 640, 480}}};

struct Desktop {
    rigs::HeadlessSway host{"xwayland disable\nfor_window [title=wlroots] floating enable\n"};
    rigs::HeadlessSway compositor{configuration, 2, host};
    rigs::WaylandProgram program;
};

class WaylandOverlayTest : public test::OverlayTest {
protected:
    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override
    {
        ASSERT_TRUE(desktop->compositor.isReady()) << "no compositor";
        ASSERT_TRUE(until([&] { return screens->screens().size() == 2; }));
    }

    // What another program sees of a screen: null if there is no such screen.
    static QImage photograph(const Screen& screen)
    {
        const auto file = desktop->compositor.folder() / "screen.ppm";
        std::filesystem::remove(file);
        rigs::run({"grim", "-t", "ppm", "-o", screen.name, file.string()});
        return QImage(QString::fromStdString(file.string()));
    }
    static bool isCovered(const Screen& screen)
    {
        const auto seen = photograph(screen);
        QImage expected(screen.frame.width, screen.frame.height, QImage::Format_RGB32);
        expected.fill(PlainSheet::ours);
        return seen.convertToFormat(QImage::Format_RGB32) == expected;
    }
    static bool areBothCovered() { return isCovered(both[0]) && isCovered(both[1]); }
    bool hearsKeys() { return OverlayTest::hearsKeys({"wtype", "7"}); }

    static inline std::unique_ptr<Desktop> desktop;
};

/// A full-screen window of somebody else.
struct Film : PlainSheet {
    Film(std::size_t index, std::shared_ptr<std::string> stolen) : PlainSheet(std::move(stolen), glare)
    {
        for (auto* screen : QGuiApplication::screens())
            if (screen->name().toStdString() == both.at(index).name)
                setScreen(screen);
        showFullScreen();
    }
};

} // namespace

TEST_F(WaylandOverlayTest, EveryPixelIsCoveredAndTheKeyboardIsOursAlone)
{
    EXPECT_THAT(screens->screens(), UnorderedElementsAreArray(both));
    const auto stolen = std::make_shared<std::string>();
    Film film(1, stolen);
    ASSERT_TRUE(until([&] { return film.isExposed() && film.isActive(); }));
    auto windows = show();
    ASSERT_TRUE(until([&] { return areBothCovered(); })) << "a panel or a full-screen window is seen";
    EXPECT_TRUE(hearsKeys());

    Film late(0, stolen);
    const rigs::Program question({"swaynag", "--message", "?"});
    ASSERT_TRUE(until([&] { return late.isExposed(); }));
    late.requestActivate();
    EXPECT_TRUE(hearsKeys());
    EXPECT_TRUE(areBothCovered());
    EXPECT_EQ(*stolen, "");

    windows.clear();
    EXPECT_TRUE(until([&] { return !isCovered(both[0]) && !isCovered(both[1]); }));
}

TEST_F(WaylandOverlayTest, WithoutLayersTheWindowsAreFullScreenAndStayIt)
{
    QtScreens plain(std::make_unique<WaylandScreenCover>());
    auto windows = show(plain);
    ASSERT_TRUE(until([&] { return areBothCovered(); }));
    EXPECT_TRUE(hearsKeys());
    for (const auto* order : {"fullscreen disable", "kill"}) {
        desktop->compositor.command(order);
        ASSERT_TRUE(until([&] { return areBothCovered(); })) << order;
        EXPECT_TRUE(hearsKeys());
    }
}

// The last one, for here an output that has gone does not come back; another one comes.
TEST_F(WaylandOverlayTest, OutputsThatGoTakeNothingButTheirWindowsWithThem)
{
    auto windows = show();
    windows[0]->makeKey();
    ASSERT_TRUE(until([&] { return areBothCovered(); }));
    for (int round = 0; round < 10; ++round) {
        const auto before = screens->screens();
        desktop->compositor.unplug(before.front().name);
        ASSERT_TRUE(until([&] { return screens->screens().size() == 1; }));
        EXPECT_TRUE(isCovered(before.back()));
        desktop->compositor.plugOneMore();
        ASSERT_TRUE(until([&] { return screens->screens().size() == 2; }));
        EXPECT_FALSE(isCovered(screens->screens().back())) << "it was not asked for";
        EXPECT_TRUE(hearsKeys()) << "the window with the keyboard has gone";
        windows.clear();
        windows = show();
        windows[0]->makeKey();
        ASSERT_TRUE(until([&] { return isCovered(screens->screens().back()); }));
    }
    EXPECT_TRUE(hearsKeys());

    for (const auto& screen : screens->screens())
        desktop->compositor.unplug(screen.name);
    ASSERT_TRUE(until([&] { return screens->screens().empty(); }));
    EXPECT_TRUE(show().empty());
    desktop->compositor.plugOneMore();
    ASSERT_TRUE(until([&] { return screens->screens().size() == 1; }));
    windows = show();
    EXPECT_TRUE(until([&] { return isCovered(screens->screens().front()); }));
    EXPECT_TRUE(hearsKeys());
}
