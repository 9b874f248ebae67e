#include "update/WebAddress.h"

#include <arpa/inet.h>
#include <curl/curl.h>
#include <idn2.h>
#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <span>

namespace kestrovan {

namespace {

constexpr std::string_view metadataAddress = "169.254.169.254";
constexpr std::string_view metadataName = "metadata.google.internal";

// An address reads differently a second time only where escapes or foreign digits hide another one; two rounds reveal
// what there is, and a third finds it settled.
constexpr int maxRounds = 4;

struct UrlDeleter {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
};
using Url = std::unique_ptr<CURLU, UrlDeleter>;

std::optional<std::string> part(const Url& url, CURLUPart which)
{
    char* text = nullptr;
    if (curl_url_get(url.get(), which, &text, 0) != CURLUE_OK)
        return std::nullopt;
    const std::unique_ptr<char, decltype(&curl_free)> owner(text, curl_free);
    return std::string(text);
}

bool isAscii(std::string_view text)
{
    return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

std::string lowerCased(std::string text)
{
    std::ranges::transform(text, text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return text;
}

bool isWebScheme(const std::string& scheme)
{
    return scheme == "http" || scheme == "https";
}

AddressFault faultOf(CURLUcode code, const std::string& text)
{
    const bool isWeb = isWebScheme(lowerCased(text.substr(0, text.find(':'))));
    switch (code) {
    case CURLUE_BAD_SCHEME:
    case CURLUE_UNSUPPORTED_SCHEME:
        return AddressFault::foreignScheme;
    case CURLUE_BAD_SLASHES:
    case CURLUE_NO_HOST:
        return isWeb ? AddressFault::noHost : AddressFault::foreignScheme;
    default:
        return AddressFault::malformed;
    }
}

// The library forgives a wrong number of slashes and takes the first name of the path for the host.
bool hasAuthority(const std::string& text)
{
    const auto rest = std::string_view(text).substr(text.find(':') + 1);
    return rest.size() > 2 && rest.starts_with("//") &&
           std::string_view("/?#\\").find(rest[2]) == std::string_view::npos;
}

bool isPlainName(std::string_view host)
{
    return host.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789.-_") == std::string_view::npos;
}

// As the library does it when it connects, but in UTF-8 whatever the locale. Full-width forms of the characters that
// divide an address become those characters: such a name is none.
std::optional<std::string> asciiHost(const std::string& host)
{
    if (isAscii(host))
        return lowerCased(host);
    std::uint8_t* converted = nullptr;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(host.c_str());
    if (idn2_lookup_u8(bytes, &converted, IDN2_NFC_INPUT | IDN2_NONTRANSITIONAL) != IDN2_OK)
        return std::nullopt;
    const std::unique_ptr<std::uint8_t, decltype(&idn2_free)> owner(converted, [](void* p) { idn2_free(p); });
    const auto name = lowerCased(reinterpret_cast<const char*>(converted));
    return isPlainName(name) ? std::optional(name) : std::nullopt;
}

std::string withoutFinalDots(std::string host)
{
    host.erase(host.find_last_not_of('.') + 1);
    return host;
}

std::variant<WebAddress, AddressFault> parseOnce(const std::string& text, unsigned flags)
{
    const Url url(curl_url());
    if (!url)
        return AddressFault::malformed;
    if (const auto code = curl_url_set(url.get(), CURLUPART_URL, text.c_str(), flags); code != CURLUE_OK)
        return faultOf(code, text);
    if (!isWebScheme(part(url, CURLUPART_SCHEME).value_or("")))
        return AddressFault::foreignScheme;
    if (!hasAuthority(text))
        return AddressFault::noHost;

    const auto converted = asciiHost(part(url, CURLUPART_HOST).value_or(""));
    if (!converted)
        return AddressFault::malformed;
    const auto host = withoutFinalDots(*converted);
    if (host.empty())
        return AddressFault::noHost;
    if (curl_url_set(url.get(), CURLUPART_HOST, host.c_str(), 0) != CURLUE_OK)
        return AddressFault::malformed;
    const auto normal = part(url, CURLUPART_URL);
    return normal ? std::variant<WebAddress, AddressFault>(WebAddress{*normal, host}) : AddressFault::malformed;
}

// Networks without IPv4 reach IPv4's addresses under this prefix, 64:ff9b::/96 (RFC 6052).
bool isTranslated(const in6_addr& address)
{
    constexpr std::array<std::uint8_t, 12> prefix{0x00, 0x64, 0xff, 0x9b};
    return std::ranges::equal(prefix, std::span(address.s6_addr).first<prefix.size()>());
}

// The IPv4 address inside an IPv6 one that leads to the same place.
std::optional<std::string> embeddedIPv4(const std::string& host)
{
    in6_addr address{};
    const auto withoutInterface = host.substr(0, host.find('%'));
    if (inet_pton(AF_INET6, withoutInterface.c_str(), &address) != 1)
        return std::nullopt;
    if (!IN6_IS_ADDR_V4MAPPED(&address) && !IN6_IS_ADDR_V4COMPAT(&address) && !isTranslated(address))
        return std::nullopt;
    std::array<char, INET_ADDRSTRLEN> text{};
    return inet_ntop(AF_INET, &address.s6_addr[12], text.data(), text.size());
}

} // namespace

std::variant<WebAddress, AddressFault> parseWebAddress(const std::string& text)
{
    if (text.find('\0') != std::string::npos)
        return AddressFault::malformed;

    constexpr unsigned lenient = CURLU_NON_SUPPORT_SCHEME | CURLU_ALLOW_SPACE | CURLU_URLENCODE;
    auto reading = parseOnce(text, lenient);
    for (int round = 1; round < maxRounds; ++round) {
        const auto* address = std::get_if<WebAddress>(&reading);
        if (!address)
            return reading;
        auto again = parseOnce(address->url, 0);
        if (again == reading)
            return reading;
        reading = std::move(again);
    }
    return AddressFault::malformed;
}

bool isBlockedHost(std::string_view host)
{
    if (host.starts_with('[') && host.ends_with(']'))
        host = host.substr(1, host.size() - 2);
    return host == metadataName || host == metadataAddress || embeddedIPv4(std::string(host)) == metadataAddress;
}

} // namespace kestrovan
