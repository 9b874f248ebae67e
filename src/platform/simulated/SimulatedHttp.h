#pragma once

#include "platform/Http.h"

#include <vector>

namespace kestrovan {

class MainQueue;

/// A network on which nobody answers until it is told otherwise. Answers arrive on turns of the main queue.
class SimulatedHttp final : public Http {
public:
    explicit SimulatedHttp(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

    void get(HttpRequest request, std::function<void(HttpResult)> done) override;

    /// What every request from now on gets, `after` the time that the server takes, unless that exceeds its limit.
    void answerWith(HttpResult result, std::chrono::milliseconds after = {});
    /// The same for a plain status 200.
    void answerWith(const std::string& body, std::chrono::milliseconds after = {});

    const std::vector<HttpRequest>& requests() const { return requests_; }

private:
    MainQueue& mainQueue_;
    HttpResult result_ = HttpError{"Could not connect to the server."};
    std::chrono::milliseconds after_{};
    std::vector<HttpRequest> requests_;
};

} // namespace kestrovan
