#include "ui/AlarmTriggeredOverlay.h"

#include "parts/KeypadEntry.h"

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto strobeSweep = 300ms;
constexpr auto strobeFrame = 50ms;

} // namespace

AlarmTriggeredOverlay::AlarmTriggeredOverlay(AppState& appState, const Platform& platform)
    : GuardView(appState, platform.mainQueue), text_(platform.text),
      strobe_(platform.mainQueue, platform.clock, strobeSweep, strobeFrame, [this] { Q_EMIT flashed(); })
{}

QString AlarmTriggeredOverlay::reason() const
{
    const auto* reason = appState().guardState->alarmReason();
    return reason ? QString::fromStdString(localizedDescription(*reason, language())) : QString();
}

QString AlarmTriggeredOverlay::message() const
{
    if (isLocked())
        return text(L10nKey::pinLockoutMessage(appState().lockoutSecondsRemaining));
    return appState().pinError ? text(L10nKey::wrongPin) : QString();
}

void AlarmTriggeredOverlay::pressKey(const QString& key)
{
    if (!isLocked())
        pressKeypadKey(appState(), text_, key.toStdString());
}

void AlarmTriggeredOverlay::guardHasChanged()
{
    updateStrobe();
    GuardView::guardHasChanged();
}

void AlarmTriggeredOverlay::setAnimated(bool animated)
{
    isAnimated_ = animated;
    updateStrobe();
}

} // namespace kestrovan
