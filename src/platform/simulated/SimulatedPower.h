#pragma once

#include "platform/ChildProcess.h"
#include "platform/MainQueue.h"
#include "platform/PowerAssertions.h"
#include "platform/PowerSources.h"
#include "platform/SystemPower.h"

#include <map>
#include <string>
#include <vector>

namespace kestrovan {

/// The mains, the lid, and a system that asks before it sleeps.
class SimulatedPower final : public PowerSources, public SystemPower {
public:
    explicit SimulatedPower(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

    // PowerSources
    std::optional<std::vector<PowerSourceDescription>> read() override { return sources; }
    Subscription notify(std::function<void()> changed) override { return sourceChanges_.subscribe(std::move(changed)); }

    // SystemPower
    std::optional<bool> isLidClosed() override { return lidClosed; }
    Subscription registerForMessages(MessageHandler handler) override
    {
        return messages_.subscribe(std::move(handler));
    }
    void allowPowerChange(std::intptr_t argument) override { answers[argument] = true; }
    void cancelPowerChange(std::intptr_t argument) override { answers[argument] = false; }
    void declareSleepVeto(bool veto) override { declaredVeto = veto; }
    Subscription observe(WorkspaceNotice notice, std::function<void()> observer) override
    {
        return notices_[notice].subscribe(std::move(observer));
    }

    /// The machine notices a change of its power sources.
    void notifySources();
    void send(PowerMessage message, std::intptr_t argument);
    void send(WorkspaceNotice notice);

    std::optional<std::vector<PowerSourceDescription>> sources;
    std::optional<bool> lidClosed = false;
    std::map<std::intptr_t, bool> answers; ///< to each request: true for allowed
    bool declaredVeto = false;
    bool notifies = true; ///< false: a machine on which only polling helps

private:
    MainQueue& mainQueue_;
    Signal<> sourceChanges_;
    Signal<PowerMessage, std::intptr_t> messages_;
    std::map<WorkspaceNotice, Signal<>> notices_;
};

/// The holds against sleep, and the helper programs.
class SimulatedHolds final : public PowerAssertions, public ProcessLauncher {
public:
    explicit SimulatedHolds(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

    std::uint32_t create(PowerAssertionType type, std::int32_t level, const std::string& name, Failure failed) override;
    void release(std::uint32_t identifier) override { assertions.erase(identifier); }
    Subscription beginActivity(std::uint64_t options, const std::string& reason) override;
    std::unique_ptr<ChildProcess> launch(const std::string& executable,
                                         const std::vector<std::string>& arguments) override;

    /// How many of the three kinds of holds are in force: 4 at most (two assertions, an activity, a child).
    std::size_t count() const { return assertions.size() + activities->size() + *children; }

    std::map<std::uint32_t, std::string> assertions;
    std::shared_ptr<std::vector<std::string>> activities = std::make_shared<std::vector<std::string>>();
    std::shared_ptr<std::size_t> children = std::make_shared<std::size_t>(0); ///< running now
    std::vector<std::string> launched;                                        ///< command lines so far
    std::int32_t refusal = 0;                                                 ///< not 0: assertions fail with this code
    bool childExecutableExists = true;

private:
    MainQueue& mainQueue_;
    std::uint32_t nextIdentifier_ = 1;
};

} // namespace kestrovan
