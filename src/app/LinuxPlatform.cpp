#include "app/LinuxPlatform.h"

namespace kestrovan {

namespace {

// Without a home both lead to a folder that cannot exist: everything has its default, and every write fails plainly.
std::filesystem::path settingsFile(const Files& files)
{
    return JsonSettingsStore::defaultPath().value_or(files.dataFolder().value_or("/dev/null") / "settings.json");
}

std::filesystem::path cameraAnswerFile(const Files& files)
{
    return settingsFile(files).replace_filename("camera.json");
}

} // namespace

LinuxPlatform::LinuxPlatform(LinuxGround& ground, CameraPermission::Ask askForCamera)
    : ground_(ground), settings_(settingsFile(files_), ground.diagnostics),
      powerSources_(ground.mainQueue, ground.diagnostics),
      systemPower_(ground.systemBus, ground.sessionBus, ground.mainQueue, ground.diagnostics),
      powerAssertions_(ground.systemBus, ground.sessionBus, ground.mainQueue), sound_(ground.diagnostics),
      audioOutput_(sound_, ground.diagnostics), systemVolume_(sound_),
      portalCameraQuestion_(ground.sessionBus, ground.mainQueue),
      camera_({.answerFile = cameraAnswerFile(files_),
               .ask = isSandboxed() ? [this](auto answer) { portalCameraQuestion_.ask(std::move(answer)); }
                                    : std::move(askForCamera)},
              files_, ground.diagnostics),
      presentation_(makePresentationOptions(ground.systemBus, ground.sessionBus, ground.diagnostics)),
      workspace_(sound_, ground.sessionBus, ground.mainQueue, ground.diagnostics),
      motion_(ground.sessionBus, ground.mainQueue)
{}

Platform LinuxPlatform::platform()
{
    return {.mainQueue = ground_.mainQueue,
            .workers = workers_,
            .clock = clock_,
            .diagnostics = ground_.diagnostics,
            .text = text_,
            .settings = settings_,
            .files = files_,
            .powerSources = powerSources_,
            .systemPower = systemPower_,
            .powerAssertions = powerAssertions_,
            .processes = processes_,
            .audioOutput = audioOutput_,
            .systemVolume = systemVolume_,
            .camera = camera_,
            .presentation = *presentation_,
            .keyEvents = keyEvents_,
            .workspace = workspace_,
            .http = http_,
            .screens = *screens_,
            .picturePicker = pictureDialog_,
            .motion = motion_};
}

} // namespace kestrovan
