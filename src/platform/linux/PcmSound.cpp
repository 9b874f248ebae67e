#include "platform/linux/PcmSound.h"

#include <algorithm>
#include <string_view>

namespace kestrovan {

namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t chunkHeaderSize = 8;
constexpr std::size_t formatSize = 16;
constexpr std::size_t bytesPerSample = 2;
constexpr unsigned pcm = 1;
// What the sound server takes (PA_RATE_MAX is 768,000; PA_CHANNELS_MAX is 32, but only these have a usual order).
constexpr unsigned highestRate = 384'000;
constexpr unsigned mostChannels = 8;

unsigned readNumber(Bytes bytes, std::size_t offset, std::size_t size)
{
    unsigned value = 0;
    for (std::size_t index = 0; index < size; ++index)
        value |= std::to_integer<unsigned>(bytes[offset + index]) << 8U * index;
    return value;
}
unsigned u16(Bytes bytes, std::size_t offset)
{
    return readNumber(bytes, offset, 2);
}
unsigned u32(Bytes bytes, std::size_t offset)
{
    return readNumber(bytes, offset, 4);
}

bool hasTag(Bytes bytes, std::size_t offset, std::string_view tag)
{
    return std::ranges::equal(bytes.subspan(offset, tag.size()), tag, {}, {},
                              [](char character) { return static_cast<std::byte>(character); });
}

struct Chunk {
    Bytes content;
    bool isThere = false;
    bool isWhole = false;
};

// `rest` begins with a chunk header or is shorter than one.
Chunk findChunk(Bytes rest, std::string_view tag)
{
    while (rest.size() >= chunkHeaderSize) {
        const std::size_t size = u32(rest, 4);
        const auto room = rest.size() - chunkHeaderSize;
        if (hasTag(rest, 0, tag))
            return {rest.subspan(chunkHeaderSize, std::min(size, room)), true, size <= room};
        rest = rest.subspan(chunkHeaderSize + std::min(room, size + size % 2)); // chunks begin at even offsets
    }
    return {};
}

std::string complaintAbout(const Chunk& format)
{
    if (!format.isThere || format.content.size() < formatSize)
        return "a WAV file without a format";
    const auto channels = u16(format.content, 2);
    const auto rate = u32(format.content, 4);
    if (u16(format.content, 0) != pcm || u16(format.content, 14) != bytesPerSample * 8)
        return "a WAV file that is not 16-bit PCM";
    if (channels == 0 || channels > mostChannels || rate == 0 || rate > highestRate ||
        u16(format.content, 12) != channels * bytesPerSample)
        return "a WAV file of an impossible format";
    return {};
}

} // namespace

WavReading readWav(WavFile file)
{
    constexpr std::size_t riffHeaderSize = 12;
    const Bytes bytes = file ? Bytes(*file) : Bytes();
    if (bytes.size() < riffHeaderSize || !hasTag(bytes, 0, "RIFF") || !hasTag(bytes, 8, "WAVE"))
        return {std::nullopt, "not a WAV file"};
    const auto format = findChunk(bytes.subspan(riffHeaderSize), "fmt ");
    if (auto complaint = complaintAbout(format); !complaint.empty())
        return {std::nullopt, std::move(complaint)};
    const auto data = findChunk(bytes.subspan(riffHeaderSize), "data");
    if (!data.isThere || (data.isWhole && data.content.empty()))
        return {std::nullopt, "a WAV file without samples"};
    const std::size_t frameSize = u16(format.content, 12);
    if (!data.isWhole || data.content.size() % frameSize != 0)
        return {std::nullopt, "a WAV file that was cut short"};
    return {PcmSound{u32(format.content, 4), static_cast<std::uint8_t>(u16(format.content, 2)), std::move(file),
                     data.content},
            {}};
}

PcmSound scaled(const PcmSound& sound, float fraction)
{
    auto samples = std::make_shared<std::vector<std::byte>>(sound.samples.begin(), sound.samples.end());
    for (std::size_t offset = 0; offset + bytesPerSample <= samples->size(); offset += bytesPerSample) {
        const auto sample = static_cast<std::int16_t>(u16(sound.samples, offset));
        const auto quieter = static_cast<unsigned>(static_cast<int>(static_cast<float>(sample) * fraction));
        (*samples)[offset] = static_cast<std::byte>(quieter & 0xFFU);
        (*samples)[offset + 1] = static_cast<std::byte>(quieter >> 8U & 0xFFU);
    }
    return {sound.framesPerSecond, sound.channels, samples, *samples};
}

} // namespace kestrovan
