#pragma once

#include <memory>

namespace kestrovan {

/// Keeps this program's windows where they are: while it holds, nobody from outside (window manager, panel, another
/// program) closes one, and one that is minimised comes back at once. What the program itself does with its windows is
/// not touched. Needs a QGuiApplication that outlives it. Main thread.
class WindowKeeper {
public:
    WindowKeeper();
    WindowKeeper(const WindowKeeper&) = delete;
    WindowKeeper& operator=(const WindowKeeper&) = delete;
    ~WindowKeeper();

    void hold(bool wanted);

private:
    class EventFilter;
    std::unique_ptr<EventFilter> eventFilter_;
};

} // namespace kestrovan
