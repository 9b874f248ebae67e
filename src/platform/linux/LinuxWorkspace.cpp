#include "platform/linux/LinuxWorkspace.h"

#include "platform/Diagnostics.h"
#include "platform/MainQueue.h"
#include "platform/linux/BusConnection.h"
#include "platform/linux/RaiseWindow.h"

#include <QGuiApplication>
#include <QProcess>
#include <QUrl>
#include <QWindow>

#include <systemd/sd-bus.h>

namespace kestrovan {

namespace {

bool openDetached(const std::string& address)
{
    QProcess opener;
    opener.setProgram("xdg-open");
    opener.setArguments({QString::fromStdString(address)});
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    return opener.startDetached();
}

int appendFolder(sd_bus_message* call, const std::string& address)
{
    const int result = sd_bus_message_append(call, "as", 1, address.c_str());
    return result < 0 ? result : sd_bus_message_append(call, "s", "");
}

} // namespace

LinuxWorkspace::LinuxWorkspace(PulseConnection& sound, BusConnection& sessionBus, MainQueue& mainQueue,
                               Diagnostics& diagnostics)
    : sessionBus_(sessionBus), mainQueue_(mainQueue), diagnostics_(diagnostics), alertSound_(sound, diagnostics)
{}

void LinuxWorkspace::openAddress(const std::string& address)
{
    if (!openDetached(address))
        diagnostics_.line("Failed to open " + address + ": xdg-open cannot be started");
}

void LinuxWorkspace::revealFolder(const std::filesystem::path& folder)
{
    const auto address = QUrl::fromLocalFile(QString::fromStdString(folder.string())).toEncoded().toStdString();
    const auto openInstead = lifetime_.guard([this, address] { openAddress(address); });
    sessionBus_.post([&mainQueue = mainQueue_, address, openInstead](Bus& bus) {
        const auto answer = [&mainQueue, openInstead](const BusReply& reply) {
            if (reply.error != 0)
                mainQueue.post(openInstead);
        };
        bus.call(
            {"org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1",
             "ShowFolders"},
            [&address](sd_bus_message* call) { return appendFolder(call, address); }, answer);
    });
}

void LinuxWorkspace::activate()
{
    bool isAnythingShown = false;
    QWindow* mainWindow = nullptr;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->objectName() == mainWindowName)
            mainWindow = window;
        if (!window->isVisible() || window->type() == Qt::Popup || window->type() == Qt::ToolTip)
            continue;
        isAnythingShown = true;
        raiseWindow(*window);
    }
    if (isAnythingShown || !mainWindow)
        return;
    mainWindow->show();
    raiseWindow(*mainWindow);
}

} // namespace kestrovan
