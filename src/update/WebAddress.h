#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace kestrovan {

/// A complete http or https address in the one form that is both checked and fetched: the host in lower-case ASCII,
/// without a final dot, an IPv4 address in its usual four numbers however it was spelt, all else escaped as needed.
struct WebAddress {
    std::string url;
    std::string host; ///< IPv6 addresses in brackets

    bool operator==(const WebAddress&) const = default;
};

enum class AddressFault { malformed, foreignScheme, noHost };

/// Takes `text` (UTF-8) apart with the parser of the library that makes the requests, so that no address can mean one
/// host here and another there. That parser is linked here rather than reached through a port: it is a pure function,
/// and a twin of it for tests would be the second parser that must not be.
std::variant<WebAddress, AddressFault> parseWebAddress(const std::string& text);

/// Whether `host`, a WebAddress's or an IPv4 or IPv6 address in numbers, tells a virtual machine's secrets to whoever
/// asks from inside it.
bool isBlockedHost(std::string_view host);

} // namespace kestrovan
