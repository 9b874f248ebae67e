#pragma once

#include "platform/Lifetime.h"
#include "platform/Workspace.h"
#include "platform/linux/AlertSound.h"

namespace kestrovan {

class BusConnection;
class Diagnostics;
class MainQueue;

/// The desktop as freedesktop.org describes it. Needs a QGuiApplication, and that the main window bears the object name
/// mainWindowName. All that it is given outlives it.
class LinuxWorkspace final : public Workspace {
public:
    static constexpr const char* mainWindowName = "main-window";

    LinuxWorkspace(PulseConnection& sound, BusConnection& sessionBus, MainQueue& mainQueue, Diagnostics& diagnostics);

    void beep() override { alertSound_.play(); }

    /// By xdg-open. What cannot be opened is told in a line.
    void openAddress(const std::string& address) override;

    /// By the file manager on the bus (org.freedesktop.FileManager1); where there is none, the folder is opened.
    void revealFolder(const std::filesystem::path& folder) override;

    /// Raises every window that is on screen, or the main window where none is, as far as the window manager lets it.
    void activate() override;

private:
    BusConnection& sessionBus_;
    MainQueue& mainQueue_;
    Diagnostics& diagnostics_;
    AlertSound alertSound_;
    Lifetime lifetime_;
};

} // namespace kestrovan
