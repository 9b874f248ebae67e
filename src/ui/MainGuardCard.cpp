#include "ui/MainGuardCard.h"

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto breathSweep = 1500ms;
constexpr auto breathFrame = 40ms;

} // namespace

MainGuardCard::MainGuardCard(AppState& appState, const Platform& platform)
    : GuardView(appState, platform.mainQueue),
      breath_(platform.mainQueue, platform.clock, breathSweep, breathFrame, [this] { Q_EMIT breathed(); })
{}

double MainGuardCard::ringFraction() const
{
    const auto whole = static_cast<double>(appState().armDelayDuration.get());
    return static_cast<double>(state().secondsLeft()) / whole;
}

void MainGuardCard::guardHasChanged()
{
    updateBreath();
    GuardView::guardHasChanged();
}

void MainGuardCard::setAnimated(bool animated)
{
    isAnimated_ = animated;
    updateBreath();
}

} // namespace kestrovan
