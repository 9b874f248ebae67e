#include "platform/linux/LogindPowerAssertions.h"

#include "platform/MainQueue.h"

#include <cerrno>
#include <utility>

namespace kestrovan {

namespace {

std::vector<std::string> lockParts(PowerAssertionType type)
{
    if (type == PowerAssertionType::preventUserIdleSystemSleep)
        return {"idle"};
    // "sleep" alone does not bind logind's own handling of lid and keys.
    return {"sleep", "shutdown", "handle-lid-switch", "handle-power-key", "handle-suspend-key", "handle-hibernate-key"};
}

} // namespace

LogindPowerAssertions::LogindPowerAssertions(BusConnection& systemBus, BusConnection& sessionBus, MainQueue& mainQueue)
    : systemBus_(systemBus), sessionBus_(sessionBus), mainQueue_(mainQueue)
{}

std::uint32_t LogindPowerAssertions::create(PowerAssertionType type, std::int32_t /*level*/, const std::string& name,
                                            Failure failed)
{
    const auto identifier = ++lastIdentifier_;
    const auto report = lifetime_.guard([this, identifier](int error) { fail(identifier, error); });
    const auto decided = [&mainQueue = mainQueue_, report](const LogindLock::Outcome& outcome) {
        if (!outcome.isHeld)
            mainQueue.post([report, error = outcome.error] { report(error); });
    };
    auto& assertion = assertions_[identifier];
    assertion.failed = std::move(failed);
    assertion.locks.push_back(takeLock({lockParts(type), "block", name}, decided));
    if (type == PowerAssertionType::preventSystemSleep)
        assertion.locks.push_back(takeLock({{"sleep", "shutdown"}, "delay", name}, nullptr));
    return identifier;
}

BusResident<LogindLock> LogindPowerAssertions::takeLock(LogindLock::Request request, Decided decided)
{
    return {systemBus_, [request = std::move(request), decided = std::move(decided)](Bus& bus) {
                return std::make_unique<LogindLock>(bus, request, decided);
            }};
}

void LogindPowerAssertions::fail(std::uint32_t identifier, int error)
{
    const auto found = assertions_.find(identifier);
    if (found == assertions_.end())
        return;
    if (const auto failed = std::exchange(found->second.failed, nullptr))
        failed(error != 0 ? error : EIO);
}

void LogindPowerAssertions::release(std::uint32_t identifier)
{
    assertions_.erase(identifier);
}

Subscription LogindPowerAssertions::beginActivity(std::uint64_t /*options*/, const std::string& reason)
{
    const auto inhibitor = std::make_shared<BusResident<SessionInhibitor>>(sessionBus_, [reason](Bus& bus) {
        return std::make_unique<SessionInhibitor>(bus, SessionWish::stayAwake, reason);
    });
    return Subscription([inhibitor] { inhibitor->reset(); });
}

} // namespace kestrovan
