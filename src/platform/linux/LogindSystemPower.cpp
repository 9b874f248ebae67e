#include "platform/linux/LogindSystemPower.h"

#include "platform/linux/ProcLid.h"

#include <systemd/sd-bus.h>

#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// Many times what an idle machine takes, and a fraction of what lies between two looks at the lid.
constexpr auto lidPatience = 20ms;

const std::string sleepSignal = "PrepareForSleep";
const std::string shutdownSignal = "PrepareForShutdown";
const std::string screenSaverSignal = "ActiveChanged";

std::string logindRule(const std::string& member)
{
    return "sender='org.freedesktop.login1',path='/org/freedesktop/login1',"
           "interface='org.freedesktop.login1.Manager',member='" +
           member + "'";
}

// Whoever plays the screen saver, at whatever path: the desktops do not agree on that.
std::string screenSaverRule(const std::string& interface)
{
    return "interface='" + interface + "',member='" + screenSaverSignal + "'";
}

} // namespace

LogindSystemPower::LogindSystemPower(BusConnection& systemBus, BusConnection& sessionBus, MainQueue& mainQueue,
                                     Diagnostics& diagnostics, std::filesystem::path procRoot)
    : systemBus_(systemBus), mainQueue_(mainQueue), diagnostics_(diagnostics), procRoot_(std::move(procRoot))
{
    const auto tell = lifetime_.guard([this](const std::string& member, bool argument) { announce(member, argument); });
    const Announce post = [&mainQueue, tell](const std::string& member, bool argument) {
        mainQueue.post([tell, member, argument] { tell(member, argument); });
    };
    logind_ = listenTo(systemBus, {logindRule(sleepSignal), logindRule(shutdownSignal)}, post);
    screenSaver_ = listenTo(
        sessionBus, {screenSaverRule("org.freedesktop.ScreenSaver"), screenSaverRule("org.gnome.ScreenSaver")}, post);
}

BusResident<LogindSystemPower::Listener> LogindSystemPower::listenTo(BusConnection& bus, std::vector<std::string> rules,
                                                                     Announce announce)
{
    return {bus, [rules = std::move(rules), announce = std::move(announce)](Bus& home) {
                auto listener = std::make_unique<Listener>();
                for (const auto& rule : rules)
                    listener->push_back(home.onSignal(rule, [announce](sd_bus_message* signal) {
                        int argument = 0;
                        if (sd_bus_message_read(signal, "b", &argument) > 0)
                            announce(sd_bus_message_get_member(signal), argument != 0);
                    }));
                return listener;
            }};
}

std::optional<bool> LogindSystemPower::isLidClosed()
{
    const auto closed = readProcLid(procRoot_);
    if (closed)
        return closed;
    const bool mayWait = std::this_thread::get_id() != mainThread_;
    return logindLid_.ask(mayWait ? lidPatience : 0ms);
}

Subscription LogindSystemPower::registerForMessages(MessageHandler handler)
{
    return messages_.subscribe(std::move(handler));
}

Subscription LogindSystemPower::observe(WorkspaceNotice notice, std::function<void()> observer)
{
    return notices(notice).subscribe(std::move(observer));
}

void LogindSystemPower::declareSleepVeto(bool veto)
{
    if (veto == static_cast<bool>(veto_))
        return;
    veto_.reset();
    if (veto)
        veto_ = BusResident<SleepVeto>(systemBus_, [&diagnostics = diagnostics_, said = said_](Bus& bus) {
            return std::make_unique<SleepVeto>(bus, diagnostics, said);
        });
}

void LogindSystemPower::announce(const std::string& member, bool argument)
{
    if (member == sleepSignal && argument) {
        messages_.tell(PowerMessage::systemWillSleep, ++lastRequest_);
        notices(WorkspaceNotice::willSleep).tell();
    } else if (member == sleepSignal) {
        messages_.tell(PowerMessage::systemHasPoweredOn, 0);
    } else if (member == shutdownSignal && argument) {
        notices(WorkspaceNotice::willPowerOff).tell();
    } else if (member == screenSaverSignal && argument) {
        notices(WorkspaceNotice::screensDidSleep).tell();
    }
}

} // namespace kestrovan
