#include "platform/linux/CurlHttp.h"

#include "platform/linux/CurlExchange.h"
#include "platform/linux/NamedThread.h"

#include <curl/curl.h>

#include <algorithm>
#include <csignal>
#include <utility>

namespace kestrovan {

namespace {

constexpr int idleMilliseconds = 60'000; // the thread is woken when there is something to do

// A signal for the program, or a server that hangs up in the middle of our writing, is not this thread's business.
void blockSignals()
{
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

} // namespace

void CurlHttp::MultiDeleter::operator()(void* multi) const
{
    curl_multi_cleanup(multi);
}

CurlHttp::CurlHttp(std::string authorities) : authorities_(std::move(authorities)) {}

CurlHttp::~CurlHttp()
{
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        isStopping_ = true;
    }
    curl_multi_wakeup(multi_.get());
    thread_.join();
}

void CurlHttp::get(HttpRequest request, std::function<void(HttpResult)> done)
{
    auto exchange = std::make_unique<CurlExchange>(std::move(request), std::move(done));
    if (!start()) {
        exchange->finish(HttpError{"The system has no means left for a connection."});
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        arrivals_.push_back(std::move(exchange));
    }
    curl_multi_wakeup(multi_.get());
}

// Makes what is not there yet; whatever the system refuses now is tried again for the next request.
bool CurlHttp::start()
{
    if (thread_.joinable())
        return true;
    if (!multi_) {
        curl_global_init(CURL_GLOBAL_DEFAULT);
        multi_.reset(curl_multi_init());
    }
    if (!multi_)
        return false;
    auto started = startNamedThread("com.kestrovan.network", 0, [this] { run(); });
    if (started)
        thread_ = *std::move(started);
    return thread_.joinable();
}

void CurlHttp::run()
{
    blockSignals();
    Exchanges exchanges;
    while (takeArrivals(exchanges)) {
        int running = 0;
        curl_multi_perform(multi_.get(), &running);
        concludeEnded(exchanges);
        curl_multi_poll(multi_.get(), nullptr, 0, idleMilliseconds, nullptr);
    }
    for (const auto& exchange : exchanges)
        curl_multi_remove_handle(multi_.get(), exchange->handle());
}

// False once the object is to end.
bool CurlHttp::takeArrivals(Exchanges& exchanges)
{
    Exchanges arrivals;
    {
        const std::lock_guard lock(mutex_);
        if (isStopping_)
            return false;
        arrivals.swap(arrivals_);
    }
    for (auto& exchange : arrivals)
        if (exchange->begin(authorities_) && add(*exchange))
            exchanges.push_back(std::move(exchange));
    return true;
}

bool CurlHttp::add(CurlExchange& exchange)
{
    const auto code = curl_multi_add_handle(multi_.get(), exchange.handle());
    if (code != CURLM_OK)
        exchange.finish(HttpError{curl_multi_strerror(code)});
    return code == CURLM_OK;
}

void CurlHttp::concludeEnded(Exchanges& exchanges)
{
    int queued = 0;
    while (const auto* message = curl_multi_info_read(multi_.get(), &queued)) {
        const auto code = message->data.result; // the message ends with the next call
        auto* const handle = message->easy_handle;
        curl_multi_remove_handle(multi_.get(), handle);
        const auto found = std::ranges::find(exchanges, handle, &CurlExchange::handle);
        if (found == exchanges.end())
            continue;
        if ((*found)->conclude(code) == CurlExchange::Next::anotherTransfer && add(**found))
            continue;
        exchanges.erase(found);
    }
}

} // namespace kestrovan
