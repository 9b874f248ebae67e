#include "app/AppDelegate.h"

#include "core/AppState.h"

namespace kestrovan {

AppDelegate::TerminateReply AppDelegate::applicationShouldTerminate()
{
    if (!sharedAppState)
        return TerminateReply::terminateNow;
    const auto& state = sharedAppState->guardState.get();
    if (!state.isAlarmTriggered() && !(state.isArmed() && sharedAppState->isPinEnabled))
        return TerminateReply::terminateNow;
    workspace_.beep();
    return TerminateReply::terminateCancel;
}

} // namespace kestrovan
