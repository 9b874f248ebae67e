#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace kestrovan {

/// A GET. The two questions are asked on a thread of the adapter's, perhaps after whoever sent the request is gone.
struct HttpRequest {
    std::string address;
    std::vector<std::pair<std::string, std::string>> headers;
    std::chrono::milliseconds timeLimit{}; ///< for the whole exchange: looking up names and redirects included
    std::size_t keptBytes = 0;             ///< of the body; the rest is only counted

    /// What to fetch for the address that a redirect names; none ends the exchange with an error.
    std::function<std::optional<std::string>(const std::string& address)> reviewRedirect;

    /// Whether this host, an IPv4 or IPv6 address in numbers, may be connected to; asked of all that a name leads to.
    std::function<bool(const std::string& numericHost)> mayConnect;
};

struct HttpResponse {
    int status = 0;
    bool isHttp = true;        ///< otherwise the server speaks something else, and nothing here means anything
    bool hasBody = true;       ///< false where the status rules out a body; an empty one is a body
    std::string body{};        ///< the first keptBytes of it
    std::size_t bodyBytes = 0; ///< how many came
};

struct HttpError {
    std::string description;
};

using HttpResult = std::variant<HttpResponse, HttpError>;

/// Fetches documents from web servers (http and https alone, servers' certificates verified), keeping nothing between
/// two requests. Follows up to five redirects, none of them from https to http.
class Http {
public:
    static constexpr int redirectLimit = 5;

    virtual ~Http() = default;

    /// Starts a GET; `done` is called once, on any thread, unless this object ends first. Main thread; returns at once.
    virtual void get(HttpRequest request, std::function<void(HttpResult)> done) = 0;
};

} // namespace kestrovan
