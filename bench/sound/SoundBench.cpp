// The siren's synthesis, and what the sound server makes of it: each on a real PulseAudio and a real PipeWire, heard
// by another program on the monitor of the sink.

#include "LatencyTable.h"
#include "platform/linux/PulseAudioOutput.h"
#include "platform/linux/PulseSystemVolume.h"
#include "platform/linux/ThreadSerialQueue.h"
#include "responses/SirenSynthesis.h"
#include "responses/WavEncoding.h"
#include "rigs/CollectedLines.h"
#include "rigs/Deadline.h"
#include "rigs/MonitorRecorder.h"
#include "rigs/SoundServer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

using namespace kestrovan;
using namespace std::chrono_literals;
using bench::LatencyTable;
using rigs::MonitorRecorder;
using rigs::SoundServer;
using rigs::waitUntil;

namespace {

constexpr int runs = 200;
constexpr int framesPerSecond = 44100;

void measureSynthesis(LatencyTable& table)
{
    auto& row = table.row("the siren synthesised", {bench::worst(15)});
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        const auto siren = synthesizeSiren();
        row.add(std::chrono::steady_clock::now() - start);
        if (siren.empty())
            row.addFailure();
    }
}

// As loud in any two milliseconds as in any other, which the siren is not.
WavFile steadyTone()
{
    constexpr double frequency = 1000.0;
    std::vector<std::int16_t> samples;
    for (int frame = 0; frame < framesPerSecond; ++frame) {
        const double phase = 2.0 * std::numbers::pi * frequency * frame / framesPerSecond;
        samples.insert(samples.end(), 2, static_cast<std::int16_t>(20'000.0 * std::sin(phase)));
    }
    return std::make_shared<const std::vector<std::byte>>(encodeWav(samples));
}

std::unique_ptr<AudioPlayer> play(PulseAudioOutput& output, const WavFile& file)
{
    auto player = output.makePlayer(file).player;
    player->setLooping(true);
    player->play();
    return player;
}

void measureStart(LatencyTable::Row& row, PulseAudioOutput& output, const MonitorRecorder& recorder)
{
    const auto siren = std::make_shared<const std::vector<std::byte>>(synthesizeSiren());
    for (int run = 0; run < runs; ++run) {
        // Not in step with the server's own rhythm.
        std::this_thread::sleep_for(20ms + run % 50 * 1ms);
        if (!waitUntil([&] { return recorder.peak(100ms) == 0; }))
            return row.addFailure();
        const auto before = recorder.count();
        const auto start = std::chrono::steady_clock::now();
        const auto player = play(output, siren);
        const auto heard = [&] { return recorder.firstAbove(0, before); };
        if (waitUntil([&] { return heard().has_value(); }, 5s))
            row.add(recorder.arrivalOf(*heard()) - start);
        else
            row.addFailure();
    }
}

struct Gaps {
    double longest = 0; ///< milliseconds
    double last = 0;    ///< at the end of what was heard, milliseconds
};

// Stretches in which the steady tone is not heard at its full loudness.
Gaps gapsOf(const std::vector<std::int16_t>& samples)
{
    constexpr std::ptrdiff_t period = framesPerSecond / 1000;
    constexpr int almostFull = 19'000;
    const auto gap = [](std::ptrdiff_t frames) {
        return static_cast<double>(std::max(frames - period, std::ptrdiff_t{0})) * 1000.0 / framesPerSecond;
    };
    std::ptrdiff_t lastLoud = 0;
    std::ptrdiff_t longest = 0;
    for (std::ptrdiff_t index = 0; index < std::ssize(samples); ++index) {
        if (std::abs(int{samples[static_cast<std::size_t>(index)]}) < almostFull)
            continue;
        longest = std::max(longest, index - lastLoud);
        lastLoud = index;
    }
    return {gap(longest), gap(std::ssize(samples) - lastLoud)};
}

void measureGap(LatencyTable::Row& row, const std::string& attack, const MonitorRecorder& recorder)
{
    // How long after the attack its effect may begin to be heard; PipeWire plays in blocks of 23 ms.
    constexpr int effectFrames = framesPerSecond * 12 / 100;
    for (int run = 0; run < runs; ++run) {
        std::this_thread::sleep_for(run % 50 * 1ms);
        const auto before = recorder.count();
        SoundServer::pactl(attack);
        const auto listened = recorder.count() + effectFrames;
        const bool isOver =
            waitUntil([&] { return recorder.count() >= listened && gapsOf(recorder.samples(before)).last == 0; }, 5s);
        if (isOver && waitUntil([] { return SoundServer::isLoud("first"); }, 1s))
            row.add(LatencyTable::Milliseconds(gapsOf(recorder.samples(before)).longest));
        else
            row.addFailure();
    }
}

void measureServer(LatencyTable& table, SoundServer::Kind kind, const std::string& name)
{
    const auto mark = [&](const char* what) { return name + ": " + what; };
    const bool isPulseAudio = kind == SoundServer::Kind::pulseAudio;
    auto& start = table.row(mark("play() -> first sample in the monitor"),
                            isPulseAudio ? std::vector{bench::p99(60)} : std::vector<LatencyTable::Target>{});
    auto& muted = table.row(mark("muted -> heard loud again"), {bench::p95(30), bench::worst(450)});
    auto& lowered = table.row(mark("lowered to 5 % -> heard loud again"), {bench::p95(30), bench::worst(450)});

    SoundServer server(kind);
    rigs::CollectedLines lines;
    if (!server.start())
        return;
    PulseConnection connection(lines);
    PulseAudioOutput output(connection, lines);
    PulseSystemVolume volume(connection);
    const MonitorRecorder recorder("first", 1, MonitorRecorder::Pace::hurried);
    if (!recorder.isListening())
        return;
    measureStart(start, output, recorder);

    const auto hold = volume.keepAtMaximum();
    ThreadSerialQueue queue("bench.volume");
    const auto tick = queue.repeat(400ms, 50ms, [&] { volume.maximize(); });
    const auto tone = play(output, steadyTone());
    if (!waitUntil([&] { return recorder.peak(100ms) >= 19'900; }))
        return;
    measureGap(muted, "set-sink-mute first 1", recorder);
    measureGap(lowered, "set-sink-volume first 5%", recorder);
}

} // namespace

int main()
{
    LatencyTable table("Sound");
    measureSynthesis(table);
    measureServer(table, SoundServer::Kind::pulseAudio, "PulseAudio");
    measureServer(table, SoundServer::Kind::pipeWire, "PipeWire");
    table.print();
}
