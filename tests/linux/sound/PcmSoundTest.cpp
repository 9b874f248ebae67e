#include "platform/linux/PcmSound.h"

#include "responses/SirenSynthesis.h"
#include "responses/WavEncoding.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace kestrovan {
namespace {

using Bytes = std::vector<std::byte>;

WavReading read(Bytes bytes)
{
    return readWav(std::make_shared<const Bytes>(std::move(bytes)));
}

Bytes small()
{
    return encodeWav(std::vector<std::int16_t>{1, -1, 2, -2});
}

void put(Bytes& bytes, std::size_t offset, const std::vector<int>& values)
{
    for (const auto value : values)
        bytes[offset++] = static_cast<std::byte>(value);
}

void cut(Bytes& bytes, std::size_t length)
{
    bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(length), bytes.end());
}

TEST(PcmSoundTest, ReadsTheSirenWithoutCopyingIt)
{
    const auto file = std::make_shared<const Bytes>(synthesizeSiren());
    const auto reading = readWav(file);
    ASSERT_TRUE(reading.sound) << reading.error;
    EXPECT_EQ(reading.sound->framesPerSecond, 44100U);
    EXPECT_EQ(reading.sound->channels, 2);
    EXPECT_EQ(reading.sound->samples.size(), 352'800U);
    EXPECT_EQ(reading.sound->samples.data(), file->data() + 44);
}

TEST(PcmSoundTest, SaysWhatIsWrongWithAFile)
{
    constexpr const char* foreign = "not a WAV file";
    constexpr const char* formless = "a WAV file without a format";
    constexpr const char* impossible = "a WAV file of an impossible format";
    constexpr const char* silent = "a WAV file without samples";
    constexpr const char* shortened = "a WAV file that was cut short";
    const auto expect = [](const char* error, const Bytes& bytes) {
        const auto reading = read(bytes);
        EXPECT_EQ(reading.error, error);
        EXPECT_FALSE(reading.sound);
    };
    EXPECT_EQ(readWav(nullptr).error, foreign);
    using Length = std::pair<std::size_t, const char*>;
    for (const auto& [length, error] : {Length{0, foreign},
                                        {11, foreign},
                                        {12, formless},
                                        {30, formless},
                                        {36, silent},
                                        {small().size() - 4, shortened}}) {
        auto bytes = small();
        cut(bytes, length);
        expect(error, bytes);
    }

    struct Damage {
        const char* error;
        std::size_t offset;
        std::vector<int> bytes;
    };
    for (const auto& damage : {Damage{foreign, 0, {'R', 'I', 'F', 'X'}},
                               {foreign, 8, {'A', 'V', 'I', ' '}},
                               {formless, 12, {'f', 'm', 't', 0}},
                               {"a WAV file that is not 16-bit PCM", 20, {3, 0}},
                               {"a WAV file that is not 16-bit PCM", 34, {8, 0}},
                               {impossible, 22, {0, 0}},
                               {impossible, 22, {9, 0}},
                               {impossible, 24, {0, 0, 0, 0}},
                               {impossible, 24, {0, 0, 0, 255}},
                               {impossible, 32, {6, 0}},
                               {silent, 40, {0, 0, 0, 0}},
                               {shortened, 40, {255, 255, 255, 255}},
                               {shortened, 40, {6, 0, 0, 0}}}) {
        auto bytes = small();
        put(bytes, damage.offset, damage.bytes);
        expect(damage.error, bytes);
    }
}

TEST(PcmSoundTest, WhateverTheBytesAreWhatItReadsLiesWithinThem)
{
    std::mt19937 random(20261122);
    int readable = 0;
    for (int round = 0; round < 20'000; ++round) {
        auto bytes = small();
        for (int flips = 1 + static_cast<int>(random() % 4); flips > 0; --flips)
            bytes[random() % bytes.size()] = static_cast<std::byte>(random());
        if (random() % 3 == 0)
            cut(bytes, random() % bytes.size());
        const auto file = std::make_shared<const Bytes>(bytes);
        const auto [sound, error] = readWav(file);
        ASSERT_EQ(sound.has_value(), error.empty());
        if (!sound)
            continue;
        ++readable;
        ASSERT_GE(sound->samples.data(), file->data());
        ASSERT_LE(sound->samples.data() + sound->samples.size(), file->data() + file->size());
        ASSERT_EQ(sound->samples.size() % (2U * sound->channels), 0U);
        ASSERT_FALSE(sound->samples.empty());
    }
    EXPECT_GT(readable, 1000);
}

} // namespace
} // namespace kestrovan
