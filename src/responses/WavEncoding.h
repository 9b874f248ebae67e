#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kestrovan {

inline constexpr std::uint32_t wavFramesPerSecond = 44100;

/// A complete RIFF/WAVE file of 16-bit stereo PCM; `samples` are left and right in turn. The layout is that of
/// "Multimedia Programming Interface and Data Specifications 1.0" (IBM and Microsoft, 1991).
std::vector<std::byte> encodeWav(std::span<const std::int16_t> samples);

} // namespace kestrovan
