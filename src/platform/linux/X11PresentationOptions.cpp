#include "platform/linux/X11PresentationOptions.h"

#include "platform/Diagnostics.h"

#include <utility>

namespace kestrovan {

namespace {

// Each of these is a key combination, a click or a panel of the desktop; a grab takes them all or none.
constexpr std::uint32_t needsGrab =
    PresentationOptions::hideDock | PresentationOptions::hideMenuBar | PresentationOptions::disableSystemMenu |
    PresentationOptions::disableProcessSwitching | PresentationOptions::disableForceQuit |
    PresentationOptions::disableHidingApplication;
constexpr std::uint32_t needsServerKeys =
    PresentationOptions::disableProcessSwitching | PresentationOptions::disableForceQuit;
constexpr std::chrono::seconds keyboardCheckInterval{1};

} // namespace

X11PresentationOptions::X11PresentationOptions(Diagnostics& diagnostics)
    : diagnostics_(diagnostics), inputGrab_(diagnostics)
{
    QObject::connect(&serverKeysTimer_, &QTimer::timeout, [this] { blockServerKeys(); });
}

void X11PresentationOptions::setOptions(std::uint32_t options)
{
    if ((options & needsGrab) != 0)
        inputGrab_.take();
    else
        inputGrab_.release();
    if ((options & needsServerKeys) != 0) {
        blockServerKeys();
        serverKeysTimer_.start(keyboardCheckInterval); // a keyboard may be plugged in
    } else {
        serverKeysTimer_.stop();
        serverKeys_.restore();
    }
}

void X11PresentationOptions::blockServerKeys()
{
    if (!serverKeys_.block() && !std::exchange(complained_, true))
        diagnostics_.line("Lockdown: the X server keeps its keys for switching terminals");
}

} // namespace kestrovan
