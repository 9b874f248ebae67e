#pragma once

namespace kestrovan {

class AudioOutput;
class Camera;
class Clock;
class Diagnostics;
class Files;
class Http;
class KeyEvents;
class MainQueue;
class MotionPreference;
class PicturePicker;
class PowerAssertions;
class PowerSources;
class PresentationOptions;
class ProcessLauncher;
class Screens;
class SettingsStore;
class SystemPower;
class SystemVolume;
class Text;
class Workers;
class Workspace;

/// One reference to each service that the guard reaches: the laptop it runs on, real or simulated.
struct Platform {
    MainQueue& mainQueue;
    Workers& workers;
    Clock& clock;
    Diagnostics& diagnostics;
    Text& text;
    SettingsStore& settings;
    Files& files;
    PowerSources& powerSources;
    SystemPower& systemPower;
    PowerAssertions& powerAssertions;
    ProcessLauncher& processes;
    AudioOutput& audioOutput;
    SystemVolume& systemVolume;
    Camera& camera;
    PresentationOptions& presentation;
    KeyEvents& keyEvents;
    Workspace& workspace;
    Http& http;
    Screens& screens;
    PicturePicker& picturePicker;
    MotionPreference& motion;
};

} // namespace kestrovan
