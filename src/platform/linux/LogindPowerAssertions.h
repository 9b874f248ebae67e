#pragma once

#include "platform/Lifetime.h"
#include "platform/PowerAssertions.h"
#include "platform/linux/BusResident.h"
#include "platform/linux/LogindLock.h"
#include "platform/linux/SessionInhibitor.h"

#include <map>

namespace kestrovan {

class MainQueue;

/// Assertions as block locks of systemd-logind, activities as wishes to the user's session (docs/porting.md).
///
/// What an assertion asks of logind beyond what the user may hold is left out of it; a code of failure is an errno and
/// means that nothing at all of it could be had so far. It is taken again whenever logind returns. The one against any
/// sleep comes with a delay lock, as a block lock may not bind a sleep that this same user asks for.
class LogindPowerAssertions final : public PowerAssertions {
public:
    /// The connections outlive this object and its subscriptions.
    LogindPowerAssertions(BusConnection& systemBus, BusConnection& sessionBus, MainQueue& mainQueue);

    std::uint32_t create(PowerAssertionType type, std::int32_t level, const std::string& name, Failure failed) override;
    void release(std::uint32_t identifier) override;
    [[nodiscard]] Subscription beginActivity(std::uint64_t options, const std::string& reason) override;

private:
    struct Assertion {
        std::vector<BusResident<LogindLock>> locks;
        Failure failed; ///< none any more once it has been called
    };
    using Decided = std::function<void(const LogindLock::Outcome&)>;

    BusResident<LogindLock> takeLock(LogindLock::Request request, Decided decided);
    void fail(std::uint32_t identifier, int error);

    BusConnection& systemBus_;
    BusConnection& sessionBus_;
    MainQueue& mainQueue_;
    std::uint32_t lastIdentifier_ = 0;
    std::map<std::uint32_t, Assertion> assertions_;
    Lifetime lifetime_;
};

} // namespace kestrovan
