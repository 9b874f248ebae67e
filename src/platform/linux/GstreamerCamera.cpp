#include "platform/linux/GstreamerCamera.h"

#include "platform/Diagnostics.h"
#include "platform/linux/CameraDevice.h"
#include "platform/linux/StillPipeline.h"

#include <gst/gst.h>

#include <utility>

namespace kestrovan {

namespace {

// Any thread; the first one loads the library and its list of plugins, the others wait for it.
std::string loadGstreamer()
{
    static std::once_flag once;
    static std::string error;
    std::call_once(once, [] {
        GError* problem = nullptr;
        if (gst_init_check(nullptr, nullptr, &problem))
            return;
        error = problem ? problem->message : "GStreamer cannot be initialised";
        g_clear_error(&problem);
    });
    return error;
}

} // namespace

GstreamerCamera::GstreamerCamera(Options options, Files& files, Diagnostics& diagnostics)
    : pictureTimeLimit_(options.pictureTimeLimit), diagnostics_(diagnostics),
      permission_(options.answerFile, std::move(options.ask), files, diagnostics)
{}

GstreamerCamera::~GstreamerCamera()
{
    isClosing_ = true;
    stop();
}

// Who asks is about to need the camera, at some time: arming asks. An alarm should not have to wait for the library,
// which takes a second where it has never run before; nor does it help to wait for the user's answer.
CameraAuthorization GstreamerCamera::authorization() const
{
    const auto status = permission_.authorization();
    if (status != CameraAuthorization::denied && !isWarm_.exchange(true))
        queue_.post([] { loadGstreamer(); });
    return status;
}

void GstreamerCamera::requestAccess(std::function<void(bool granted)> answered)
{
    permission_.request(std::move(answered));
}

bool GstreamerCamera::configure()
{
    auto error = loadGstreamer();
    if (error.empty())
        error = findDefaultCamera().error;
    if (!error.empty())
        diagnostics_.line("Camera unavailable: " + error);
    return error.empty();
}

bool GstreamerCamera::isRunning() const
{
    return pipeline() != nullptr;
}

// The camera is looked for each time: after a sleep the same one may be back under another node.
void GstreamerCamera::start()
{
    if (isRunning())
        return;
    auto device = findDefaultCamera();
    auto pipeline = device.error.empty() ? std::make_shared<StillPipeline>(std::move(device.node)) : nullptr;
    const std::scoped_lock lock(mutex_);
    pipeline_ = std::move(pipeline);
    absence_ = std::move(device.error);
}

void GstreamerCamera::capturePhoto(std::function<void(PhotoResult)> done)
{
    queue_.post([this, pipeline = pipeline(), done = std::move(done)]() mutable {
        // Let go of before the answer: whoever then stops the camera ends its pipeline.
        auto result = takeStill(std::exchange(pipeline, nullptr));
        if (!isClosing_)
            done(std::move(result));
    });
}

Camera::PhotoResult GstreamerCamera::takeStill(const std::shared_ptr<StillPipeline>& pipeline) const
{
    if (pipeline)
        return pipeline->takeStill(pictureTimeLimit_);
    const std::scoped_lock lock(mutex_);
    return Error{absence_.empty() ? "the camera is not running" : absence_};
}

void GstreamerCamera::stop()
{
    std::shared_ptr<StillPipeline> ended;
    {
        const std::scoped_lock lock(mutex_);
        ended = std::exchange(pipeline_, nullptr);
    }
    if (ended)
        ended->close();
}

std::shared_ptr<StillPipeline> GstreamerCamera::pipeline() const
{
    const std::scoped_lock lock(mutex_);
    return pipeline_;
}

} // namespace kestrovan
