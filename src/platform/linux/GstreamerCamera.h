#pragma once

#include "platform/Camera.h"
#include "platform/linux/CameraPermission.h"
#include "platform/linux/ThreadSerialQueue.h"

#include <atomic>
#include <chrono>
#include <mutex>

namespace kestrovan {

class StillPipeline;

/// The default V4L2 camera, through GStreamer, which is loaded in the background when first needed. The device is open
/// between start() and stop() only. Files, diagnostics and what the callbacks reach outlive the camera; its destructor
/// closes the device and waits for a callback that is running.
class GstreamerCamera final : public Camera {
public:
    struct Options {
        std::filesystem::path answerFile; ///< keeps whether the user allowed the camera
        CameraPermission::Ask ask;        ///< shows the question to the user
        /// How long a camera that is on may take for a picture before it counts as broken.
        std::chrono::milliseconds pictureTimeLimit = std::chrono::seconds(5);
    };

    GstreamerCamera(Options options, Files& files, Diagnostics& diagnostics);
    GstreamerCamera(const GstreamerCamera&) = delete;
    GstreamerCamera& operator=(const GstreamerCamera&) = delete;
    ~GstreamerCamera() override;

    CameraAuthorization authorization() const override;
    void requestAccess(std::function<void(bool granted)> answered) override;
    bool configure() override;
    bool isRunning() const override;
    void start() override;
    void capturePhoto(std::function<void(PhotoResult)> done) override;
    void stop() override;

private:
    std::shared_ptr<StillPipeline> pipeline() const;
    PhotoResult takeStill(const std::shared_ptr<StillPipeline>& pipeline) const;

    const std::chrono::milliseconds pictureTimeLimit_;
    Diagnostics& diagnostics_;
    CameraPermission permission_;
    std::atomic<bool> isClosing_ = false;
    mutable std::mutex mutex_; ///< for the two below; never held while the device is waited for
    std::shared_ptr<StillPipeline> pipeline_;
    std::string absence_; ///< why start() found no camera
    mutable std::atomic<bool> isWarm_ = false;
    mutable ThreadSerialQueue queue_{"com.kestrovan.camera"};
};

} // namespace kestrovan
