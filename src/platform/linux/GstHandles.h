#pragma once

#include "platform/linux/Release.h"

#include <gst/app/gstappsink.h>
#include <gst/gst.h>

#include <memory>
#include <string>

namespace kestrovan::gst {

/// Owned references to GStreamer's objects.
template <class T>
using ObjectHandle = std::unique_ptr<T, Release<gst_object_unref>>;
using ElementHandle = ObjectHandle<GstElement>;
using CapsHandle = std::unique_ptr<GstCaps, Release<gst_caps_unref>>;
using SampleHandle = std::unique_ptr<GstSample, Release<gst_sample_unref>>;
using MessageHandle = std::unique_ptr<GstMessage, Release<gst_message_unref>>;
using ErrorHandle = std::unique_ptr<GError, Release<g_error_free>>;
using StringHandle = std::unique_ptr<gchar, Release<g_free>>;

inline SampleHandle pullSample(GstElement* sink, GstClockTime patience)
{
    return SampleHandle(gst_app_sink_try_pull_sample(GST_APP_SINK(sink), patience));
}

/// The bytes of a sample, empty if it has none.
inline std::string bytes(GstSample* sample)
{
    std::string copy;
    GstMapInfo map{};
    auto* buffer = gst_sample_get_buffer(sample);
    if (buffer && gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        copy.assign(reinterpret_cast<const char*>(map.data), map.size); // NOLINT: bytes are bytes
        gst_buffer_unmap(buffer, &map);
    }
    return copy;
}

} // namespace kestrovan::gst
