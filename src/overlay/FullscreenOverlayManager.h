#pragma once

#include "core/DeterrentScreens.h"
#include "overlay/FullscreenKeyWindow.h"
#include "platform/Lifetime.h"
#include "platform/Platform.h"
#include "platform/Published.h"

#include <functional>
#include <vector>

namespace kestrovan {

/// Covers every screen with the deterrent, all at once, and uncovers them all at once. It knows nothing of the guard's
/// states, and does not follow screens that come and go: the windows are those of the last time it was shown. Main
/// thread.
class FullscreenOverlayManager final : public Observable, public DeterrentScreens {
public:
    /// Makes the view of one screen. The screens that it is given are those to hide when its job is done.
    using MakeView = std::function<std::unique_ptr<HostedView>(AppState&, DeterrentScreens&)>;

    FullscreenOverlayManager(const Platform& platform, MakeView makeView);

    void showOverlay(AppState& appState) override;
    void hideOverlay() override;

private:
    void cover(const Screen& screen, AppState& appState);
    void takeKeyboard();

    const Platform platform_;
    const MakeView makeView_;
    std::vector<FullscreenKeyWindow> overlayWindows_;
    Lifetime lifetime_;
};

} // namespace kestrovan
