#include "app/SessionBusAddress.h"

#include <QByteArray>
#include <QtGlobal>

#include <filesystem>

namespace kestrovan::sessionBusAddress {

namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";

} // namespace

void settle()
{
    if (!qEnvironmentVariableIsEmpty(variable))
        return;
    const auto socket = qgetenv("XDG_RUNTIME_DIR") + "/bus";
    std::error_code ignored;
    if (std::filesystem::is_socket(socket.toStdString(), ignored))
        qputenv(variable, "unix:path=" + socket);
    else
        giveUp();
}

void giveUp()
{
    qputenv(variable, "disabled:"); // no transport is called so
}

} // namespace kestrovan::sessionBusAddress
