#pragma once

#include "rigs/Program.h"
#include "rigs/TemporaryFolder.h"

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace kestrovan::rigs {

/// Listens to a sink of the sound server as a program of its own does, from construction to destruction: 16-bit samples
/// of 44,100 frames a second. Any thread.
class MonitorRecorder {
public:
    using Clock = std::chrono::steady_clock;

    /// A recorder of one channel hears their average, of two the left and the right one in turn. One that is in a hurry
    /// hears of a sound 5 ms after it was made, and has PipeWire work in blocks that small.
    enum class Pace { leisurely, hurried };
    explicit MonitorRecorder(const std::string& sink, int channels = 1, Pace pace = Pace::leisurely);
    MonitorRecorder(const MonitorRecorder&) = delete;
    MonitorRecorder& operator=(const MonitorRecorder&) = delete;
    ~MonitorRecorder();

    /// Waits until the server delivers, be it silence; false if it does not.
    bool isListening() const;

    std::size_t count() const; ///< of samples heard so far
    std::vector<std::int16_t> samples(std::size_t from = 0) const;
    Clock::time_point arrivalOf(std::size_t sample) const;

    /// The greatest amplitude within the last `length` that was heard.
    int peak(std::chrono::milliseconds length) const;
    std::optional<std::size_t> firstAbove(int amplitude, std::size_t from) const;

private:
    struct Block {
        std::size_t first = 0; ///< sample
        Clock::time_point arrival;
    };

    void run();

    const int channels_;
    TemporaryFolder folder_;
    mutable std::mutex mutex_; ///< over the two below
    std::vector<std::int16_t> samples_;
    std::vector<Block> blocks_;
    std::unique_ptr<Program> program_;
    std::thread thread_;
};

} // namespace kestrovan::rigs
