#include "platform/linux/CurlExchange.h"

#include <netdb.h>
#include <sys/socket.h>

#include <algorithm>

namespace kestrovan {

namespace {

constexpr std::size_t maxHeaderBytes = 65536; // libcurl itself keeps whatever comes

constexpr const char* timedOut = "The server did not answer in time.";

// libcurl ends the name in what it was given, not in what was asked: "127.0.0.1", "::ffff:127.0.0.1".
std::string numericHost(const curl_sockaddr& address)
{
    std::array<char, NI_MAXHOST> text{};
    if (getnameinfo(&address.addr, address.addrlen, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST) != 0)
        return {};
    return text.data();
}

// 304 and its like are answers; these five are sent elsewhere.
bool isRedirect(long status)
{
    constexpr std::array redirects{301L, 302L, 303L, 307L, 308L};
    return std::ranges::find(redirects, status) != redirects.end();
}

// What is wrong with a certificate; `verdict` is OpenSSL's (X509_V_ERR_...). Its own words leave out the host, and why
// nobody can be trusted without a right clock.
std::string describeCertificate(long verdict, const std::string& details)
{
    switch (verdict) {
    case 9:
        return "The server's certificate is not valid yet, or this computer's clock is slow.";
    case 10:
        return "The server's certificate has expired, or this computer's clock is fast.";
    case 18: // the certificate itself, 19: one that it hangs on
    case 19:
        return "The server's certificate is self-signed: nobody that this computer trusts vouches for it.";
    case 20: // its issuer is missing, 21: the issuer of all that came
    case 21:
        return "The server's certificate comes from an issuer that this computer does not know.";
    default:
        return "The server's certificate does not prove that it is the right server: " + details;
    }
}

template <class Value>
Value info(CURL* easy, CURLINFO which)
{
    Value value{};
    curl_easy_getinfo(easy, which, &value);
    return value;
}

} // namespace

CurlExchange::CurlExchange(HttpRequest request, std::function<void(HttpResult)> done)
    : request_(std::move(request)), done_(std::move(done)), deadline_(Steady::now() + request_.timeLimit)
{}

template <class Value>
void CurlExchange::set(CURLoption option, Value value)
{
    curl_easy_setopt(easy_.get(), option, value);
}

bool CurlExchange::begin(const std::string& authorities)
{
    easy_.reset(curl_easy_init());
    if (!easy_) {
        finish(HttpError{"There is no memory for the request."});
        return false;
    }
    setRules(authorities);
    setCallbacks();
    setHeaders();
    return prepareTransfer() == Next::anotherTransfer;
}

void CurlExchange::setRules(const std::string& authorities)
{
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
    set(CURLOPT_FOLLOWLOCATION, 0L); // by hand, so that every hop is reviewed
    set(CURLOPT_PROXY, "");
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, 2L);
    set(CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
    setAuthorities(authorities);
    set(CURLOPT_FRESH_CONNECT, 1L);
    set(CURLOPT_FORBID_REUSE, 1L);
    set(CURLOPT_DNS_CACHE_TIMEOUT, 0L);
    set(CURLOPT_SSL_SESSIONID_CACHE, 0L);
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_QUICK_EXIT, 1L); // do not wait for a look-up of a name that hangs
}

void CurlExchange::setAuthorities(const std::string& authorities)
{
    const char* file = authorities.empty() ? curl_version_info(CURLVERSION_NOW)->cainfo : authorities.c_str();
    if (!file)
        return;
    set(CURLOPT_CAINFO, file);
    // Else the system's folder is trusted besides, and libcurl reads the file again for every request.
    set(CURLOPT_CAPATH, static_cast<const char*>(nullptr));
}

void CurlExchange::setCallbacks()
{
    using Data = void*;
    set(CURLOPT_ERRORBUFFER, errorText_.data());
    set(CURLOPT_WRITEDATA, Data(this));
    set(
        CURLOPT_WRITEFUNCTION, +[](char* bytes, std::size_t, std::size_t count, void* self) {
            return static_cast<CurlExchange*>(self)->receiveBody(bytes, count);
        });
    set(CURLOPT_HEADERDATA, Data(this));
    set(
        CURLOPT_HEADERFUNCTION, +[](char*, std::size_t, std::size_t count, void* self) {
            return static_cast<CurlExchange*>(self)->receiveHeader(count);
        });
    set(CURLOPT_OPENSOCKETDATA, Data(this));
    set(
        CURLOPT_OPENSOCKETFUNCTION, +[](void* self, curlsocktype, curl_sockaddr* address) {
            return static_cast<CurlExchange*>(self)->openSocket(*address);
        });
}

