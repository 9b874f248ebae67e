#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace kestrovan {

/// A complete WAV file in memory, shared by its players.
using WavFile = std::shared_ptr<const std::vector<std::byte>>;

/// Plays one sound; destroying it stops the sound.
class AudioPlayer {
public:
    virtual ~AudioPlayer() = default;

    virtual void setLooping(bool endless) = 0;
    virtual void setVolume(float fraction) = 0; ///< 0 to 1, of the player itself

    /// Starts from the beginning. Returns at once; where no sound server runs, the sound starts when one does.
    virtual void play() = 0;
    virtual void stop() = 0;
};

/// The machine's speakers. Main thread; no call waits for the sound server.
class AudioOutput {
public:
    struct Result {
        std::unique_ptr<AudioPlayer> player; ///< none on failure
        std::string error;                   ///< then, its description
    };

    virtual ~AudioOutput() = default;

    /// Fails only if the file makes no sense.
    virtual Result makePlayer(WavFile file) = 0;
};

} // namespace kestrovan
