#include "ui/ContentView.h"

namespace kestrovan {

ContentView::ContentView(AppState& appState, const Platform& platform, const ShellActions& actions)
    : GuardView(appState, platform.mainQueue), actions_(actions), sheets_(appState.updateManager),
      header_(appState, platform.mainQueue, sheets_), sensors_(appState, platform.mainQueue), card_(appState, platform),
      footer_(appState, platform.mainQueue, sheets_, actions_), settings_(appState, platform, sheets_, actions_),
      about_(appState, platform.mainQueue, sheets_, actions_), gallery_(appState, platform, sheets_),
      update_(appState, platform.mainQueue, sheets_), alarm_(appState, platform),
      announcement_(appState, platform.mainQueue),
      sheetsFollower_(sheets_, platform.mainQueue, [this] { guardHasChanged(); }), motion_(platform.motion),
      motionFollower_(platform.motion, platform.mainQueue, [this] { animate(); })
{}

void ContentView::setVisible(bool visible)
{
    isVisible_ = visible;
    animate();
}

// The alarm is there to be noticed, and flashes whatever the user likes: less than twice a second, which is below what
// is held to be dangerous.
void ContentView::animate()
{
    const bool mayMove = isVisible_ && !motion_.isReduced;
    card_.setAnimated(mayMove);
    update_.setAnimated(mayMove);
    alarm_.setAnimated(isVisible_);
}

} // namespace kestrovan
