#pragma once

#include "rigs/Deadline.h"
#include "rigs/Program.h"

#include <QGuiApplication>

#include <array>
#include <cstdlib>
#include <optional>

namespace kestrovan::rigs {

/// Makes the test a Qt program, of a display that is there already.
class QtProgram {
public:
    /// "xcb", "wayland" or, for no display, "offscreen".
    explicit QtProgram(const char* platform)
    {
        setenv("QT_QPA_PLATFORM", platform, 1);
        application_.emplace(count_, arguments_.data());
        QGuiApplication::setQuitOnLastWindowClosed(false);
    }

    /// Runs Qt's loop until `condition` holds; false if it does not within a generous time.
    template <class Condition>
    static bool until(Condition condition)
    {
        return waitUntil([&] {
            QCoreApplication::processEvents();
            return condition();
        });
    }

private:
    int count_ = 1;
    std::array<char, 5> name_{"test"};
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    std::optional<QGuiApplication> application_;
};

/// The same on Wayland, with a keyboard that stays: else there would be one only while a key is typed, too briefly for
/// Qt to notice.
struct WaylandProgram {
    Program idleKeyboard{{"wtype", "-s", "600000", "-k", "Shift_L"}};
    QtProgram program{"wayland"};
};

} // namespace kestrovan::rigs
