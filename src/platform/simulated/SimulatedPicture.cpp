#include "platform/simulated/SimulatedPicture.h"

#include <jpeglib.h>

#include <array>
#include <cstdint>
#include <cstdio> // which jpeglib.h needs before it
#include <cstdlib>

namespace kestrovan {

namespace {

constexpr int width = 640;
constexpr int height = 480;
constexpr int channels = 3;
using Colour = std::array<std::uint8_t, channels>;
using Row = std::array<std::uint8_t, std::size_t{width} * channels>;

struct Ellipse {
    int x, y, radiusX, radiusY;

    bool contains(int atX, int atY) const
    {
        const double dx = static_cast<double>(atX - x) / radiusX;
        const double dy = static_cast<double>(atY - y) / radiusY;
        return dx * dx + dy * dy <= 1;
    }
};

// A head and shoulders, a cap drawn down over the eyes, and the lamps of a café behind.
Colour colourAt(int x, int y)
{
    constexpr Ellipse cap{320, 150, 95, 70}, face{320, 205, 80, 105}, shoulders{320, 520, 240, 210};
    if (cap.contains(x, y) && y < 175)
        return {32, 36, 44};
    if (face.contains(x, y))
        return {196, 160, 132};
    if (shoulders.contains(x, y))
        return {52, 64, 84};
    for (const auto& lamp : {Ellipse{90, 70, 30, 30}, Ellipse{545, 95, 36, 36}})
        if (lamp.contains(x, y))
            return {255, 226, 150};
    const auto shade = static_cast<std::uint8_t>(60 + 60 * y / height);
    return {shade, static_cast<std::uint8_t>(shade - 15), static_cast<std::uint8_t>(shade - 30)};
}

Row rowAt(int y)
{
    Row row{};
    for (int x = 0; x < width; ++x) {
        const auto colour = colourAt(x, y);
        for (std::size_t channel = 0; channel < channels; ++channel)
            row.at(static_cast<std::size_t>(x) * channels + channel) = colour.at(channel);
    }
    return row;
}

} // namespace

std::string pictureOfSomebody()
{
    constexpr int quality = 85;
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_compress_struct encoder{};
    jpeg_error_mgr errors{};
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    jpeg_mem_dest(&encoder, &bytes, &size);
    encoder.image_width = width;
    encoder.image_height = height;
    encoder.input_components = channels;
    encoder.in_color_space = JCS_RGB;
    jpeg_set_defaults(&encoder);
    jpeg_set_quality(&encoder, quality, TRUE);
    jpeg_start_compress(&encoder, TRUE);
    for (int y = 0; y < height; ++y) {
        auto row = rowAt(y);
        auto* pixels = row.data();
        jpeg_write_scanlines(&encoder, &pixels, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    std::string file(reinterpret_cast<const char*>(bytes), size); // NOLINT: bytes are bytes
    std::free(bytes);
    return file;
}

} // namespace kestrovan
