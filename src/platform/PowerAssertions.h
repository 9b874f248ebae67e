#pragma once

#include "platform/Observable.h"

#include <cstdint>
#include <string>

namespace kestrovan {

enum class PowerAssertionType { preventSystemSleep, preventUserIdleSystemSleep };

/// Named holds that keep the machine awake until they are released. Main thread; every call returns at once, and the
/// hold itself is taken in the background.
class PowerAssertions {
public:
    using Failure = std::function<void(std::int32_t code)>;

    virtual ~PowerAssertions() = default;

    /// Takes a hold and returns its identifier, never 0. If it cannot be had, `failed` is called, once, on the main
    /// thread with the system's error code (not 0); should it become possible before the release, it is taken then.
    virtual std::uint32_t create(PowerAssertionType type, std::int32_t level, const std::string& name,
                                 Failure failed) = 0;
    virtual void release(std::uint32_t identifier) = 0;

    /// Declares an activity of this process to the user's session; the end of the subscription ends it.
    [[nodiscard]] virtual Subscription beginActivity(std::uint64_t options, const std::string& reason) = 0;
};

} // namespace kestrovan
