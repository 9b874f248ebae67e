#pragma once

#include "platform/Camera.h"

#include <gst/gst.h>

namespace kestrovan {

/// One raw video frame as a JPEG file with 4:2:0 colour, which every program can show. Any thread; takes some tens of
/// milliseconds.
Camera::PhotoResult encodeJpeg(GstSample* frame);

} // namespace kestrovan
