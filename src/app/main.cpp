#include "app/KestrovanApp.h"
#include "app/SessionBusAddress.h"
#include "app/SingleInstance.h"
#include "l10n/Vendor.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QQuickWindow>
#include <QThreadPool>

#include <cstdlib>
#include <optional>

namespace {

using namespace kestrovan;

// Qt ends a program that finds no display by abort().
void reportMissingDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type != QtFatalMsg)
        return;
    StdoutDiagnostics().line("Kestrovan needs a graphical session: " + message.simplified().toStdString());
    std::_Exit(EXIT_FAILURE);
}

// Half the start-up time and a third of the memory of OpenGL in software, and no slower where there is a graphics card:
// little moves here. On Wayland it leaves holes in fullscreen windows.
void chooseRenderer()
{
    const bool isChosen = qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    if (!isChosen && !QGuiApplication::platformName().startsWith("wayland"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

void nameProgram()
{
    QCoreApplication::setApplicationName("Kestrovan");
    QGuiApplication::setDesktopFileName(vendor::applicationId);
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

// To find the machine's fonts takes as long as all else before the first frame; Qt keeps what any thread has found.
void lookForFonts(QThreadPool& thread)
{
    thread.start([] { QFontMetricsF(QFont()).height(); });
}

// The exit status if another Kestrovan runs already.
std::optional<int> yieldTo(SingleInstance::Role role, Diagnostics& diagnostics)
{
    switch (role) {
    case SingleInstance::Role::second:
        diagnostics.line("Kestrovan is running already; its window comes to the front");
        return EXIT_SUCCESS;
    case SingleInstance::Role::secondMute:
        diagnostics.line("Kestrovan is running already, but does not answer");
        return EXIT_FAILURE;
    case SingleInstance::Role::alone:
        diagnostics.line("No session bus: there is no tray, and a second start is not noticed");
        break;
    case SingleInstance::Role::unknown:
        diagnostics.line("The session bus does not answer: there is no tray, and a second start is not noticed");
        sessionBusAddress::giveUp(); // or Qt would wait for it
        break;
    case SingleInstance::Role::first:
        break;
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv)
{
    const auto launchToken = qgetenv("XDG_ACTIVATION_TOKEN").toStdString(); // before Qt takes it
    const auto startupId = qgetenv("DESKTOP_AUTOSTART_ID").toStdString();
    qunsetenv("DESKTOP_AUTOSTART_ID"); // it is not for the programs that we start
    sessionBusAddress::settle();
    LinuxGround ground; // before Qt, so that the bus answers while Qt starts
    KestrovanApp* running = nullptr;
    SingleInstance instance(ground.sessionBus, ground.mainQueue, launchToken, [&running](const std::string& token) {
        if (!token.empty())
            qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token)); // where Qt looks for it
        if (running)
            running->openWindow();
    });
    qInstallMessageHandler(reportMissingDisplay);
    QApplication application(argc, argv);
    qInstallMessageHandler(nullptr);
    nameProgram();
    chooseRenderer();

    if (const auto status = yieldTo(instance.role(), ground.diagnostics))
        return *status;
    QThreadPool thread; // ends before the application, without which there are no fonts
    lookForFonts(thread);
    KestrovanApp app(ground, startupId);
    running = &app;
    return app.run();
}
