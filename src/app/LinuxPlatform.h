#pragma once

#include "app/PictureDialog.h"
#include "platform/Platform.h"
#include "platform/linux/BusConnection.h"
#include "platform/linux/CurlHttp.h"
#include "platform/linux/GstreamerCamera.h"
#include "platform/linux/IcuText.h"
#include "platform/linux/JsonSettingsStore.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/LogindPowerAssertions.h"
#include "platform/linux/LogindSystemPower.h"
#include "platform/linux/MakePresentationOptions.h"
#include "platform/linux/MakeScreens.h"
#include "platform/linux/PortalCameraQuestion.h"
#include "platform/linux/PortalMotionPreference.h"
#include "platform/linux/PosixFiles.h"
#include "platform/linux/PosixProcessLauncher.h"
#include "platform/linux/PulseAudioOutput.h"
#include "platform/linux/PulseConnection.h"
#include "platform/linux/PulseSystemVolume.h"
#include "platform/linux/QtKeyEvents.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/linux/StdoutDiagnostics.h"
#include "platform/linux/SysfsPowerSources.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ThreadWorkers.h"

namespace kestrovan {

/// The loop and the message buses, without which nothing else begins.
struct LinuxGround {
    QtMainQueue mainQueue;
    StdoutDiagnostics diagnostics;
    BusConnection sessionBus{Bus::Kind::session};
    BusConnection systemBus{Bus::Kind::system};
};

/// This laptop: every service that the guard reaches, as Linux has it. Needs a QGuiApplication, and ends before it.
/// Main thread.
class LinuxPlatform {
public:
    /// `askForCamera` puts the question whether the camera may be used, except in a sandbox: there, the portal does.
    LinuxPlatform(LinuxGround& ground, CameraPermission::Ask askForCamera);

    Platform platform();

private:
    LinuxGround& ground_;
    SystemClock clock_;
    IcuText text_;
    PosixFiles files_;
    JsonSettingsStore settings_;
    SysfsPowerSources powerSources_;
    LogindSystemPower systemPower_;
    LogindPowerAssertions powerAssertions_;
    PosixProcessLauncher processes_;
    PulseConnection sound_;
    PulseAudioOutput audioOutput_;
    PulseSystemVolume systemVolume_;
    PortalCameraQuestion portalCameraQuestion_;
    GstreamerCamera camera_;
    std::unique_ptr<PresentationOptions> presentation_;
    QtKeyEvents keyEvents_;
    LinuxWorkspace workspace_;
    PortalMotionPreference motion_;
    CurlHttp http_;
    PictureDialog pictureDialog_;
    std::unique_ptr<Screens> screens_ = makeScreens();
    ThreadWorkers workers_; // the first to end: what they run works on the others
};

} // namespace kestrovan
