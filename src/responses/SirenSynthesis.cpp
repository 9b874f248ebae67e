#include "responses/SirenSynthesis.h"

#include "responses/WavEncoding.h"

#include <algorithm>
#include <cmath>

namespace kestrovan {

namespace {

constexpr std::uint32_t frameCount = 88200;

std::int16_t sampleAt(std::uint32_t frame)
{
    const double t = frame / 44100.0;
    const double sweep = std::sin(t * 9.42477796076938); // 3 pi: one and a half sweeps a second
    const double angularFrequency = (sweep * 650.0 + 1100.0) * 6.283185307179586;
    // Frequency times time, not its integral: the phase runs wild towards the end, and that is the siren's voice.
    const double x = t * angularFrequency;
    const double lower = std::sin(x) + std::sin(x * 3.0) * 0.35;
    const double value = (std::sin(x * 5.0) * 0.2 + lower) * 0.9;
    if (value >= 1.0)
        return 32767;
    return static_cast<std::int16_t>(std::max(value, -1.0) * 32767.0);
}

} // namespace

std::vector<std::byte> synthesizeSiren()
{
    std::vector<std::int16_t> samples;
    samples.reserve(std::size_t{frameCount} * 2);
    for (std::uint32_t frame = 0; frame < frameCount; ++frame) {
        const auto sample = sampleAt(frame);
        samples.insert(samples.end(), {sample, sample});
    }
    return encodeWav(samples);
}

} // namespace kestrovan
