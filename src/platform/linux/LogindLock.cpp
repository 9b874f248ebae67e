#include "platform/linux/LogindLock.h"

#include <fcntl.h>
#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr const char* login1 = "org.freedesktop.login1";
// A lock that is granted to somebody whose patience is over is given back at once; asked for again and again, each time
// just too late, it is never held, and wears logind out. So the patience has no end that matters, only a first report.
constexpr std::chrono::minutes lockPatience{2};
constexpr auto reportAfter = 5000ms;
constexpr auto firstRetryPause = 1000ms;
constexpr auto longestRetryPause = 8000ms;

// EINVAL is how a logind refuses a part that it does not know yet.
bool isRefusal(int error)
{
    return error == EACCES || error == EPERM || error == EINVAL;
}

// The bus knows of no service of that name, or could not start it.
bool isAbsence(int error)
{
    return error == EHOSTUNREACH || error == ENXIO || error == ENOENT;
}

std::string joined(const std::vector<std::string>& parts)
{
    std::string all;
    for (const auto& part : parts)
        all += (all.empty() ? "" : ":") + part;
    return all;
}

} // namespace

LogindLock::LogindLock(Bus& bus, Request request, std::function<void(const Outcome&)> decided)
    : bus_(bus), request_(std::move(request)), decided_(std::move(decided)),
      link_(bus.onLink([this](Bus::Link) { considerLink(); })),
      owner_(bus.onName(login1, [this](bool isOwned) { considerOwner(isOwned); }))
{
    considerLink();
}

void LogindLock::considerLink()
{
    knowsOwner_ = false;
    // A lock outlives the bus that it was taken over: logind watches its descriptor.
    if (bus_.link() == Bus::Link::down && held_.empty())
        decide({.isHeld = false, .refused = {}, .error = bus_.linkError(), .errorText = "no system bus"});
}

void LogindLock::considerOwner(bool isOwned)
{
    // A logind that does not run may be one that runs when it is called; one that has just ended comes back by itself.
    const bool isNews = !std::exchange(knowsOwner_, true);
    if (isOwned || isNews)
        take();
}

void LogindLock::take()
{
    current_ = std::make_shared<Attempt>();
    askFor(current_, request_.parts);
    bus_.after(reportAfter, lifetime_.guard([this, attempt = current_] { reportDelay(attempt); }));
}

void LogindLock::reportDelay(const Ask& attempt)
{
    if (attempt == current_ && attempt->awaited > 0)
        decide({.isHeld = !held_.empty(), .refused = {}, .error = ETIMEDOUT, .errorText = "no answer yet"});
}

void LogindLock::askFor(const Ask& attempt, const std::vector<std::string>& parts)
{
    const auto append = [this, &parts](sd_bus_message* message) {
        return sd_bus_message_append(message, "ssss", joined(parts).c_str(), "Kestrovan", request_.why.c_str(),
                                     request_.mode.c_str());
    };
    ++attempt->awaited;
    Bus::Call call{login1, "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "Inhibit"};
    call.patience = lockPatience;
    bus_.call(call, append,
              lifetime_.guard([this, attempt, parts](const BusReply& reply) { receive(attempt, parts, reply); }));
}

void LogindLock::receive(const Ask& attempt, const std::vector<std::string>& parts, const BusReply& reply)
{
    if (attempt != current_)
        return;
    int lock = -1;
    Descriptor granted;
    // The message owns its descriptor and closes it with itself.
    if (reply.message && sd_bus_message_read(reply.message, "h", &lock) > 0)
        granted = Descriptor(::fcntl(lock, F_DUPFD_CLOEXEC, 3));
    if (granted)
        attempt->granted.push_back(std::move(granted));
    else if (isRefusal(reply.error) && parts.size() > 1)
        for (const auto& part : parts)
            askFor(attempt, {part});
    else
        noteFailure(*attempt, parts.front(), reply);
    if (--attempt->awaited == 0)
        conclude(attempt);
}

void LogindLock::noteFailure(Attempt& attempt, const std::string& part, const BusReply& reply)
{
    attempt.outcome.error = reply.error;
    attempt.outcome.errorText = reply.errorText;
    if (isRefusal(reply.error))
        attempt.outcome.refused.push_back(part);
    else if (!isAbsence(reply.error))
        attempt.isUnanswered = true;
}

void LogindLock::conclude(const Ask& attempt)
{
    if (attempt->isUnanswered) {
        pause_ = std::clamp(pause_ * 2, std::chrono::milliseconds(firstRetryPause),
                            std::chrono::milliseconds(longestRetryPause));
        bus_.after(pause_, lifetime_.guard([this, attempt] {
            if (attempt == current_ && bus_.link() == Bus::Link::up)
                take();
        }));
    } else {
        pause_ = 0ms;
    }
    if (!attempt->granted.empty())
        held_ = std::move(attempt->granted);
    attempt->outcome.isHeld = !held_.empty();
    decide(attempt->outcome);
}

void LogindLock::decide(const Outcome& outcome)
{
    if (decided_)
        decided_(outcome);
}

} // namespace kestrovan
