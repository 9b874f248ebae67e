#include "platform/simulated/SimulatedPower.h"

#include <algorithm>
#include <utility>

namespace kestrovan {

namespace {

class SimulatedChild final : public ChildProcess {
public:
    explicit SimulatedChild(std::shared_ptr<std::size_t> running) : running_(std::move(running)) { ++*running_; }
    ~SimulatedChild() override { end(); }

    bool isRunning() const override { return isRunning_; }
    void terminate() override { end(); }

private:
    void end()
    {
        if (std::exchange(isRunning_, false))
            --*running_;
    }

    std::shared_ptr<std::size_t> running_;
    bool isRunning_ = true;
};

} // namespace

void SimulatedPower::notifySources()
{
    if (notifies)
        mainQueue_.post([this] { sourceChanges_.tell(); });
}

void SimulatedPower::send(PowerMessage message, std::intptr_t argument)
{
    messages_.tell(message, argument);
}

void SimulatedPower::send(WorkspaceNotice notice)
{
    notices_[notice].tell();
}

std::uint32_t SimulatedHolds::create(PowerAssertionType /*type*/, std::int32_t /*level*/, const std::string& name,
                                     Failure failed)
{
    const auto identifier = nextIdentifier_++;
    if (refusal != 0)
        mainQueue_.post([failed = std::move(failed), code = refusal] { failed(code); });
    else
        assertions[identifier] = name;
    return identifier;
}

Subscription SimulatedHolds::beginActivity(std::uint64_t /*options*/, const std::string& reason)
{
    activities->push_back(reason);
    return Subscription(
        [activities = activities, reason] { activities->erase(std::ranges::find(*activities, reason)); });
}

std::unique_ptr<ChildProcess> SimulatedHolds::launch(const std::string& executable,
                                                     const std::vector<std::string>& arguments)
{
    if (!childExecutableExists)
        return nullptr;
    std::string command = executable;
    for (const auto& argument : arguments)
        command += " " + argument;
    launched.push_back(command);
    return std::make_unique<SimulatedChild>(children);
}

} // namespace kestrovan
