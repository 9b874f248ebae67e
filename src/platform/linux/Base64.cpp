#include "platform/linux/Base64.h"

#include <array>
#include <cstdint>

namespace kestrovan::base64 {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t noDigit = 0xff;

constexpr auto digits = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(noDigit);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        table[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return table;
}();

} // namespace

std::string encode(std::string_view bytes)
{
    std::string text((bytes.size() + 2) / 3 * 4, '=');
    auto* next = text.data();
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto group = bytes.substr(i, 3);
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k)
            bits = bits << 8U | (k < group.size() ? static_cast<unsigned char>(group[k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k, ++next)
            if (k <= group.size())
                *next = alphabet[bits >> (18U - 6U * k) & 0x3fU];
    }
    return text;
}

std::optional<std::string> decode(std::string_view text)
{
    if (text.size() % 4 != 0)
        return std::nullopt;
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    const auto significant = text.substr(0, text.size() - padding);
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : significant) {
        const auto digit = digits[static_cast<unsigned char>(c)];
        if (digit == noDigit)
            return std::nullopt;
        bits = bits << 6U | digit;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 0xffU);
        }
    }
    const bool strayBits = (bits & ((1U << count) - 1U)) != 0;
    return strayBits ? std::nullopt : std::optional(std::move(bytes));
}

} // namespace kestrovan::base64
