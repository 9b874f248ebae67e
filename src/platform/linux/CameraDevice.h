#pragma once

#include <string>

namespace kestrovan {

/// What a search for the default camera came to.
struct CameraDevice {
    std::string node;  ///< its device node, empty if there is none to use
    std::string error; ///< then, why: no video device at all, or what is wrong with those that there are
};

/// Finds the camera that a person at the machine would call its camera: among the V4L2 devices that can capture video,
/// a built-in one before one that was plugged in, those made by software last, infrared ones after their like, the
/// lowest number first. Opens devices only long enough to ask what they are, which lights no light. Worker thread.
CameraDevice findDefaultCamera();

/// Why the device behind a node cannot be a camera now, empty if it can. The same costs and thread.
std::string objectionTo(const std::string& node);

} // namespace kestrovan
