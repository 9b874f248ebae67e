#pragma once

#include "platform/Lifetime.h"
#include "platform/MotionPreference.h"
#include "platform/linux/BusResident.h"

namespace kestrovan {

class MainQueue;

/// The preference as desktops tell it through their portal (org.freedesktop.portal.Settings): "reduced-motion" of
/// org.freedesktop.appearance, GNOME's and its relatives' "enable-animations", KDE's "AnimationDurationFactor". Where
/// there is no portal, nobody asks for stillness. Main thread.
class PortalMotionPreference final : public MotionPreference {
public:
    /// Both outlive it.
    PortalMotionPreference(BusConnection& sessionBus, MainQueue& mainQueue);
    ~PortalMotionPreference() override;

private:
    class Reader;

    BusResident<Reader> reader_;
    Lifetime lifetime_;
};

} // namespace kestrovan
