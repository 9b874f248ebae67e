#include "platform/linux/SleepVeto.h"

#include "platform/Diagnostics.h"

#include <algorithm>
#include <utility>

namespace kestrovan {

namespace {

constexpr const char* vetoWhy = "The guard is armed";

std::string listed(const std::vector<std::string>& parts)
{
    std::string all;
    for (const auto& part : parts)
        all += (all.empty() ? "" : ", ") + part;
    return all;
}

/// The one line about what cannot be held, empty if all of it is.
std::string complaint(const LogindLock::Outcome& block, const LogindLock::Outcome& delay)
{
    if (!block.isHeld && block.refused.empty())
        return "Sleep cannot be held back (logind: " + block.errorText +
               "): closing the lid may put the machine to sleep at once, and the siren with it.";
    if (!block.refused.empty())
        return "Sleep cannot be held back wholly (logind refuses " + listed(block.refused) + ": " + block.errorText +
               "): what is refused may put the machine to sleep, and the siren with it.";
    if (!delay.isHeld)
        return "A sleep that is asked for cannot be delayed (logind: " + delay.errorText +
               "): it silences the siren at once.";
    return {};
}

} // namespace

SleepVeto::SleepVeto(Bus& bus, Diagnostics& diagnostics, Said said) : diagnostics_(diagnostics), said_(std::move(said))
{
    const auto remember = [this](std::optional<LogindLock::Outcome>& place) {
        return [this, &place](const LogindLock::Outcome& outcome) {
            place = outcome;
            report();
        };
    };
    block_.emplace(
        bus,
        LogindLock::Request{
            {"sleep", "idle", "handle-lid-switch", "handle-suspend-key", "handle-hibernate-key"}, "block", vetoWhy},
        remember(blockOutcome_));
    delay_.emplace(bus, LogindLock::Request{{"sleep", "shutdown"}, "delay", vetoWhy}, remember(delayOutcome_));
}

void SleepVeto::report()
{
    if (!blockOutcome_ || !delayOutcome_)
        return;
    auto line = complaint(*blockOutcome_, *delayOutcome_);
    if (!line.empty() && line != *said_)
        diagnostics_.line(line);
    *said_ = std::move(line);
    // Both locks are taken again at the same events; what is said next is of both anew.
    blockOutcome_.reset();
    delayOutcome_.reset();
}

} // namespace kestrovan
