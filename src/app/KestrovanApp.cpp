#include "app/KestrovanApp.h"

#include "l10n/Vendor.h"
#include "platform/linux/DarkFrame.h"

#include <QApplication>
#include <QEvent>
#include <QIcon>
#include <QSessionManager>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// A panel that is restarted is back within it; after it, a window that lives in the tray must be found elsewhere.
constexpr auto patienceWithTray = 5000ms;

// A program that starts shows its window first; whatever else it draws can wait that long.
constexpr auto untilDrawn = 300ms;

} // namespace

KestrovanApp::KestrovanApp(LinuxGround& ground, std::string startupId)
    : ground_(ground), platform_(ground, [this](auto answer) { cameraQuestion_.ask(std::move(answer)); }),
      hostingViews_(platform_.platform()),
      screens_(platform_.platform(), [this](auto& guard, auto& screens) { return hostingViews_.make(guard, screens); }),
      guard_(platform_.platform(), screens_), delegate_(platform_.platform().workspace),
      contentView_(guard_.appState, platform_.platform(), actions()),
      window_(hostingViews_.engine(), contentView_, [this] { closeWindow(); }),
      menuBarItem_(guard_.appState, ground.mainQueue, actions()), quitSignals_([this] { quit(); })
{
    cameraQuestion_.follow(guard_.appState, ground.mainQueue);
    qApp->installEventFilter(this);
    joinSession(std::move(startupId));
}

int KestrovanApp::run()
{
    if (!window_.isLoaded()) {
        ground_.diagnostics.line("Failed to load the window; Kestrovan cannot run without it");
        return EXIT_FAILURE;
    }
    askForDarkFrame(window_);
    window_.show();
    delegate_.sharedAppState = &guard_.appState;
    ground_.mainQueue.postAfter(untilDrawn, lifetime_.guard([this] { completeStart(); }));
    return QApplication::exec();
}

void KestrovanApp::completeStart()
{
    QGuiApplication::setWindowIcon(QIcon(":/qt-project.org/imports/Kestrovan/Parts/AppIcon.svg"));
    hostingViews_.load();
    trayWatch_.emplace(ground_.sessionBus, ground_.mainQueue, [this](bool isThere) { trayChanged(isThere); });
}

ShellActions KestrovanApp::actions()
{
    return {.openWindow = [this] { openWindow(); },
            .openWebsite = [this] { platform_.platform().workspace.openAddress(vendor::websiteAddress); },
            .quit = [this] { quit(); },
            .previewDeterrent = [this] { screens_.showOverlay(guard_.appState); }};
}

void KestrovanApp::openWindow()
{
    window_.show();
    platform_.platform().workspace.activate();
}

void KestrovanApp::quit()
{
    if (delegate_.applicationShouldTerminate() == AppDelegate::TerminateReply::terminateNow)
        QCoreApplication::exit();
}

void KestrovanApp::closeWindow()
{
    if (menuBarItem_.isShown() && trayWatch_->isThere())
        window_.hide();
    else
        quit();
}

// The desktop's own ways to end a program (its session's end among them) would close the windows, one by one.
bool KestrovanApp::eventFilter(QObject* receiver, QEvent* event)
{
    if (receiver != qApp || event->type() != QEvent::Quit)
        return false;
    quit();
    return true;
}

// Qt speaks to the session's manager on X11 only. One that heard of us by both ways would ask, and beep, twice.
void KestrovanApp::joinSession(std::string startupId)
{
    if (QGuiApplication::platformName() == "xcb" && !qEnvironmentVariableIsEmpty("SESSION_MANAGER")) {
        connect(qApp, &QGuiApplication::commitDataRequest, this, &KestrovanApp::endSession, Qt::DirectConnection);
        return;
    }
    sessionClient_.emplace(
        ground_.sessionBus, ground_.mainQueue, ground_.diagnostics,
        SessionClient::Identity{.applicationId = vendor::applicationId, .startupId = std::move(startupId)},
        [this] { return sessionRefusal(); }, [] { QCoreApplication::exit(); });
}

std::optional<std::string> KestrovanApp::sessionRefusal()
{
    if (delegate_.applicationShouldTerminate() == AppDelegate::TerminateReply::terminateNow)
        return std::nullopt;
    return guard_.appState.guardState.get().localizedTitle(guard_.appState.currentLanguage);
}

void KestrovanApp::endSession(QSessionManager& manager)
{
    if (delegate_.applicationShouldTerminate() == AppDelegate::TerminateReply::terminateNow)
        return;
    manager.allowsInteraction(); // without which a manager takes no refusal
    manager.cancel();
}

void KestrovanApp::trayChanged(bool isThere)
{
    if (isThere && !menuBarItem_.isShown())
        menuBarItem_.show();
    if (isThere)
        return;
    ground_.mainQueue.postAfter(patienceWithTray, lifetime_.guard([this] {
        if (!window_.isVisible() && !trayWatch_->isThere())
            window_.show();
    }));
}

} // namespace kestrovan
