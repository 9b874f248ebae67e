#pragma once

#include "platform/Lifetime.h"
#include "platform/linux/BusResident.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace kestrovan {

class MainQueue;

/// Whether the program runs in a sandbox whose devices only a portal gives away (Flatpak, Snap). `root` is where the
/// file system begins.
bool isSandboxed(const std::filesystem::path& root = "/");

/// The question whether the camera may be used, as the desktop's portal puts it (org.freedesktop.portal.Camera): in a
/// sandbox it takes the place of a dialog of our own. Main thread; what it is given outlives it.
class PortalCameraQuestion {
public:
    PortalCameraQuestion(BusConnection& sessionBus, MainQueue& mainQueue);
    ~PortalCameraQuestion();
    PortalCameraQuestion(const PortalCameraQuestion&) = delete;
    PortalCameraQuestion& operator=(const PortalCameraQuestion&) = delete;

    /// As CameraPermission::Ask: returns at once, and lets go of `answer` where no portal can put the question. A
    /// further question takes the place of an open one.
    void ask(std::function<void(bool granted)> answer);

private:
    class Request;
    using Answer = std::function<void(bool)>;

    void settle(std::optional<bool> granted);

    BusConnection& sessionBus_;
    MainQueue& mainQueue_;
    Answer answer_;
    std::uint64_t question_ = 0; ///< counts them, to tell late answers
    BusResident<Request> request_;
    Lifetime lifetime_;
};

} // namespace kestrovan
