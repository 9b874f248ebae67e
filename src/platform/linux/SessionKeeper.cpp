#include "platform/linux/SessionKeeper.h"

#include "platform/Diagnostics.h"

#include <QGuiApplication>
#include <QSessionManager>

#include <utility>

namespace kestrovan {

namespace {

constexpr const char* alarmWhy = "The alarm sounds";

} // namespace

SessionKeeper::SessionKeeper(BusConnection& systemBus, BusConnection& sessionBus, Diagnostics& diagnostics)
    : systemBus_(systemBus), sessionBus_(sessionBus), diagnostics_(diagnostics)
{}

SessionKeeper::~SessionKeeper()
{
    hold(false);
}

void SessionKeeper::hold(bool wanted)
{
    if (wanted == static_cast<bool>(block_))
        return;
    if (!wanted) {
        x11Refusal_.reset();
        block_.reset();
        delay_.reset();
        sessionManager_.reset();
        return;
    }
    // Not handle-reboot-key: with the guard's other locks that would be every kind there is, and the logind of systemd
    // 252 writes the list of them all one byte beyond its buffer, and dies of it.
    block_ = lock("block", {"shutdown", "handle-power-key"});
    delay_ = lock("delay", {"shutdown"});
    sessionManager_ = BusResident<SessionInhibitor>(sessionBus_, [](Bus& bus) {
        return std::make_unique<SessionInhibitor>(bus, SessionWish::stayLoggedIn, alarmWhy);
    });
    // Direct: the session manager's question must be answered before the signal returns.
    x11Refusal_ = std::make_unique<QObject>();
    QObject::connect(
        qGuiApp, &QGuiApplication::commitDataRequest, x11Refusal_.get(),
        [](QSessionManager& manager) { manager.cancel(); }, Qt::DirectConnection);
}

BusResident<LogindLock> SessionKeeper::lock(const char* mode, std::vector<std::string> parts)
{
    const auto decided = [&diagnostics = diagnostics_, said = hasComplained_](const LogindLock::Outcome& outcome) {
        const bool isWhole = outcome.isHeld && outcome.refused.empty();
        if (!isWhole && !said->exchange(true))
            diagnostics.line(
                "Lockdown: shutting the machine down cannot be held back wholly (logind: " + outcome.errorText + ")");
    };
    return {systemBus_, [mode, parts = std::move(parts), decided](Bus& bus) {
                return std::make_unique<LogindLock>(bus, LogindLock::Request{parts, mode, alarmWhy}, decided);
            }};
}

} // namespace kestrovan
