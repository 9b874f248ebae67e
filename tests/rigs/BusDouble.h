#pragma once

#include "rigs/PrivateBus.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>

namespace kestrovan::rigs {

/// A service of the test's own on a private bus: answers every call with what `answer` makes of it, on a thread of its
/// own, until its end.
class BusDouble {
public:
    /// Replies to the call (and returns what the reply returned), or returns a negative errno.
    using Answer = std::function<int(sd_bus_message* call)>;

    BusDouble(const PrivateBus& bus, const std::string& name, Answer answer)
        : bus_(bus.open()), answer_(std::move(answer))
    {
        sd_bus_add_filter(bus_, nullptr, receive, this);
        sd_bus_request_name(bus_, name.c_str(), 0);
        thread_ = std::thread([this] { run(); });
    }
    BusDouble(const BusDouble&) = delete;
    BusDouble& operator=(const BusDouble&) = delete;
    ~BusDouble()
    {
        isEnding_ = true;
        thread_.join();
        sd_bus_flush_close_unref(bus_);
    }

    /// Runs `task` with the connection, between two of the answers.
    void perform(std::function<void(sd_bus* bus)> task)
    {
        const std::scoped_lock turn(mutex_);
        task(bus_);
        sd_bus_flush(bus_);
    }

private:
    static int receive(sd_bus_message* message, void* self, sd_bus_error* error)
    {
        std::uint8_t type = 0;
        sd_bus_message_get_type(message, &type);
        if (type != SD_BUS_MESSAGE_METHOD_CALL)
            return 0;
        const int result = static_cast<BusDouble*>(self)->answer_(message);
        if (result < 0)
            sd_bus_error_set_errno(error, result);
        return result < 0 ? result : 1;
    }
    void run()
    {
        while (!isEnding_) {
            {
                const std::scoped_lock turn(mutex_);
                while (sd_bus_process(bus_, nullptr) > 0) {
                }
            }
            sd_bus_wait(bus_, 5000);
        }
    }

    sd_bus* bus_;
    Answer answer_;
    std::mutex mutex_;
    std::atomic<bool> isEnding_ = false;
    std::thread thread_;
};

} // namespace kestrovan::rigs
