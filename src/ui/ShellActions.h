#pragma once

#include <functional>

namespace kestrovan {

/// What window and menu ask of the program around them.
struct ShellActions {
    std::function<void()> openWindow;       ///< brings the program and its window to the front
    std::function<void()> openWebsite;      ///< the vendor's
    std::function<void()> quit;             ///< beeps instead while the guard forbids it
    std::function<void()> previewDeterrent; ///< shows the deterrent screens as they would be
};

} // namespace kestrovan
