#include "responses/PowerAssertionManager.h"

#include "platform/Diagnostics.h"
#include "platform/Platform.h"
#include "platform/PowerAssertions.h"

#include <utility>

namespace kestrovan {

namespace {

constexpr std::int32_t assertionLevelOn = 255;
// User-initiated (idle system sleep disabled with it) and latency-critical; the display may still sleep.
constexpr std::uint64_t activityOptions = 0xFF00FFFFFF;
constexpr const char* caffeinatePath = "/usr/bin/caffeinate";

} // namespace

PowerAssertionManager::PowerAssertionManager(const Platform& platform)
    : assertions_(platform.powerAssertions), processes_(platform.processes), diagnostics_(platform.diagnostics)
{}

void PowerAssertionManager::startPreventingSleep(const std::string& reason)
{
    if (isPreventingSleep)
        return;
    isPreventingSleep = true;
    createAssertions(reason);
    processActivity_ = assertions_.beginActivity(activityOptions, reason);
    launchCaffeinate();
}

void PowerAssertionManager::createAssertions(const std::string& reason)
{
    const auto failure = [this](std::string type) {
        return lifetime_.guard([this, type = std::move(type)](std::int32_t code) {
            diagnostics_.line("Warning: Failed to create " + type + " assertion: " + std::to_string(code));
        });
    };
    systemSleepAssertionID_ = assertions_.create(PowerAssertionType::preventSystemSleep, assertionLevelOn, reason,
                                                 failure("PreventSystemSleep"));
    userIdleAssertionID_ = assertions_.create(PowerAssertionType::preventUserIdleSystemSleep, assertionLevelOn, reason,
                                              failure("PreventUserIdleSystemSleep"));
}

void PowerAssertionManager::launchCaffeinate()
{
    if (caffeinateProcess_ && caffeinateProcess_->isRunning())
        caffeinateProcess_->terminate();
    caffeinateProcess_ = processes_.launch(caffeinatePath, {"-d", "-i", "-m", "-u"});
}

void PowerAssertionManager::stopPreventingSleep()
{
    if (!isPreventingSleep)
        return;
    isPreventingSleep = false;
    for (auto* identifier : {&systemSleepAssertionID_, &userIdleAssertionID_})
        if (const auto held = std::exchange(*identifier, 0U))
            assertions_.release(held);
    processActivity_.reset();
    if (caffeinateProcess_ && caffeinateProcess_->isRunning())
        caffeinateProcess_->terminate();
    caffeinateProcess_.reset();
}

} // namespace kestrovan
