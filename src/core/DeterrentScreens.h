#pragma once

namespace kestrovan {

class AppState;

/// The screens that cover every display while the guard wants them. Main thread.
class DeterrentScreens {
public:
    virtual ~DeterrentScreens() = default;

    /// Covers every display; calling it again while shown is allowed. The screens follow `appState`.
    virtual void showOverlay(AppState& appState) = 0;
    /// Harmless when none are shown.
    virtual void hideOverlay() = 0;
};

} // namespace kestrovan
