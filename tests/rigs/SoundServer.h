#pragma once

#include "rigs/Program.h"
#include "rigs/TemporaryFolder.h"

#include <memory>
#include <string>
#include <vector>

namespace kestrovan::rigs {

/// A real sound server of the test's own, on a socket that the environment names from then on, with two sinks in
/// memory, "first" (the default one) and "second", of 44,100 stereo frames a second. It starts when it is told to.
class SoundServer {
public:
    enum class Kind { pulseAudio, pipeWire };

    explicit SoundServer(Kind kind);
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    /// False if it does not come up.
    bool start();
    void kill();
    void signal(int number); ///< to whatever the server is made of

    /// Runs pactl to its end and returns what it printed.
    static std::string pactl(const std::string& arguments);

    static void addSink(const std::string& name);
    static void removeSink(const std::string& name);
    static bool isLoud(const std::string& sink); ///< 100 % and not muted
    static int inputs();                         ///< how many sounds are being played

private:
    bool startPulseAudio();
    bool startPipeWire();
    void launch(std::vector<std::string> command);

    const Kind kind_;
    TemporaryFolder folder_;
    const std::string socket_;
    std::vector<std::unique_ptr<Program>> programs_;
};

} // namespace kestrovan::rigs
