#include "sensors/LidMonitor.h"

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto lidPollInterval = 150ms;
constexpr auto pollLeeway = 20ms;

} // namespace

LidMonitor::LidMonitor(SystemPower& systemPower, MainQueue& mainQueue, Workers& workers)
    : systemPower_(systemPower), mainQueue_(mainQueue),
      monitorQueue_(workers.makeSerialQueue("com.kestrovan.lidmonitor"))
{
    applyLidState(checkClamshellState());
    registerForPowerNotifications();
    startBackgroundMonitoring();
}

LidMonitor::~LidMonitor()
{
    stopMonitoring();
}

bool LidMonitor::checkClamshellState()
{
    return systemPower_.isLidClosed().value_or(false);
}

void LidMonitor::registerForPowerNotifications()
{
    messages_ = systemPower_.registerForMessages(lifetime_.guard(
        [this](PowerMessage message, std::intptr_t argument) { handlePowerMessage(message, argument); }));
}

void LidMonitor::startBackgroundMonitoring()
{
    // The timer's handle ends the poll before this object goes, so that the poll needs no guard.
    bgTimer_ = monitorQueue_->repeat(lidPollInterval, pollLeeway, [this] { checkAndUpdate(); });
    sleepObserver_ = systemPower_.observe(WorkspaceNotice::willSleep, lifetime_.guard([this] {
        if (onSleepTriggered)
            onSleepTriggered();
        checkAndUpdate();
    }));
    screenSleepObserver_ =
        systemPower_.observe(WorkspaceNotice::screensDidSleep, lifetime_.guard([this] { checkAndUpdate(); }));
}

void LidMonitor::stopMonitoring()
{
    bgTimer_.reset();
    sleepObserver_.reset();
    screenSleepObserver_.reset();
    messages_.reset();
}

void LidMonitor::handlePowerMessage(PowerMessage message, std::intptr_t argument)
{
    const bool armed = isArmed();
    switch (message) {
    case PowerMessage::canSystemSleep:
        if (armed) {
            systemPower_.cancelPowerChange(argument);
            postSleepAttempt();
        } else {
            systemPower_.allowPowerChange(argument);
        }
        break;
    case PowerMessage::systemWillSleep:
        if (armed)
            postSleepAttempt();
        systemPower_.allowPowerChange(argument);
        break;
    case PowerMessage::systemHasPoweredOn:
        mainQueue_.post(lifetime_.guard([this] { checkAndUpdate(); }));
        break;
    }
}

void LidMonitor::armedStateMayHaveChanged()
{
    systemPower_.declareSleepVeto(isArmed());
}

bool LidMonitor::isArmed() const
{
    return !isArmedProvider || isArmedProvider();
}

void LidMonitor::postSleepAttempt()
{
    mainQueue_.post(lifetime_.guard([this] {
        if (onLidClosed)
            onLidClosed();
        if (onSleepTriggered)
            onSleepTriggered();
    }));
}

void LidMonitor::checkAndUpdate()
{
    const bool closed = checkClamshellState();
    if (closed == lastLidClosed_)
        return;
    mainQueue_.post(lifetime_.guard([this, closed] {
        applyLidState(closed);
        if (closed && onLidClosed)
            onLidClosed();
    }));
}

void LidMonitor::applyLidState(bool closed)
{
    isLidClosed = closed;
    lastLidClosed_ = closed;
}

} // namespace kestrovan
