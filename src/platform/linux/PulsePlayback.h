#pragma once

#include "platform/Lifetime.h"
#include "platform/linux/PcmSound.h"
#include "platform/linux/PulseServer.h"

namespace kestrovan {

class Diagnostics;

/// One sound being played, from construction to destruction. Lives on the thread of the sound server.
class PulsePlayback {
public:
    enum class Manner {
        insistent, ///< loud and un-muted; begins when it can, and goes on wherever the server or its sinks went
        passing    ///< as loud as the user likes such sounds to be; lost if it cannot be played now
    };
    struct Options {
        bool isEndless = false; ///< over and over without a gap, else once
        Manner manner = Manner::insistent;
        std::string name; ///< as mixers show it
    };

    PulsePlayback(PulseServer& server, Diagnostics& diagnostics, PcmSound sound, Options options);
    PulsePlayback(const PulsePlayback&) = delete;
    PulsePlayback& operator=(const PulsePlayback&) = delete;

private:
    void open();
    void close();
    void reopen();
    void end();
    void connect();
    void watchTheMaking();
    void considerState();
    void fill(std::size_t bytes);
    void say(const std::string& reason);
    bool isPassing() const { return options_.manner == Manner::passing; }

    PulseServer& server_;
    Diagnostics& diagnostics_;
    const PcmSound sound_;
    const Options options_;
    std::size_t cursor_ = 0; ///< into the samples: the next byte that the server gets
    bool isOver_ = false;
    bool hasSaid_ = false; ///< that it cannot be played
    int attempts_ = 0;     ///< to have a stream made
    std::chrono::milliseconds patience_;
    pulse::StreamHandle stream_;
    pulse::OperationHandle drain_;
    Subscription loudness_;
    Subscription need_;
    Subscription link_;
    Lifetime lifetime_;
};

} // namespace kestrovan
