#include "platform/simulated/SimulatedHttp.h"

#include "platform/MainQueue.h"

#include <algorithm>

namespace kestrovan {

namespace {

HttpResult asSeenBy(const HttpRequest& request, HttpResult result)
{
    if (auto* response = std::get_if<HttpResponse>(&result)) {
        response->bodyBytes = std::max(response->bodyBytes, response->body.size());
        response->body.resize(std::min(response->body.size(), request.keptBytes));
    }
    return result;
}

} // namespace

void SimulatedHttp::get(HttpRequest request, std::function<void(HttpResult)> done)
{
    const bool isLate = after_ >= request.timeLimit;
    auto result = isLate ? HttpResult(HttpError{"The server did not answer in time."}) : asSeenBy(request, result_);
    mainQueue_.postAfter(isLate ? request.timeLimit : after_,
                         [result = std::move(result), done = std::move(done)] { done(result); });
    requests_.push_back(std::move(request));
}

void SimulatedHttp::answerWith(HttpResult result, std::chrono::milliseconds after)
{
    result_ = std::move(result);
    after_ = after;
}

void SimulatedHttp::answerWith(const std::string& body, std::chrono::milliseconds after)
{
    answerWith(HttpResponse{.status = 200, .body = body}, after);
}

} // namespace kestrovan
