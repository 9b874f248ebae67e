#pragma once

#include "platform/linux/AlertSound.h"
#include "platform/linux/PulseAudioOutput.h"
#include "platform/linux/PulseSystemVolume.h"
#include "responses/SirenSynthesis.h"
#include "rigs/CollectedLines.h"
#include "rigs/Deadline.h"
#include "rigs/MonitorRecorder.h"
#include "rigs/SoundServer.h"

#include <gmock/gmock.h>

namespace kestrovan {

using namespace std::chrono_literals;
using rigs::MonitorRecorder;
using rigs::SoundServer;
using rigs::timeOf;
using rigs::waitUntil;

/// A sound server, not started yet, and what the program has for it.
class SoundTest : public ::testing::TestWithParam<SoundServer::Kind> {
protected:
    // Of the siren, in any 50 ms of it; at 90 % of the volume or less it stays below.
    static constexpr int loudAmplitude = 20'000;
    static constexpr auto stretch = 200ms;

    static WavFile siren() { return std::make_shared<const std::vector<std::byte>>(synthesizeSiren()); }

    std::unique_ptr<AudioPlayer> makePlayer(WavFile file, bool endless)
    {
        auto [player, error] = output->makePlayer(std::move(file));
        EXPECT_EQ(error, "");
        player->setLooping(endless);
        player->setVolume(1.0F);
        return std::move(player);
    }
    std::unique_ptr<AudioPlayer> startSiren()
    {
        auto player = makePlayer(siren(), true);
        player->play();
        return player;
    }

    /// Starts the server and waits until the program has found it.
    bool startAndConnect()
    {
        return server.start() && waitUntil([this] {
                   SoundServer::pactl("set-sink-mute first 1");
                   volume.maximize();
                   return waitUntil([] { return SoundServer::isLoud("first"); }, 500ms);
               });
    }

    /// What comes out of a sink from now on is the siren at its full volume.
    static bool becomesLoud(const std::string& sink)
    {
        return waitUntil([&] {
            const MonitorRecorder recorder(sink);
            return recorder.isListening() && waitUntil([&] { return recorder.peak(stretch) > loudAmplitude; }, 3s);
        });
    }
    static bool staysLoud(const MonitorRecorder& recorder)
    {
        return waitUntil([&] { return recorder.peak(stretch) > loudAmplitude; });
    }
    static bool becomesSilent(const MonitorRecorder& recorder)
    {
        return waitUntil([&] { return recorder.peak(stretch) == 0; });
    }

    SoundServer server{GetParam()};
    rigs::CollectedLines lines;
    PulseConnection connection{lines};
    std::unique_ptr<PulseAudioOutput> output = std::make_unique<PulseAudioOutput>(connection, lines);
    PulseSystemVolume volume{connection};
    AlertSound alert{connection, lines};
};

} // namespace kestrovan
