#include "overlay/FullscreenOverlayManager.h"

#include "platform/MainQueue.h"
#include "platform/Workspace.h"

#include <utility>

namespace kestrovan {

FullscreenOverlayManager::FullscreenOverlayManager(const Platform& platform, MakeView makeView)
    : platform_(platform), makeView_(std::move(makeView))
{}

void FullscreenOverlayManager::showOverlay(AppState& appState)
{
    hideOverlay();
    for (const auto& screen : platform_.screens.screens())
        cover(screen, appState);
    // After this turn: each window took the keyboard as it came, and the main screen's is to have it.
    platform_.mainQueue.post(lifetime_.guard([this] { takeKeyboard(); }));
}

void FullscreenOverlayManager::cover(const Screen& screen, AppState& appState)
{
    FullscreenKeyWindow window(platform_.screens, screen, makeView_(appState, *this));
    window.makeKeyAndOrderFront();
    overlayWindows_.push_back(std::move(window));
}

void FullscreenOverlayManager::takeKeyboard()
{
    platform_.workspace.activate();
    if (!overlayWindows_.empty())
        overlayWindows_.front().makeKey();
}

void FullscreenOverlayManager::hideOverlay()
{
    for (auto& window : overlayWindows_)
        window.orderOut();
    overlayWindows_.clear();
}

} // namespace kestrovan
