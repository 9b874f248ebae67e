#pragma once

#include "app/AppDelegate.h"
#include "app/CameraQuestion.h"
#include "app/LinuxPlatform.h"
#include "app/MainWindow.h"
#include "app/MenuBarItem.h"
#include "app/QuitSignals.h"
#include "core/Guard.h"
#include "overlay/FullscreenOverlayManager.h"
#include "overlay/HostingView.h"
#include "platform/linux/SessionClient.h"
#include "platform/linux/TrayWatch.h"
#include "ui/ContentView.h"

#include <QObject>

class QSessionManager;

namespace kestrovan {

/// The program: makes everything in the right order, joins everything, decides nothing. Needs the QApplication. Main
/// thread.
class KestrovanApp final : public QObject {
public:
    /// `startupId` is what the session's manager has started the program as (see SessionClient).
    KestrovanApp(LinuxGround& ground, std::string startupId);

    /// Shows the window and runs until somebody quits. Returns the program's exit status.
    int run();

    /// Brings the program and its window to the front.
    void openWindow();

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    ShellActions actions();
    void quit();
    void closeWindow();
    void joinSession(std::string startupId);
    void endSession(QSessionManager& manager);
    std::optional<std::string> sessionRefusal();
    void completeStart();
    void trayChanged(bool isThere);

    LinuxGround& ground_;
    CameraQuestion cameraQuestion_;
    LinuxPlatform platform_;
    HostingViews hostingViews_;
    FullscreenOverlayManager screens_;
    Guard guard_;
    AppDelegate delegate_;
    ContentView contentView_;
    MainWindow window_;
    MenuBarItem menuBarItem_;
    std::optional<TrayWatch> trayWatch_; ///< from the end of the start on
    QuitSignals quitSignals_;
    std::optional<SessionClient> sessionClient_; ///< where Qt is none
    Lifetime lifetime_;
};

} // namespace kestrovan