void CurlExchange::setHeaders()
{
    for (const auto& [name, value] : request_.headers) {
        // The list stays as it was if a line cannot be added.
        auto line = name;
        line.append(": ").append(value);
        if (auto* longer = curl_slist_append(headers_.get(), line.c_str())) {
            static_cast<void>(headers_.release());
            headers_.reset(longer);
        }
    }
    set(CURLOPT_HTTPHEADER, headers_.get());
}

CurlExchange::Next CurlExchange::prepareTransfer()
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Steady::now());
    if (left.count() <= 0)
        return end(HttpError{timedOut});
    body_.clear();
    bodyBytes_ = 0;
    wasRefused_ = false;
    errorText_.fill('\0');
    set(CURLOPT_URL, request_.address.c_str());
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(left.count()));
    return Next::anotherTransfer;
}

std::size_t CurlExchange::receiveBody(const char* bytes, std::size_t count)
{
    bodyBytes_ += count;
    body_.append(bytes, std::min(count, request_.keptBytes - body_.size()));
    return count;
}

std::size_t CurlExchange::receiveHeader(std::size_t count)
{
    headerBytes_ += count;
    return headerBytes_ > maxHeaderBytes ? 0 : count;
}

curl_socket_t CurlExchange::openSocket(const curl_sockaddr& address)
{
    if (request_.mayConnect && !request_.mayConnect(numericHost(address))) {
        wasRefused_ = true;
        return CURL_SOCKET_BAD;
    }
    return socket(address.family, address.socktype | SOCK_CLOEXEC, address.protocol);
}

CurlExchange::Next CurlExchange::conclude(CURLcode code)
{
    if (isAnsweredOtherwise(code))
        return end(HttpResponse{.isHttp = false});
    if (code != CURLE_OK)
        return end(HttpError{describe(code)});

    const auto status = info<long>(handle(), CURLINFO_RESPONSE_CODE);
    const auto* location = info<const char*>(handle(), CURLINFO_REDIRECT_URL);
    if (isRedirect(status) && location)
        return follow(location);

    constexpr long noContent = 204;
    return end(HttpResponse{.status = static_cast<int>(status),
                            .hasBody = status != noContent,
                            .body = std::move(body_),
                            .bodyBytes = bodyBytes_});
}

CurlExchange::Next CurlExchange::follow(const std::string& location)
{
    if (++redirects_ > Http::redirectLimit)
        return end(HttpError{"The server redirects too often."});
    const auto address = request_.reviewRedirect ? request_.reviewRedirect(location) : location;
    if (!address)
        return end(HttpError{"The server redirects to an address that is not allowed."});
    if (request_.address.starts_with("https:") && !address->starts_with("https:"))
        return end(HttpError{"The server redirects from https to http."});
    request_.address = *address;
    return prepareTransfer();
}

CurlExchange::Next CurlExchange::end(HttpResult result)
{
    finish(std::move(result));
    return Next::nothing;
}

// Bytes came that are no answer in HTTP; the same code without a connection only means a foreign scheme.
bool CurlExchange::isAnsweredOtherwise(CURLcode code) const
{
    return (code == CURLE_UNSUPPORTED_PROTOCOL || code == CURLE_WEIRD_SERVER_REPLY) &&
           info<long>(handle(), CURLINFO_NUM_CONNECTS) > 0;
}

std::string CurlExchange::describe(CURLcode code) const
{
    if (wasRefused_ && code == CURLE_COULDNT_CONNECT)
        return "The server's name leads to an address that is not allowed.";
    if (code == CURLE_OPERATION_TIMEDOUT)
        return timedOut;
    if (headerBytes_ > maxHeaderBytes)
        return "The server's answer begins with too many headers.";
    std::string details = errorText_.front() != '\0' ? errorText_.data() : curl_easy_strerror(code);
    if (code == CURLE_PEER_FAILED_VERIFICATION)
        return describeCertificate(info<long>(handle(), CURLINFO_SSL_VERIFYRESULT), details);
    if (code == CURLE_SSL_CONNECT_ERROR)
        return "There is no secure connection with the server: " + details;
    return details;
}

} // namespace kestrovan
