#include "rigs/MonitorRecorder.h"

#include "rigs/Deadline.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kestrovan::rigs {
namespace {

constexpr int framesPerSecond = 44100;

} // namespace

MonitorRecorder::MonitorRecorder(const std::string& sink, int channels, Pace pace) : channels_(channels)
{
    const auto pipe = (folder_.path() / "pipe").string();
    mkfifo(pipe.c_str(), 0600);
    program_ = std::make_unique<Program>(std::vector<std::string>{
        "sh", "-c",
        "exec parec --raw --format=s16le --rate=" + std::to_string(framesPerSecond) +
            " --channels=" + std::to_string(channels) + " --latency-msec=" + (pace == Pace::hurried ? "5" : "50") +
            " --device=" + sink + ".monitor >" + pipe});
    thread_ = std::thread([this] { run(); });
}

MonitorRecorder::~MonitorRecorder()
{
    // Whatever became of the program: the end of the last writer is what the thread waits for.
    const int writer = ::open((folder_.path() / "pipe").c_str(), O_RDWR | O_CLOEXEC);
    program_.reset();
    ::close(writer);
    thread_.join();
}

void MonitorRecorder::run()
{
    const int pipe = ::open((folder_.path() / "pipe").c_str(), O_RDONLY | O_CLOEXEC);
    std::array<std::int16_t, 4096> buffer{};
    std::size_t kept = 0;                                 // bytes: a pipe may cut a sample in two
    auto* bytes = reinterpret_cast<char*>(buffer.data()); // NOLINT: samples are bytes
    while (true) {
        const auto got = ::read(pipe, bytes + kept, sizeof buffer - kept);
        if (got <= 0)
            break;
        const auto filled = kept + static_cast<std::size_t>(got);
        const auto whole = filled / sizeof buffer[0];
        const std::scoped_lock lock(mutex_);
        blocks_.push_back({samples_.size(), Clock::now()});
        samples_.insert(samples_.end(), buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(whole));
        kept = filled % sizeof buffer[0];
        std::copy_n(bytes + filled - kept, kept, bytes);
    }
    ::close(pipe);
}

bool MonitorRecorder::isListening() const
{
    return waitUntil([this] { return count() > 0; });
}

std::size_t MonitorRecorder::count() const
{
    const std::scoped_lock lock(mutex_);
    return samples_.size();
}

std::vector<std::int16_t> MonitorRecorder::samples(std::size_t from) const
{
    const std::scoped_lock lock(mutex_);
    from = std::min(from, samples_.size());
    return {samples_.begin() + static_cast<std::ptrdiff_t>(from), samples_.end()};
}

MonitorRecorder::Clock::time_point MonitorRecorder::arrivalOf(std::size_t sample) const
{
    const std::scoped_lock lock(mutex_);
    const auto after = std::ranges::upper_bound(blocks_, sample, {}, &Block::first);
    return std::prev(after)->arrival;
}

int MonitorRecorder::peak(std::chrono::milliseconds length) const
{
    const std::scoped_lock lock(mutex_);
    const auto wanted = static_cast<std::size_t>(length.count() * framesPerSecond / 1000 * channels_);
    const auto window = std::min(wanted, samples_.size());
    int greatest = 0;
    for (auto index = samples_.size() - window; index < samples_.size(); ++index)
        greatest = std::max(greatest, std::abs(int{samples_[index]}));
    return greatest;
}

std::optional<std::size_t> MonitorRecorder::firstAbove(int amplitude, std::size_t from) const
{
    const std::scoped_lock lock(mutex_);
    for (auto index = from; index < samples_.size(); ++index)
        if (std::abs(int{samples_[index]}) > amplitude)
            return index;
    return std::nullopt;
}

} // namespace kestrovan::rigs
