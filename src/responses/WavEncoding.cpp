#include "responses/WavEncoding.h"

#include <string_view>

namespace kestrovan {

namespace {

constexpr std::uint16_t channelCount = 2;
constexpr std::uint16_t bytesPerSample = 2;
constexpr std::uint16_t blockAlign = channelCount * bytesPerSample;
constexpr std::size_t headerSize = 44;

class LittleEndianWriter {
public:
    explicit LittleEndianWriter(std::size_t capacity) { bytes_.reserve(capacity); }

    void tag(std::string_view text)
    {
        for (const char character : text)
            bytes_.push_back(static_cast<std::byte>(character));
    }
    void u16(std::uint16_t value)
    {
        bytes_.push_back(static_cast<std::byte>(value & 0xFFU));
        bytes_.push_back(static_cast<std::byte>(value >> 8U));
    }
    void u32(std::uint32_t value)
    {
        u16(static_cast<std::uint16_t>(value & 0xFFFFU));
        u16(static_cast<std::uint16_t>(value >> 16U));
    }
    std::vector<std::byte> take() { return std::move(bytes_); }

private:
    std::vector<std::byte> bytes_;
};

void writeHeader(LittleEndianWriter& out, std::uint32_t dataSize)
{
    out.tag("RIFF");
    out.u32(dataSize + 36);
    out.tag("WAVE");
    out.tag("fmt ");
    out.u32(16);
    out.u16(1); // PCM
    out.u16(channelCount);
    out.u32(wavFramesPerSecond);
    out.u32(wavFramesPerSecond * blockAlign);
    out.u16(blockAlign);
    out.u16(bytesPerSample * 8);
    out.tag("data");
    out.u32(dataSize);
}

} // namespace

std::vector<std::byte> encodeWav(std::span<const std::int16_t> samples)
{
    const auto dataSize = samples.size() * bytesPerSample;
    LittleEndianWriter out(headerSize + dataSize);
    writeHeader(out, static_cast<std::uint32_t>(dataSize));
    for (const auto sample : samples)
        out.u16(static_cast<std::uint16_t>(sample));
    return out.take();
}

} // namespace kestrovan
