#pragma once

#include "platform/Camera.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <string>

namespace kestrovan {

/// The stream of pictures of one V4L2 device, of which single ones are taken. The device is open, and its light on,
/// from construction until close() or destruction.
class StillPipeline {
public:
    /// Opens the device and starts the stream. What goes wrong is told by takeStill(). May block; any thread.
    explicit StillPipeline(std::string node);
    StillPipeline(const StillPipeline&) = delete;
    StillPipeline& operator=(const StillPipeline&) = delete;
    ~StillPipeline();

    /// The first whole picture whose exposure is not older than this call: the camera's own JPEG file where it makes
    /// JPEG, else encoded here. Blocks up to `timeLimit`. One thread at a time.
    Camera::PhotoResult takeStill(std::chrono::milliseconds timeLimit);

    /// Closes the device; a takeStill() under way on another thread ends in an error. Any thread.
    void close();

private:
    struct Elements;
    class Newest;

    bool build();
    bool selectFormat();
    std::string problem();

    const std::string node_;
    std::string problem_; ///< once there is one, it stays
    bool makesJpeg_ = false;
    std::atomic<bool> isClosed_ = false;
    std::unique_ptr<Elements> elements_;
};

} // namespace kestrovan
