#include "platform/simulated/SimulatedLaptop.h"

namespace kestrovan {

SimulatedLaptop::SimulatedLaptop(Text& text) : text_(text)
{
    setSource(true, 100);
    time_.settle();
}

Platform SimulatedLaptop::platform()
{
    return {.mainQueue = time_,
            .workers = time_,
            .clock = time_,
            .diagnostics = diagnostics_,
            .text = text_,
            .settings = settings_,
            .files = files_,
            .powerSources = power_,
            .systemPower = power_,
            .powerAssertions = holds_,
            .processes = holds_,
            .audioOutput = speaker_,
            .systemVolume = speaker_,
            .camera = camera_,
            .presentation = desktop_,
            .keyEvents = desktop_,
            .workspace = desktop_,
            .http = web_,
            .screens = screens_,
            .picturePicker = desktop_,
            .motion = motion_};
}

void SimulatedLaptop::setSource(bool onMains, int percent)
{
    onMains_ = onMains;
    percent_ = percent;
    power_.sources = {PowerSourceDescription{.state = onMains ? PowerSourceDescription::acPower
                                                              : PowerSourceDescription::batteryPower,
                                             .isCharging = onMains && percent < 100,
                                             .currentCapacity = percent,
                                             .maxCapacity = 100,
                                             .name = "BAT0"}};
    power_.notifySources();
    time_.settle();
}

void SimulatedLaptop::plugCharger()
{
    setSource(true, percent_);
}

void SimulatedLaptop::unplugCharger()
{
    setSource(false, percent_);
}

void SimulatedLaptop::setBattery(int percent)
{
    setSource(onMains_, percent);
}

// Nobody announces a lid: only looking at it tells.
void SimulatedLaptop::closeLid()
{
    power_.lidClosed = true;
}

void SimulatedLaptop::openLid()
{
    power_.lidClosed = false;
}

bool SimulatedLaptop::askForSleep()
{
    const auto request = ++lastRequest_;
    power_.send(PowerMessage::canSystemSleep, request);
    const bool allowed = power_.answers[request];
    time_.settle();
    return allowed;
}

void SimulatedLaptop::fallAsleep()
{
    power_.send(PowerMessage::systemWillSleep, ++lastRequest_);
    power_.send(WorkspaceNotice::willSleep);
    time_.settle();
}

void SimulatedLaptop::wakeUp()
{
    power_.send(PowerMessage::systemHasPoweredOn, 0);
    time_.settle();
}

void SimulatedLaptop::powerOff()
{
    power_.send(WorkspaceNotice::willPowerOff);
    time_.settle();
}

void SimulatedLaptop::screensSleep()
{
    power_.send(WorkspaceNotice::screensDidSleep);
    time_.settle();
}

bool SimulatedLaptop::type(const std::string& character)
{
    const bool swallowed = desktop_.press(
        {.type = KeyEvent::Type::keyDown, .keyCode = KeyEvent::otherKey, .charactersIgnoringModifiers = character});
    time_.settle();
    return swallowed;
}

bool SimulatedLaptop::press(KeyEvent::Code key)
{
    const bool swallowed =
        desktop_.press({.type = KeyEvent::Type::keyDown, .keyCode = key, .charactersIgnoringModifiers = {}});
    time_.settle();
    return swallowed;
}

} // namespace kestrovan
