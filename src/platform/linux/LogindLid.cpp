#include "platform/linux/LogindLid.h"

#include <poll.h>
#include <systemd/sd-bus.h>

#include <thread>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto answerLimit = std::chrono::microseconds(700ms);
constexpr auto reconnectPause = 2000ms;

// An idle machine answers within a tenth of a millisecond: to sleep meanwhile costs more than to look again, and a
// wake-up of the processor for every look at the lid.
constexpr auto wakefulPatience = std::chrono::microseconds(200);

} // namespace

LogindLid::~LogindLid()
{
    disconnect();
}

std::optional<bool> LogindLid::ask(std::chrono::milliseconds patience)
{
    if (const std::unique_lock lock(mutex_, std::try_to_lock); lock) {
        if (!bus_ && Clock::now() >= nextAttempt_)
            connect();
        if (bus_)
            takeAnswer();
        if (bus_ && !isAwaited_) {
            askAgain();
            waitForAnswer(patience);
        }
    }
    const auto lid = lid_.load();
    return lid == Lid::unknown ? std::nullopt : std::optional(lid == Lid::closed);
}

void LogindLid::connect()
{
    nextAttempt_ = Clock::now() + reconnectPause;
    if (sd_bus_open_system(&bus_) < 0)
        bus_ = nullptr;
}

void LogindLid::takeAnswer()
{
    int result = 1;
    while (result > 0)
        result = sd_bus_process(bus_, nullptr);
    if (result < 0)
        disconnect();
}

void LogindLid::askAgain()
{
    sd_bus_message* call = nullptr;
    int result = sd_bus_message_new_method_call(bus_, &call, "org.freedesktop.login1", "/org/freedesktop/login1",
                                                "org.freedesktop.DBus.Properties", "Get");
    if (result >= 0)
        result = sd_bus_message_append(call, "ss", "org.freedesktop.login1.Manager", "LidClosed");
    if (result >= 0)
        result = sd_bus_message_set_auto_start(call, 0);
    const auto deliver = [](sd_bus_message* reply, void* self, sd_bus_error*) {
        static_cast<LogindLid*>(self)->receive(reply);
        return 0;
    };
    if (result >= 0)
        result = sd_bus_call_async(bus_, nullptr, call, deliver, this, static_cast<std::uint64_t>(answerLimit.count()));
    sd_bus_message_unref(call);
    isAwaited_ = result >= 0;
    if (result < 0)
        disconnect();
}

void LogindLid::waitForAnswer(std::chrono::milliseconds patience)
{
    const auto start = Clock::now();
    auto now = start;
    while (bus_ && isAwaited_ && now < start + patience) {
        if (now < start + wakefulPatience) {
            std::this_thread::yield();
        } else {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(start + patience - now);
            pollfd wait{sd_bus_get_fd(bus_), static_cast<short>(sd_bus_get_events(bus_)), 0};
            ::poll(&wait, 1, static_cast<int>(left.count()));
        }
        takeAnswer();
        now = Clock::now();
    }
}

void LogindLid::receive(sd_bus_message* reply)
{
    int closed = 0;
    if (sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read(reply, "v", "b", &closed) > 0)
        lid_ = closed != 0 ? Lid::closed : Lid::open;
    isAwaited_ = false;
}

void LogindLid::disconnect()
{
    bus_ = sd_bus_close_unref(bus_);
    isAwaited_ = false;
}

} // namespace kestrovan
