#include "platform/linux/StillPipeline.h"

#include "platform/linux/CameraDevice.h"
#include "platform/linux/GstHandles.h"
#include "platform/linux/JpegEncoding.h"

#include <array>
#include <utility>

namespace kestrovan {

using namespace gst;

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr GstClockTime pollInterval = 20 * GST_MSECOND;
// Full HD shows a face across a room; cameras that could do more would only need longer for each picture.
constexpr std::array formats{
    "image/jpeg,width=[1,1920],height=[1,1080]",
    "video/x-raw,width=[1,1920],height=[1,1080]",
    "image/jpeg",
    "video/x-raw",
};

bool isWholeJpeg(const std::string& bytes)
{
    return bytes.size() > 4 && bytes.starts_with("\xFF\xD8") && bytes.find("\xFF\xD9", 2) != std::string::npos;
}

// The device is asked first: the stream has the same words for a camera that was unplugged and for one that failed.
std::string describe(GstMessage* message, const std::string& node)
{
    if (const auto objection = objectionTo(node); !objection.empty())
        return "the camera was unplugged or is not to be had: " + objection;
    GError* error = nullptr;
    gchar* details = nullptr;
    gst_message_parse_error(message, &error, &details);
    const ErrorHandle problem(error);
    const StringHandle context(details);
    if (g_error_matches(error, GST_RESOURCE_ERROR, GST_RESOURCE_ERROR_BUSY))
        return node + " is in use by another program";
    const std::string text = context ? context.get() : "";
    return node + " failed: " + error->message + " (" + text.substr(text.rfind('\n') + 1) + ")";
}

} // namespace

struct StillPipeline::Elements {
    ElementHandle pipeline; ///< owns the others
    GstElement* source = nullptr;
    GstElement* filter = nullptr;
    GstElement* sink = nullptr;
    ObjectHandle<GstBus> bus;
};

/// Tells frames exposed after a moment from those that waited somewhere on the way.
class StillPipeline::Newest {
public:
    explicit Newest(GstElement* pipeline)
    {
        if (const ObjectHandle<GstClock> clock{gst_element_get_clock(pipeline)})
            asked_ = gst_clock_get_time(clock.get()) - gst_element_get_base_time(pipeline);
    }

    // A camera whose time stamps are nonsense gives the newest picture that there is after a while.
    bool accepts(GstSample* sample) const
    {
        const auto taken = GST_BUFFER_PTS(gst_sample_get_buffer(sample));
        return asked_ == GST_CLOCK_TIME_NONE || taken == GST_CLOCK_TIME_NONE || taken >= asked_ ||
               SteadyClock::now() > giveUp_;
    }

private:
    GstClockTime asked_ = GST_CLOCK_TIME_NONE;
    SteadyClock::time_point giveUp_ = SteadyClock::now() + std::chrono::seconds(1);
};

StillPipeline::StillPipeline(std::string node) : node_(std::move(node)), elements_(std::make_unique<Elements>())
{
    if (!build()) {
        problem_ = "a GStreamer plugin for cameras is missing";
        return;
    }
    auto* pipeline = elements_->pipeline.get();
    const bool isOpen = gst_element_set_state(pipeline, GST_STATE_READY) != GST_STATE_CHANGE_FAILURE;
    if (isOpen && !selectFormat())
        problem_ = node_ + " has no picture format that can be used";
    else if (!isOpen || gst_element_set_state(pipeline, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
        problem_ = problem().empty() ? node_ + " cannot be started" : problem_;
}

StillPipeline::~StillPipeline()
{
    close();
}

bool StillPipeline::build()
{
    auto& parts = *elements_;
    parts.pipeline.reset(gst_pipeline_new(nullptr));
    parts.source = gst_element_factory_make("v4l2src", nullptr);
    parts.filter = gst_element_factory_make("capsfilter", nullptr);
    parts.sink = gst_element_factory_make("appsink", nullptr);
    for (auto* element : {parts.source, parts.filter, parts.sink})
        if (element)
            gst_bin_add(GST_BIN(parts.pipeline.get()), element);
    if (!parts.source || !parts.filter || !parts.sink)
        return false;
    parts.bus.reset(gst_element_get_bus(parts.pipeline.get()));
    g_object_set(parts.source, "device", node_.c_str(), nullptr);
    g_object_set(parts.sink, "max-buffers", 1U, "drop", TRUE, "sync", FALSE, nullptr);
    return gst_element_link_many(parts.source, parts.filter, parts.sink, nullptr) == TRUE;
}

// Settles on one kind of format: which one is known only once the device is open.
bool StillPipeline::selectFormat()
{
    const ObjectHandle<GstPad> pad(gst_element_get_static_pad(elements_->source, "src"));
    const CapsHandle offered(gst_pad_query_caps(pad.get(), nullptr));
    for (const auto* format : formats) {
        const CapsHandle wanted(gst_caps_from_string(format));
        if (!gst_caps_can_intersect(offered.get(), wanted.get()))
            continue;
        g_object_set(elements_->filter, "caps", wanted.get(), nullptr);
        makesJpeg_ = std::string(format).starts_with("image/jpeg");
        return true;
    }
    return false;
}

void StillPipeline::close()
{
    isClosed_ = true;
    if (elements_->pipeline)
        gst_element_set_state(elements_->pipeline.get(), GST_STATE_NULL);
}

Camera::PhotoResult StillPipeline::takeStill(std::chrono::milliseconds timeLimit)
{
    if (!problem_.empty())
        return Camera::Error{problem_};
    const auto deadline = SteadyClock::now() + timeLimit;
    const Newest newest(elements_->pipeline.get());
    while (!isClosed_) {
        if (auto error = problem(); !error.empty())
            return Camera::Error{std::move(error)};
        if (SteadyClock::now() > deadline)
            return Camera::Error{node_ + " delivers no picture"};
        const auto sample = pullSample(elements_->sink, pollInterval);
        if (!sample || !newest.accepts(sample.get()))
            continue;
        if (!makesJpeg_)
            return encodeJpeg(sample.get());
        if (auto jpeg = bytes(sample.get()); isWholeJpeg(jpeg))
            return Camera::Photo{std::move(jpeg)};
    }
    return Camera::Error{node_ + " was closed"};
}

// What the stream reports to have gone wrong, empty if nothing did.
std::string StillPipeline::problem()
{
    const auto types = static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_EOS);
    const MessageHandle message(gst_bus_pop_filtered(elements_->bus.get(), types));
    if (!message)
        return {};
    problem_ = GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS ? node_ + " ended its pictures"
                                                                  : describe(message.get(), node_);
    return problem_;
}

} // namespace kestrovan
