#include "platform/linux/QtKeyEvents.h"
#include "platform/linux/WindowKeeper.h"
#include "platform/linux/X11PresentationOptions.h"
#include "rigs/CollectedLines.h"
#include "rigs/OpenboxDesktop.h"
#include "rigs/WitnessClient.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QWindow>

#include <gmock/gmock.h>

using namespace kestrovan;

namespace {

constexpr std::uint32_t kiosk = 506;
using rigs::OpenboxDesktop;

class X11LockdownTest : public testing::Test {
protected:
    static void SetUpTestSuite() { desktop = std::make_unique<OpenboxDesktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override
    {
        ASSERT_TRUE(until([this] { return witness.hasWindowManager(); })) << "no window manager";
        desktop->forgetBindings();
        witness.takeFocus();
        monitor = keyEvents.addLocalMonitor([this](const KeyEvent& event) {
            if (event.type == KeyEvent::Type::keyDown) {
                typed += event.charactersIgnoringModifiers;
                codes.push_back(event.keyCode);
            }
            return swallow;
        });
    }

    template <class Condition>
    static bool until(Condition condition)
    {
        return rigs::QtProgram::until(condition);
    }
    static void press(const std::string& chord) { OpenboxDesktop::press(chord); }

    static inline std::unique_ptr<OpenboxDesktop> desktop;
    rigs::CollectedLines diagnostics;
    rigs::WitnessClient witness;
    QtKeyEvents keyEvents;
    X11PresentationOptions presentation{diagnostics};
    Subscription monitor;
    std::string typed;
    std::vector<std::uint16_t> codes;
    bool swallow = true;
};

} // namespace

TEST_F(X11LockdownTest, NobodyElseHearsAKeyUntilItEnds)
{
    presentation.setOptions(kiosk);
    ASSERT_TRUE(until([&] { return presentation.isHeld(); }));
    for (std::size_t index = 0; index < OpenboxDesktop::bindingCount; ++index)
        OpenboxDesktop::pressBinding(index);
    for (const auto* digit : {"1", "ctrl+2", "KP_3", "super+4"})
        press(digit);
    ASSERT_TRUE(until([&] { return typed.ends_with('4'); }));
    EXPECT_EQ(typed.substr(typed.size() - 4), "1234");
    EXPECT_EQ(witness.keysPressed(), 0);

    presentation.setOptions(0);
    // What the window manager had been told before this key, it would have acted on before it, too.
    constexpr auto last = OpenboxDesktop::bindingCount - 1;
    ASSERT_TRUE(desktop->fires(last));
    for (std::size_t index = 0; index < last; ++index)
        EXPECT_FALSE(desktop->hasFired(index)) << index;
    for (std::size_t index = 0; index < last; ++index)
        EXPECT_TRUE(desktop->fires(index)) << index;
    const auto heardBefore = witness.keysPressed();
    press("5");
    EXPECT_TRUE(until([&] { return witness.keysPressed() > heardBefore; }));
    EXPECT_EQ(typed.back(), '4');
}

TEST_F(X11LockdownTest, AMenuOfAnotherProgramIsClosedAndTheGrabHad)
{
    ASSERT_TRUE(witness.openMenu());
    presentation.setOptions(kiosk);
    EXPECT_FALSE(presentation.isHeld());
    EXPECT_TRUE(until([&] { return witness.keysPressed() > 0 && presentation.isHeld(); }));
    EXPECT_FALSE(witness.isMenuOpen());
    EXPECT_FALSE(witness.openMenu()) << "the grab is not really held";
}

TEST_F(X11LockdownTest, WhoHoldsOnLosesTheKeysAllTheSameAndIsNamedOnce)
{
    ASSERT_TRUE(witness.openMenu(false));
    presentation.setOptions(kiosk);
    ASSERT_TRUE(until([&] { return presentation.hasKeys(); }));
    const auto heard = witness.keysPressed();
    for (const auto* key : {"1", "shift+a", "ctrl+2", "KP_3", "Delete", "KP_Enter", "Escape", "Return"})
        press(key);
    ASSERT_TRUE(until([&] { return codes.size() >= 8 && codes.back() == KeyEvent::returnKey; }));
    EXPECT_THAT(codes, testing::IsSupersetOf({KeyEvent::forwardDelete, KeyEvent::keypadEnter, KeyEvent::escape}));
    EXPECT_EQ(typed, "1A23");
    EXPECT_EQ(witness.keysPressed(), heard);
    EXPECT_FALSE(presentation.isHeld());
    ASSERT_TRUE(until([&] { return diagnostics.count("holds the keyboard") == 1; }));

    witness.closeMenu();
    ASSERT_TRUE(until([&] { return presentation.isHeld(); }));
    press("4");
    EXPECT_TRUE(until([&] { return typed == "1A234"; })) << typed;
    EXPECT_EQ(witness.keysPressed(), heard);
    EXPECT_EQ(diagnostics.all().size(), 1U);

    presentation.setOptions(0);
    press("5");
    EXPECT_TRUE(until([&] { return witness.keysPressed() > heard; }));
}

TEST_F(X11LockdownTest, ItsEndGivesBackKeyboardsTakenOneByOne)
{
    ASSERT_TRUE(witness.openMenu(false));
    presentation.setOptions(kiosk);
    ASSERT_TRUE(until([&] { return presentation.hasKeys(); }));
    const auto heard = witness.keysPressed();
    presentation.setOptions(0);
    EXPECT_FALSE(presentation.hasKeys());
    press("6");
    EXPECT_TRUE(until([&] { return witness.keysPressed() > heard; }));
    EXPECT_EQ(typed, "");
}

TEST_F(X11LockdownTest, TheGrabComesBackAfterItsWindowIsGone)
{
    presentation.setOptions(kiosk);
    ASSERT_EQ(witness.windowsOffScreen().size(), 1U);
    witness.destroy(witness.windowsOffScreen().front());
    ASSERT_TRUE(until([&] { return witness.windowsOffScreen().size() == 1; }));
    witness.unmap(witness.windowsOffScreen().front());
    ASSERT_TRUE(until([&] { return witness.windowsOffScreen().size() == 1; }));
    press("6");
    EXPECT_TRUE(until([&] { return typed == "6"; })) << typed;
    EXPECT_EQ(witness.keysPressed(), 0);
}

TEST_F(X11LockdownTest, ItsEndClosesEverythingAndDestructionEndsIt)
{
    {
        X11PresentationOptions other(diagnostics);
        other.setOptions(kiosk);
        ASSERT_TRUE(until([&] { return other.isHeld(); }));
    }
    EXPECT_TRUE(until([&] { return witness.windowsOffScreen().empty(); }));
    EXPECT_TRUE(witness.openMenu());
}

TEST_F(X11LockdownTest, ClicksReachOurWindowsAndNobodyElses)
{
    struct Keypad : QWindow {
        void mousePressEvent(QMouseEvent* event) override { clicked.push_back(event->position().toPoint()); }
        std::vector<QPoint> clicked;
    } keypads[2]; // as on two screens
    for (int i = 0; i < 2; ++i) {
        keypads[i].setFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
        keypads[i].setGeometry(200 + 200 * i, 200, 100, 100);
        keypads[i].show();
        ASSERT_TRUE(until([&] { return keypads[i].isExposed(); }));
    }
    presentation.setOptions(kiosk);
    ASSERT_TRUE(until([&] { return presentation.isHeld(); }));
    for (const auto* x : {"75", "240", "440"})
        rigs::run({"xdotool", "mousemove", x, x == std::string("75") ? "75" : "250", "click", "1"});
    ASSERT_TRUE(until([&] { return !keypads[1].clicked.empty(); }));
    for (const auto& keypad : keypads)
        EXPECT_EQ(keypad.clicked, std::vector{QPoint(40, 50)});
    EXPECT_EQ(witness.clicks(), 0);

    presentation.setOptions(0);
    rigs::run({"xdotool", "mousemove", "75", "75", "click", "1"});
    EXPECT_TRUE(until([&] { return witness.clicks() == 1; }));
}

TEST_F(X11LockdownTest, OurWindowsAreNeitherClosedNorMinimisedByOthers)
{
    QWindow window;
    window.show();
    ASSERT_TRUE(until([&] { return window.isExposed(); }));
    const auto id = static_cast<std::uint32_t>(window.winId());
    const auto minimise = [&] { rigs::run({"xdotool", "windowminimize", std::to_string(id)}); };
    int minimised = 0;
    QObject::connect(&window, &QWindow::windowStateChanged,
                     [&](Qt::WindowState state) { minimised += state == Qt::WindowMinimized ? 1 : 0; });

    WindowKeeper keeper;
    keeper.hold(true);
    witness.askToClose(id);
    minimise();
    ASSERT_TRUE(until([&] { return minimised == 1; }));
    ASSERT_TRUE(until([&] { return window.windowState() != Qt::WindowMinimized && window.isExposed(); }));
    EXPECT_TRUE(window.isVisible());

    keeper.hold(false);
    minimise();
    ASSERT_TRUE(until([&] { return minimised == 2; }));
    witness.askToClose(id);
    EXPECT_TRUE(until([&] { return !window.isVisible(); }));
}

TEST_F(X11LockdownTest, AModalDialogOfOursDoesNotKeepThePinOut)
{
    QWindow dialog;
    dialog.setModality(Qt::ApplicationModal);
    dialog.show();
    presentation.setOptions(kiosk);
    ASSERT_TRUE(until([&] { return presentation.isHeld() && dialog.isExposed(); }));
    press("7");
    EXPECT_TRUE(until([&] { return typed == "7"; })) << typed;
}

TEST_F(X11LockdownTest, AWindowOfOursSeesKeysAndShortcutsOnlyWhenTheyAreLetThrough)
{
    struct KeyWindow : QWindow {
        void keyPressEvent(QKeyEvent*) override { ++presses; }
        void keyReleaseEvent(QKeyEvent*) override { ++releases; }
        int presses = 0;
        int releases = 0;
    } window;
    QShortcut shortcut(QKeySequence("Ctrl+Q"), &window);
    int activations = 0;
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++activations; });
    window.show();
    window.requestActivate();
    ASSERT_TRUE(until([&] { return window.isActive(); }));

    press("ctrl+q");
    press("8");
    ASSERT_TRUE(until([&] { return typed == "q8"; })) << typed;
    EXPECT_EQ(window.presses + window.releases + activations, 0);

    swallow = false;
    press("ctrl+q");
    press("9");
    EXPECT_TRUE(until([&] { return window.releases >= 2; }));
    EXPECT_EQ(typed, "q8q9") << "each key once";
    EXPECT_EQ(activations, 1);
    EXPECT_GE(window.presses, 1);
}
