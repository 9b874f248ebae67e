#pragma once

#include "platform/Camera.h"
#include "platform/Lifetime.h"
#include "platform/Published.h"

#include <filesystem>
#include <optional>

namespace kestrovan {

class Diagnostics;
class Files;
class MainQueue;
struct Platform;

/// Photographs whoever is in front of the machine: one still, some time after it was asked for, as a JPEG file in a
/// fixed folder. Main thread; the camera's own work is done elsewhere. The platform outlives the manager and whatever
/// the manager left with the platform's workers.
class CameraManager : public Observable {
public:
    /// Gets the saved file, or nothing on any failure.
    using Completion = std::function<void(std::optional<std::filesystem::path>)>;

    explicit CameraManager(const Platform& platform);
    ~CameraManager() override; ///< ends a capture under way: the camera goes off, its completion is not called

    /// True from the start of a capture until its photo has arrived or failed.
    Published<bool> isCapturing{*this, false};

    /// The delay, in seconds, that the latest call of captureIntruderPhoto() asked for.
    double captureDelaySeconds() const;

    CameraAuthorization authorization() const;

    /// Asks the user if they were never asked, and answers on the main thread; otherwise answers at once.
    void requestPermission(std::function<void(bool granted)> completion);

    /// Takes one photo `delay` seconds from now, one second at least. `completion` is called at most once, on the main
    /// thread; at once if the camera may not be used. A later call takes the place of one still waiting for its photo.
    void captureIntruderPhoto(const std::string& reason, double delay, Completion completion);

    /// The folder of the photos.
    std::filesystem::path intruderDirectory() const;

private:
    class Session;

    Camera& camera_;
    Files& files_;
    MainQueue& mainQueue_;
    Diagnostics& diagnostics_;
    std::shared_ptr<Session> session_; ///< what the other threads work on; it may outlive this object
    Completion pendingCompletion_;     ///< of the capture that waits for its photo
    Lifetime lifetime_;
};

/// The folder of the photos, for those who have the files but no camera.
std::filesystem::path intruderDirectory(const Files& files);

} // namespace kestrovan
