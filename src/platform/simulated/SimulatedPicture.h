#pragma once

#include <string>

namespace kestrovan {

/// What the simulated camera sees while somebody stands in front of it: a real JPEG file of 640x480 pixels.
std::string pictureOfSomebody();

} // namespace kestrovan
