#pragma once

#include "platform/linux/CurlHttp.h"
#include "rigs/TemporaryFolder.h"
#include "rigs/WebServer.h"

#include <gmock/gmock.h>

#include <future>

namespace kestrovan::test {

inline HttpRequest requestFor(const std::string& address, std::chrono::milliseconds limit = std::chrono::seconds(30))
{
    return {.address = address,
            .headers = {},
            .timeLimit = limit,
            .keptBytes = 65536,
            .reviewRedirect = {},
            .mayConnect = {}};
}

inline HttpResult fetch(Http& http, HttpRequest request)
{
    const auto answer = std::make_shared<std::promise<HttpResult>>();
    auto future = answer->get_future();
    http.get(std::move(request), [answer](HttpResult result) { answer->set_value(std::move(result)); });
    if (future.wait_for(std::chrono::seconds(60)) != std::future_status::ready)
        return HttpError{"the test has waited long enough"};
    return future.get();
}

/// The description, or "status N: the first 20 bytes of the body".
inline std::string outcome(const HttpResult& result)
{
    if (const auto* error = std::get_if<HttpError>(&result))
        return error->description;
    const auto& response = std::get<HttpResponse>(result);
    if (!response.isHttp)
        return "not HTTP";
    return "status " + std::to_string(response.status) + ": " +
           (response.hasBody ? response.body.substr(0, 20) : "no body");
}

} // namespace kestrovan::test
