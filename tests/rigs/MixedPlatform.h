#pragma once

#include "platform/Platform.h"

namespace kestrovan::rigs {

/// The services of one laptop that take the place of another's; none leaves the other's.
struct Replacements {
    MainQueue* mainQueue = nullptr;
    Workers* workers = nullptr;
    Clock* clock = nullptr;
    Diagnostics* diagnostics = nullptr;
    SettingsStore* settings = nullptr;
    Files* files = nullptr;
    PowerSources* powerSources = nullptr;
    SystemPower* systemPower = nullptr;
    PowerAssertions* powerAssertions = nullptr;
    ProcessLauncher* processes = nullptr;
    AudioOutput* audioOutput = nullptr;
    SystemVolume* systemVolume = nullptr;
    Camera* camera = nullptr;
    PresentationOptions* presentation = nullptr;
    KeyEvents* keyEvents = nullptr;
    Http* http = nullptr;
    Screens* screens = nullptr;
};

/// `base`, usually a simulated laptop's, with some services replaced, usually by real ones.
inline Platform mixed(const Platform& base, const Replacements& with)
{
    const auto pick = [](auto* replacement, auto& original) -> auto&
    {
        return replacement ? *replacement : original;
    };
    return {.mainQueue = pick(with.mainQueue, base.mainQueue),
            .workers = pick(with.workers, base.workers),
            .clock = pick(with.clock, base.clock),
            .diagnostics = pick(with.diagnostics, base.diagnostics),
            .text = base.text,
            .settings = pick(with.settings, base.settings),
            .files = pick(with.files, base.files),
            .powerSources = pick(with.powerSources, base.powerSources),
            .systemPower = pick(with.systemPower, base.systemPower),
            .powerAssertions = pick(with.powerAssertions, base.powerAssertions),
            .processes = pick(with.processes, base.processes),
            .audioOutput = pick(with.audioOutput, base.audioOutput),
            .systemVolume = pick(with.systemVolume, base.systemVolume),
            .camera = pick(with.camera, base.camera),
            .presentation = pick(with.presentation, base.presentation),
            .keyEvents = pick(with.keyEvents, base.keyEvents),
            .workspace = base.workspace,
            .http = pick(with.http, base.http),
            .screens = pick(with.screens, base.screens),
            .picturePicker = base.picturePicker,
            .motion = base.motion};
}

} // namespace kestrovan::rigs
