#pragma once

#include "platform/Http.h"

#include <memory>
#include <mutex>
#include <thread>

namespace kestrovan {

class CurlExchange;

/// Fetches with libcurl, all exchanges on one thread of its own, which the first of them starts. Uses no proxy: a
/// proxy looks up the names where nobody can ask what they lead to. Destroying it ends what is under way at once,
/// without a word to those who wait.
class CurlHttp final : public Http {
public:
    /// `authorities` is a file of certificates (PEM) to trust instead of the system's.
    explicit CurlHttp(std::string authorities = {});
    ~CurlHttp() override;

    void get(HttpRequest request, std::function<void(HttpResult)> done) override;

private:
    using Exchanges = std::vector<std::unique_ptr<CurlExchange>>;

    bool start();
    void run();
    bool takeArrivals(Exchanges& exchanges);
    void concludeEnded(Exchanges& exchanges);
    bool add(CurlExchange& exchange);

    struct MultiDeleter {
        void operator()(void* multi) const;
    };

    const std::string authorities_;
    std::unique_ptr<void, MultiDeleter> multi_; ///< libcurl's; the thread alone uses it, others may only wake it
    std::thread thread_;
    std::mutex mutex_; ///< guards what follows
    Exchanges arrivals_;
    bool isStopping_ = false;
};

} // namespace kestrovan
