#pragma once

#include <cstddef>
#include <vector>

namespace kestrovan {

/// The siren as a complete WAV file in memory: 2.0 s of 16-bit stereo PCM at 44,100 frames a second, 352,844 bytes,
/// the same at every call.
std::vector<std::byte> synthesizeSiren();

} // namespace kestrovan
