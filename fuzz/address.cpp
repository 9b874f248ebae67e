#include "update/WebAddress.h"

#include <curl/curl.h>
#include <netdb.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

using namespace kestrovan;

namespace {

// The host that a request to `url` goes to, as libcurl takes it apart for itself.
std::string hostFetched(const std::string& url)
{
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parts(curl_url(), curl_url_cleanup);
    char* host = nullptr;
    if (curl_url_set(parts.get(), CURLUPART_URL, url.c_str(), CURLU_GUESS_SCHEME | CURLU_NON_SUPPORT_SCHEME) != 0 ||
        curl_url_get(parts.get(), CURLUPART_HOST, &host, 0) != 0)
        return {};
    const std::unique_ptr<char, decltype(&curl_free)> owner(host, curl_free);
    return host;
}

// The number that the C library reads in a host, in its usual form; empty if it is a name.
std::string numberRead(std::string host)
{
    if (host.starts_with('[') && host.ends_with(']'))
        host = host.substr(1, host.size() - 2);
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.c_str(), nullptr, &hints, &found) != 0)
        return {};
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, freeaddrinfo);
    std::array<char, NI_MAXHOST> text{};
    getnameinfo(found->ai_addr, found->ai_addrlen, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST);
    return text.data();
}

// What was checked is what is fetched, and no spelling of a blocked host passes for another.
void tryAddress(const std::string& text)
{
    const auto reading = parseWebAddress(text);
    const auto* address = std::get_if<WebAddress>(&reading);
    if (!address)
        return;
    if (!address->url.starts_with("http://") && !address->url.starts_with("https://"))
        std::abort();
    if (parseWebAddress(address->url) != reading)
        std::abort();
    if (address->host.empty() || hostFetched(address->url) != address->host)
        std::abort();
    if (isBlockedHost(numberRead(address->host)) && !isBlockedHost(address->host))
        std::abort();
}

} // namespace

// Whatever is typed as an address, or as the host in one, is either none, or reads the same to all who read it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    tryAddress(text);
    tryAddress("http://" + text + "/");
    return 0;
}
