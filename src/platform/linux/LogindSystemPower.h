#pragma once

#include "platform/Lifetime.h"
#include "platform/SystemPower.h"
#include "platform/linux/BusResident.h"
#include "platform/linux/LogindLid.h"
#include "platform/linux/SleepVeto.h"

#include <filesystem>
#include <thread>
#include <vector>

namespace kestrovan {

class Diagnostics;

/// Lid, sleep and power-off as systemd-logind and the session's screen saver tell of them (docs/porting.md).
///
/// logind does not ask whether the system may sleep, so canSystemSleep is never sent: the answer given in advance is
/// held as locks (SleepVeto). A sleep that comes in spite of them is announced by systemWillSleep and waits for as
/// long as the delay lock is held, which is until the veto ends or logind's patience does; allowPowerChange() does
/// not cut that short.
class LogindSystemPower final : public SystemPower {
public:
    /// `procRoot` is where procfs is mounted. The connections outlive this object.
    LogindSystemPower(BusConnection& systemBus, BusConnection& sessionBus, MainQueue& mainQueue,
                      Diagnostics& diagnostics, std::filesystem::path procRoot = "/proc");

    std::optional<bool> isLidClosed() override;

    [[nodiscard]] Subscription registerForMessages(MessageHandler handler) override;
    void allowPowerChange(std::intptr_t /*argument*/) override {}
    void cancelPowerChange(std::intptr_t /*argument*/) override {}
    void declareSleepVeto(bool veto) override;
    [[nodiscard]] Subscription observe(WorkspaceNotice notice, std::function<void()> observer) override;

private:
    /// The matches for signals of a bus; they live on its thread.
    using Listener = std::vector<Subscription>;
    using Announce = std::function<void(const std::string& member, bool argument)>;

    static BusResident<Listener> listenTo(BusConnection& bus, std::vector<std::string> rules, Announce announce);
    void announce(const std::string& member, bool argument);
    Signal<>& notices(WorkspaceNotice notice) { return notices_[static_cast<std::size_t>(notice)]; }

    BusConnection& systemBus_;
    MainQueue& mainQueue_;
    Diagnostics& diagnostics_;
    const std::filesystem::path procRoot_;
    const std::thread::id mainThread_ = std::this_thread::get_id();
    LogindLid logindLid_;
    Signal<PowerMessage, std::intptr_t> messages_;
    std::array<Signal<>, 3> notices_;
    std::intptr_t lastRequest_ = 0;
    SleepVeto::Said said_ = std::make_shared<std::string>();
    BusResident<SleepVeto> veto_;
    BusResident<Listener> logind_;
    BusResident<Listener> screenSaver_;
    Lifetime lifetime_;
};

} // namespace kestrovan
