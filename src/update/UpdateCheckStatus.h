#pragma once

#include "update/AppUpdateInfo.h"

#include <variant>

namespace kestrovan {

/// Where a check for updates stands. A value; two are equal when they are the same state with the same payload.
class UpdateCheckStatus {
public:
    static UpdateCheckStatus updateAvailable(AppUpdateInfo info) { return UpdateCheckStatus(std::move(info)); }
    static UpdateCheckStatus error(std::string message) { return UpdateCheckStatus(std::move(message)); }
    static UpdateCheckStatus idle() { return UpdateCheckStatus(Plain::idle); }
    static UpdateCheckStatus checking() { return UpdateCheckStatus(Plain::checking); }
    static UpdateCheckStatus upToDate() { return UpdateCheckStatus(Plain::upToDate); }

    bool isIdle() const { return is(Plain::idle); }
    bool isChecking() const { return is(Plain::checking); }
    bool isUpToDate() const { return is(Plain::upToDate); }

    /// None unless there is one; the pointer lives as long as this value.
    const AppUpdateInfo* availableUpdate() const { return std::get_if<AppUpdateInfo>(&status_); }
    /// None unless the check failed; the pointer lives as long as this value.
    const std::string* errorMessage() const { return std::get_if<std::string>(&status_); }

    bool operator==(const UpdateCheckStatus&) const = default;

private:
    enum class Plain { idle, checking, upToDate };
    using Status = std::variant<Plain, AppUpdateInfo, std::string>;

    explicit UpdateCheckStatus(Status status) : status_(std::move(status)) {}
    bool is(Plain plain) const
    {
        const auto* own = std::get_if<Plain>(&status_);
        return own && *own == plain;
    }

    Status status_;
};

} // namespace kestrovan
