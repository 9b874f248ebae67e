#pragma once

#include "core/AlarmReason.h"

#include <cstdint>
#include <variant>

namespace kestrovan {

/// What the guard is doing. A value; two are equal when they are the same state with the same payload.
class GuardState {
public:
    static GuardState disarmed() { return GuardState(Disarmed{}); }
    static GuardState arming(std::int64_t secondsLeft) { return GuardState(Arming{secondsLeft}); }
    static GuardState armed() { return GuardState(Armed{}); }
    static GuardState alarmTriggered(AlarmReason reason) { return GuardState(reason); }

    bool isDisarmed() const { return std::holds_alternative<Disarmed>(state_); }
    bool isArming() const { return std::holds_alternative<Arming>(state_); }
    bool isArmed() const { return std::holds_alternative<Armed>(state_); }
    bool isAlarmTriggered() const { return std::holds_alternative<AlarmReason>(state_); }

    /// Of the countdown; 0 outside it.
    std::int64_t secondsLeft() const;
    /// None unless the alarm sounds; the pointer lives as long as this value.
    const AlarmReason* alarmReason() const { return std::get_if<AlarmReason>(&state_); }

    /// The one-line status.
    std::string localizedTitle(AppLanguage lang) const;

    bool operator==(const GuardState&) const = default;

private:
    struct Disarmed {
        bool operator==(const Disarmed&) const = default;
    };
    struct Arming {
        std::int64_t secondsLeft;
        bool operator==(const Arming&) const = default;
    };
    struct Armed {
        bool operator==(const Armed&) const = default;
    };
    using State = std::variant<Disarmed, Arming, Armed, AlarmReason>;

    explicit GuardState(State state) : state_(state) {}

    State state_;
};

} // namespace kestrovan
