#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Base64 with the standard alphabet and padding (RFC 4648, section 4).
namespace kestrovan::base64 {

std::string encode(std::string_view bytes);

/// None unless `text` is what encode() gives.
std::optional<std::string> decode(std::string_view text);

} // namespace kestrovan::base64
