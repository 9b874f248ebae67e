#include "platform/linux/JpegEncoding.h"

#include "platform/linux/GstHandles.h"

#include <gst/app/gstappsrc.h>

namespace kestrovan {

namespace {

using namespace gst;

constexpr GstClockTime encoderPatience = 3 * GST_SECOND;
// The colour format is named, since an encoder left to itself follows the camera into rare ones; its colours are those
// that readers of JPEG files expect (full range, BT.601), not those of television. The way there is by RGB: between two
// formats of television's kind videoconvert changes the label, but not the brightness.
constexpr const char* description =
    "appsrc name=frame format=time ! videoconvert ! video/x-raw,format=RGBx ! videoconvert "
    "! video/x-raw,format=I420,colorimetry=1:4:0:0 ! jpegenc quality=90 ! appsink name=file sync=false";

std::string encode(GstElement* pipeline, GstSample* frame)
{
    const ElementHandle source(gst_bin_get_by_name(GST_BIN(pipeline), "frame"));
    const ElementHandle sink(gst_bin_get_by_name(GST_BIN(pipeline), "file"));
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    gst_app_src_push_sample(GST_APP_SRC(source.get()), frame);
    gst_app_src_end_of_stream(GST_APP_SRC(source.get()));
    const auto file = pullSample(sink.get(), encoderPatience);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    return file ? bytes(file.get()) : std::string();
}

} // namespace

Camera::PhotoResult encodeJpeg(GstSample* frame)
{
    GError* error = nullptr;
    const ElementHandle pipeline(gst_parse_launch(description, &error));
    const ErrorHandle problem(error);
    if (!pipeline || problem)
        return Camera::Error{std::string("the picture cannot be encoded: ") + (problem ? problem->message : "")};
    auto jpeg = encode(pipeline.get(), frame);
    if (jpeg.empty())
        return Camera::Error{"the picture cannot be encoded"};
    return Camera::Photo{std::move(jpeg)};
}

} // namespace kestrovan
