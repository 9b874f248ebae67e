#pragma once

#include "core/AppState.h"
#include "ui/ShellActions.h"

#include <vector>

namespace kestrovan {

/// One line of the tray's menu.
struct MenuEntry {
    enum class Kind { headline, caption, footnote, separator, button };

    Kind kind = Kind::separator;
    std::string text{};
    bool isShown = true;
    bool isEnabled = true; ///< of a button; the texts are never pressed
    Task press{};
};

/// The menu as the guard's state has it now: always the same lines in the same order, some of them not shown.
std::vector<MenuEntry> menuContent(AppState& appState, const ShellActions& actions);

/// The symbol that stands for the state in the tray.
std::string menuBarSymbol(const GuardState& state);

} // namespace kestrovan
