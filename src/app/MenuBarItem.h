#pragma once

#include "app/MenuContent.h"
#include "platform/ChangeFollower.h"

#include <QMenu>
#include <QSystemTrayIcon>

#include <memory>

namespace kestrovan {

/// The program's item in the desktop's tray, with its menu: over StatusNotifierItem, or, where only that is there, in
/// an X11 tray. Main thread; needs a QApplication.
class MenuBarItem {
public:
    MenuBarItem(AppState& appState, MainQueue& mainQueue, const ShellActions& actions);

    /// Puts the icon into the tray. Only once there is a tray: Qt looks for one when the first icon is made, and never
    /// again.
    void show();
    bool isShown() const { return icon_ != nullptr; }

private:
    void makeMenu();
    void refresh();
    void refreshIcon();

    AppState& appState_;
    const ShellActions actions_;
    std::vector<MenuEntry> content_;
    QMenu menu_;
    std::unique_ptr<QSystemTrayIcon> icon_;
    std::string symbol_; ///< that the icon shows now
    ChangeFollower follower_;
};

} // namespace kestrovan
