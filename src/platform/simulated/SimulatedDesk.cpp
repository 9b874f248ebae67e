#include "platform/simulated/SimulatedDesk.h"

#include <utility>

namespace kestrovan {

Subscription SimulatedDesktop::addLocalMonitor(Filter filter)
{
    ++*monitors_;
    auto registration = std::make_shared<Subscription>(
        keyEvents_.subscribe([filter = std::move(filter)](const KeyEvent& event, bool& swallowed) {
            swallowed = filter(event) || swallowed;
        }));
    return Subscription([registration, monitors = monitors_] {
        registration->reset();
        --*monitors;
    });
}

bool SimulatedDesktop::press(const KeyEvent& event)
{
    bool swallowed = false;
    keyEvents_.tell(event, swallowed);
    return swallowed;
}

void SimulatedCamera::requestAccess(std::function<void(bool granted)> answered)
{
    if (question_) {
        answered(false);
        return;
    }
    ++questions_;
    question_ = std::move(answered);
}

void SimulatedCamera::answer(bool granted)
{
    status = granted ? CameraAuthorization::authorized : CameraAuthorization::denied;
    if (const auto answered = std::exchange(question_, nullptr))
        answered(granted);
}

void SimulatedCamera::capturePhoto(std::function<void(PhotoResult)> done)
{
    ++shots_;
    awaited_.push_back(std::move(done));
    if (!isSlow)
        deliver();
}

void SimulatedCamera::deliver()
{
    for (const auto& done : std::exchange(awaited_, {}))
        done(isLightOn ? nextPhoto : Error{"The camera is not running"});
}

} // namespace kestrovan
