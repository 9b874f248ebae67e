#include "ui/Announcement.h"

#include <utility>

namespace kestrovan {

Announcement::Announcement(AppState& appState, MainQueue& mainQueue)
    : GuardView(appState, mainQueue), lastSituation_(situation()), lastFailures_(appState.failedPinAttempts)
{}

Announcement::Situation Announcement::situation() const
{
    const GuardState& state = appState().guardState;
    const auto* reason = state.alarmReason();
    return {state.isArming(), state.isArmed(), reason ? std::optional(*reason) : std::nullopt};
}

void Announcement::guardHasChanged()
{
    const auto now = situation();
    const std::int64_t failures = appState().failedPinAttempts;
    const bool hasFailedAgain = failures > std::exchange(lastFailures_, failures);
    if (std::exchange(lastSituation_, now) != now)
        announce(QString::fromStdString(appState().guardState->localizedTitle(language())));
    else if (hasFailedAgain)
        announce(pinComplaint());
}

QString Announcement::pinComplaint() const
{
    const std::int64_t locked = appState().lockoutSecondsRemaining;
    return text(locked > 0 ? L10nKey::pinLockoutMessage(locked) : L10nKey(L10nKey::wrongPin));
}

void Announcement::announce(const QString& words)
{
    words_ = words;
    Q_EMIT due();
}

} // namespace kestrovan
