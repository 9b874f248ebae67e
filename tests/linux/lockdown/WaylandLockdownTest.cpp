#include "platform/linux/QtKeyEvents.h"
#include "platform/linux/WaylandPresentationOptions.h"
#include "rigs/CollectedLines.h"
#include "rigs/HeadlessSway.h"
#include "rigs/QtProgram.h"

#include <QRasterWindow>

#include <gtest/gtest.h>

#include <array>

using namespace kestrovan;

namespace {

constexpr std::uint32_t kiosk = 506;
constexpr const char* configuration = "xwayland disable\n"
                                      "bindsym Mod4+d exec touch FOLDER/super-d\n"
                                      "bindsym Mod1+Tab exec touch FOLDER/alt-Tab\n"
                                      "bindsym XF86AudioMute exec touch FOLDER/mute\n";
struct Binding {
    const char* file;
    std::vector<std::string> keys;
};
const std::array bindings{
    Binding{"super-d", {"wtype", "-M", "logo", "-k", "d", "-m", "logo"}},
    Binding{"alt-Tab", {"wtype", "-M", "alt", "-k", "Tab", "-m", "alt"}},
    Binding{"mute", {"wtype", "-k", "XF86AudioMute"}},
};

struct Desktop {
    rigs::HeadlessSway compositor{configuration};
    rigs::WaylandProgram program;
};

class WaylandLockdownTest : public testing::Test {
protected:
    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override
    {
        ASSERT_TRUE(desktop->compositor.isReady()) << "no compositor";
        forgetFiles();
        monitor = keyEvents.addLocalMonitor([this](const KeyEvent& event) {
            if (event.type == KeyEvent::Type::keyDown)
                typed += event.charactersIgnoringModifiers;
            return true;
        });
    }

    template <class Condition>
    static bool until(Condition condition)
    {
        return rigs::QtProgram::until(condition);
    }

    // The compositor may offer its keyboard before Qt has taken the offer.
    void waitForKeyboard()
    {
        ASSERT_TRUE(until([this] {
            rigs::run({"wtype", "0"});
            return !typed.empty();
        }));
    }

    static void forgetFiles()
    {
        for (const auto& binding : bindings)
            std::filesystem::remove(desktop->compositor.folder() / binding.file);
    }
    static bool hasFired(const Binding& binding)
    {
        return std::filesystem::exists(desktop->compositor.folder() / binding.file);
    }
    static bool fires(const Binding& binding)
    {
        rigs::run(binding.keys);
        return until([&] { return hasFired(binding); });
    }

    static inline std::unique_ptr<Desktop> desktop;
    rigs::CollectedLines diagnostics;
    QtKeyEvents keyEvents;
    WaylandPresentationOptions presentation{diagnostics};
    QRasterWindow window;
    Subscription monitor;
    std::string typed;
};

} // namespace

TEST_F(WaylandLockdownTest, BindingsRestUntilItEndsAndDigitsArrive)
{
    window.show();
    ASSERT_TRUE(until([&] { return window.isExposed(); }));
    ASSERT_TRUE(fires(bindings.front())) << "the bindings do not work at all";
    forgetFiles();

    presentation.setOptions(kiosk);
    ASSERT_TRUE(until([&] { return presentation.isHeld(); }));
    waitForKeyboard();
    for (const auto& binding : bindings)
        rigs::run(binding.keys);
    rigs::run({"wtype", "12"});
    ASSERT_TRUE(until([&] { return typed.ends_with("12"); })) << typed;

    presentation.setOptions(0);
    EXPECT_FALSE(presentation.isHeld());
    ASSERT_TRUE(fires(bindings.back()));
    EXPECT_FALSE(hasFired(bindings.at(0)));
    EXPECT_FALSE(hasFired(bindings.at(1)));
    for (const auto& binding : bindings)
        EXPECT_TRUE(fires(binding)) << binding.file;
    EXPECT_TRUE(diagnostics.all().empty());
}

TEST_F(WaylandLockdownTest, WindowsThatComeLaterOrComeAgainAreCovered)
{
    presentation.setOptions(kiosk);
    window.show();
    ASSERT_TRUE(until([&] { return presentation.isHeld(); }));
    window.hide();
    ASSERT_TRUE(until([&] { return !presentation.isHeld(); }));
    window.show();
    ASSERT_TRUE(until([&] { return presentation.isHeld(); }));
    waitForKeyboard();
    rigs::run(bindings.front().keys);
    rigs::run({"wtype", "3"});
    ASSERT_TRUE(until([&] { return typed.ends_with('3'); })) << typed;
    EXPECT_FALSE(hasFired(bindings.front()));
}

TEST_F(WaylandLockdownTest, AnInhibitorThatTheUserEndsIsAskedForAgain)
{
    window.show();
    presentation.setOptions(kiosk);
    ASSERT_TRUE(until([&] { return window.isActive(); })); // the command below means the focused window
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(until([&] { return presentation.isHeld(); })) << round;
        desktop->compositor.command("seat seat0 shortcuts_inhibitor deactivate");
        ASSERT_TRUE(until([&] { return !presentation.isHeld(); })) << round;
    }
    EXPECT_TRUE(until([&] { return presentation.isHeld(); }));
}
