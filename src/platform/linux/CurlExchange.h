#pragma once

#include "platform/Http.h"

#include <curl/curl.h>

#include <array>
#include <memory>

namespace kestrovan {

/// One GET with the transfers that it takes: the first, and one for each redirect. Its time runs from its making; all
/// else happens on the network thread.
class CurlExchange {
public:
    enum class Next { anotherTransfer, nothing };

    CurlExchange(HttpRequest request, std::function<void(HttpResult)> done);

    CURL* handle() const { return easy_.get(); }

    /// Prepares the first transfer. False if that failed, and `done` knows.
    bool begin(const std::string& authorities);

    /// The transfer is over: either the next one is prepared, or `done` knows.
    Next conclude(CURLcode code);

    void finish(HttpResult result) { done_(std::move(result)); }

private:
    using Steady = std::chrono::steady_clock;

    template <class Value>
    void set(CURLoption option, Value value);
    void setRules(const std::string& authorities);
    void setAuthorities(const std::string& authorities);
    void setCallbacks();
    void setHeaders();
    Next prepareTransfer();
    Next follow(const std::string& location);
    Next end(HttpResult result);
    std::string describe(CURLcode code) const;
    bool isAnsweredOtherwise(CURLcode code) const;

    std::size_t receiveBody(const char* bytes, std::size_t count);
    std::size_t receiveHeader(std::size_t count);
    curl_socket_t openSocket(const curl_sockaddr& address);

    struct EasyDeleter {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
    };
    struct ListDeleter {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    HttpRequest request_;
    std::function<void(HttpResult)> done_;
    Steady::time_point deadline_;
    std::unique_ptr<curl_slist, ListDeleter> headers_;
    std::array<char, CURL_ERROR_SIZE> errorText_{};
    std::string body_;
    std::size_t bodyBytes_ = 0;
    std::size_t headerBytes_ = 0; ///< of all transfers
    int redirects_ = 0;
    bool wasRefused_ = false;                 ///< an address that may not be connected to came up in this transfer
    std::unique_ptr<CURL, EasyDeleter> easy_; ///< last: the callbacks use the rest until it is gone
};

} // namespace kestrovan
