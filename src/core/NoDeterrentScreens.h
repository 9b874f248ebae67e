#pragma once

#include "core/DeterrentScreens.h"

namespace kestrovan {

/// For where there are no displays to cover.
class NoDeterrentScreens final : public DeterrentScreens {
public:
    void showOverlay(AppState& /*appState*/) override {}
    void hideOverlay() override {}
};

} // namespace kestrovan
