#include "responses/SirenSynthesis.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace kestrovan {
namespace {

std::int16_t sample(const std::vector<std::byte>& file, std::size_t frame, std::size_t channel)
{
    std::int16_t value = 0;
    std::memcpy(&value, &file.at(44 + frame * 4 + channel * 2), sizeof value);
    return value;
}

TEST(SirenSynthesis, BothChannelsSoundTheSameAndNeverClip)
{
    const auto file = synthesizeSiren();
    int peak = 0;
    for (std::size_t frame = 0; frame < 88200; ++frame) {
        ASSERT_EQ(sample(file, frame, 0), sample(file, frame, 1)) << frame;
        peak = std::max(peak, std::abs(static_cast<int>(sample(file, frame, 0))));
    }
    EXPECT_EQ(sample(file, 0, 0), 0);
    EXPECT_EQ(peak, 28015);
    EXPECT_EQ(file, synthesizeSiren());
}

} // namespace
} // namespace kestrovan
