#pragma once

#include "platform/AudioOutput.h"

#include <cstdint>
#include <optional>
#include <span>

namespace kestrovan {

/// 16-bit little-endian PCM, the channels in turn.
struct PcmSound {
    std::uint32_t framesPerSecond = 0;
    std::uint8_t channels = 0;
    std::shared_ptr<const std::vector<std::byte>> owner; ///< keeps the samples
    std::span<const std::byte> samples;                  ///< whole frames, at least one
};

struct WavReading {
    std::optional<PcmSound> sound; ///< none on failure
    std::string error;             ///< then, its description
};

/// Reads a RIFF/WAVE file of 16-bit PCM, whatever bytes there are; the samples stay where they are. The format is that
/// of "Multimedia Programming Interface and Data Specifications 1.0" (IBM and Microsoft, 1991).
WavReading readWav(WavFile file);

/// The sound with every sample scaled, 0 to 1.
PcmSound scaled(const PcmSound& sound, float fraction);

} // namespace kestrovan
