#include "Laptop.h"
#include "LatencyTable.h"
#include "Onlooker.h"
#include "ProcessCost.h"
#include "core/IntruderRecord.h"
#include "platform/linux/Base64.h"
#include "rigs/RunningKestrovan.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <thread>

using namespace kestrovan;
using namespace std::chrono_literals;
using bench::LatencyTable;
using bench::Onlooker;

namespace {

using Clock = Onlooker::Clock;
using Milliseconds = LatencyTable::Milliseconds;

// Few, so that all of it takes about a minute.
constexpr int starts = 20;
constexpr int clicks = 20;
constexpr int openings = 8;
constexpr int wheelTurns = 250;
constexpr std::size_t photoCount = 2000;
constexpr auto patience = 20s;
constexpr std::uint32_t desktopColor = 0xFF00FF; // of no window

const std::string usualSettings = R"("Kestrovan_Lang": "en", "Kestrovan_CameraCapture": false,
    "Kestrovan_AutoCheckUpdates": false, "Kestrovan_FullscreenArmed": false)";

double residentMegabytes(pid_t process)
{
    std::ifstream statm("/proc/" + std::to_string(process) + "/statm");
    double size = 0;
    double resident = 0;
    statm >> size >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

bool isDrawn(const Onlooker::Picture& pixel)
{
    return !pixel.empty() && pixel.front() != desktopColor;
}

// Without a window manager, windows begin at the upper left corner.
constexpr Onlooker::Area placeInWindow{265, 345, 1, 1};

/// The window that is on the screen, and the places in it that people click at, as it is laid out in English.
class Window {
public:
    explicit Window(const Onlooker& onlooker) : origin_(onlooker.origin(rigs::RunningKestrovan::window())) {}

    Onlooker::Spot languageButton() const { return at(411, 43); }
    Onlooker::Spot settingsButton() const { return at(493, 43); }
    Onlooker::Spot galleryButton() const { return at(50, 654); }
    Onlooker::Spot besideSheets() const { return at(5, 5); }
    Onlooker::Spot firstPhoto() const { return at(130, 250); }
    Onlooker::Area middle() const { return area(165, 180, 200, 330); }
    Onlooker::Area middleOfFirstPhoto() const { return area(130, 250, 1, 1); }

private:
    Onlooker::Spot at(int x, int y) const { return {origin_.x + x, origin_.y + y}; }
    Onlooker::Area area(int x, int y, int width, int height) const
    {
        return {origin_.x + x, origin_.y + y, width, height};
    }

    Onlooker::Spot origin_;
};

void add(LatencyTable::Row& row, Clock::time_point from, std::optional<Clock::time_point> to)
{
    if (to)
        row.add(*to - from);
    else
        row.addFailure();
}

/// Until the first frame is on the screen; `row` gets it. None if it never is.
std::optional<Milliseconds> timeToFirstFrame(const Onlooker& onlooker, const std::string& program,
                                             LatencyTable::Row& row)
{
    onlooker.waitFor(
        placeInWindow, [](const auto& pixel) { return !isDrawn(pixel); }, patience);
    const auto start = Clock::now();
    const rigs::Program running({program});
    const auto drawn = onlooker.waitFor(placeInWindow, isDrawn, patience);
    add(row, start, drawn);
    return drawn ? std::optional<Milliseconds>(*drawn - start) : std::nullopt;
}

double median(std::vector<double> values)
{
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

void measureStart(const Onlooker& onlooker)
{
    LatencyTable table("The window: start, alternating with an empty one");
    auto& empty = table.row("start -> first frame, empty Qt Quick window");
    auto& whole = table.row("start -> first frame, Kestrovan", {bench::median(250)});
    const TemporaryFolder home;
    setenv("HOME", home.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", home.path().c_str(), 1);
    LatencyTable warmUp("");
    for (const auto* program : {EMPTY_WINDOW, KESTROVAN_PROGRAM})
        timeToFirstFrame(onlooker, program, warmUp.row(""));
    std::vector<double> ratios;
    for (int run = 0; run < starts; ++run) {
        const auto toolkit = timeToFirstFrame(onlooker, EMPTY_WINDOW, empty);
        const auto program = timeToFirstFrame(onlooker, KESTROVAN_PROGRAM, whole);
        if (toolkit && program)
            ratios.push_back(*program / *toolkit);
    }
    table.figure("start, times that of the empty window (median)", ratios.empty() ? 0 : median(ratios), "", 2.2);
    table.print();
}

double memoryOfEmptyWindow(const Onlooker& onlooker)
{
    const rigs::Program empty({EMPTY_WINDOW});
    onlooker.waitFor(placeInWindow, isDrawn, patience);
    std::this_thread::sleep_for(3s);
    return residentMegabytes(empty.pid());
}

void measureIdle(const Onlooker& onlooker)
{
    constexpr auto duration = 10s;
    LatencyTable table("The window: left alone");
    const auto empty = memoryOfEmptyWindow(onlooker);
    const rigs::RunningKestrovan program("{" + usualSettings + "}");
    onlooker.waitFor(placeInWindow, isDrawn, patience);
    std::this_thread::sleep_for(3s);
    const auto own = residentMegabytes(program.pid());
    table.figure("idle window: resident memory, empty Qt Quick window", empty, "MB");
    table.figure("idle window: resident memory, Kestrovan", own, "MB");
    table.figure("idle window: memory, times the empty window's", own / empty, "", 1.8);

    const auto before = bench::ProcessCost::of(program.pid());
    std::this_thread::sleep_for(duration);
    const auto after = bench::ProcessCost::of(program.pid());
    const std::chrono::duration<double> busy = after.onProcessor - before.onProcessor;
    table.figure("disarmed and idle, window visible: processor", 100 * busy / std::chrono::duration<double>(duration),
                 "%", 1);
    table.print();
}

/// From a click until anything has changed in the middle of the window.
void measureClick(LatencyTable::Row& row, Onlooker& onlooker, const Window& window, const Onlooker::Spot& spot)
{
    onlooker.waitForRest(window.middle());
    const auto before = onlooker.look(window.middle());
    const auto start = Clock::now();
    onlooker.press(spot);
    add(row, start,
        onlooker.waitFor(
            window.middle(), [&before](const auto& now) { return now != before; }, patience));
}

void measureClicks(Onlooker& onlooker)
{
    LatencyTable table("The window: clicks");
    auto& language = table.row("click -> drawn: other language", {bench::p95(50)});
    auto& opening = table.row("click -> drawn: settings open", {bench::p95(50)});
    auto& closing = table.row("click -> drawn: settings close", {bench::p95(50)});
    const rigs::RunningKestrovan program("{" + usualSettings + "}");
    onlooker.waitFor(placeInWindow, isDrawn, patience);
    const Window window(onlooker);
    for (int click = 0; click < clicks; ++click) {
        measureClick(language, onlooker, window, window.languageButton());
        measureClick(opening, onlooker, window, window.settingsButton());
        measureClick(closing, onlooker, window, window.besideSheets());
    }
    table.print();
}

/// Photographs as a camera takes them, all red, and the settings whose log names them.
class Photos {
public:
    Photos()
    {
        const auto original = (folder_.path() / "original.jpg").string();
        rigs::run({"convert", "-size", "1280x720", "plasma:red-red", "-quality", "90", original});
        std::vector<IntruderRecord> records(photoCount);
        for (std::size_t number = 0; number < photoCount; ++number) {
            auto& record = records[number];
            record.id = makeRecordId();
            record.imagePath = (folder_.path() / (std::to_string(number) + ".jpg")).string();
            record.triggerReason = "Laptop lid closed";
            std::filesystem::create_hard_link(original, record.imagePath);
        }
        settings = "{" + usualSettings + R"(, "Kestrovan_IntruderRecords": {"base64": ")" +
                   base64::encode(encodeIntruderRecords(records).value_or("")) + "\"}}";
    }

    static bool isThere(const Onlooker::Picture& pixel)
    {
        const auto color = pixel.empty() ? 0 : pixel.front();
        return (color >> 16U) > 0x80 && (color & 0xFFU) < 0x40;
    }

    std::string settings;

private:
    TemporaryFolder folder_;
};

void measureGallery(Onlooker& onlooker)
{
    LatencyTable table("The window: gallery of 2,000");
    auto& firstCell = table.row("gallery: click -> first photo drawn", {bench::p95(150)});
    const Photos photos;
    const rigs::RunningKestrovan program(photos.settings);
    onlooker.waitFor(placeInWindow, isDrawn, patience);
    const Window window(onlooker);
    double before = 0;
    for (int opening = 0; opening < openings; ++opening) {
        onlooker.waitForRest(window.middle());
        before = before > 0 ? before : residentMegabytes(program.pid());
        const auto start = Clock::now();
        onlooker.press(window.galleryButton());
        add(firstCell, start, onlooker.waitFor(window.middleOfFirstPhoto(), Photos::isThere, patience));
        if (opening + 1 == openings)
            break;
        onlooker.press(window.besideSheets());
    }
    const auto opened = residentMegabytes(program.pid());
    double highest = opened;
    for (int turn = 0; turn < wheelTurns; ++turn) {
        onlooker.turnWheel(window.firstPhoto(), 8);
        std::this_thread::sleep_for(10ms);
        highest = std::max(highest, residentMegabytes(program.pid()));
    }
    onlooker.waitForRest(window.middle());
    table.figure("gallery: memory, before it is opened", before, "MB");
    table.figure("gallery: growth, opened " + std::to_string(openings) + " times", opened - before, "MB");
    table.figure("gallery: growth, scrolled through", highest - opened, "MB", 60);
    table.print();
}

void printLoad(const std::string& moment)
{
    double oneMinute = 0;
    std::ifstream("/proc/loadavg") >> oneMinute;
    LatencyTable table("The machine at the " + moment);
    table.figure("load", oneMinute, "");
    table.print();
}

} // namespace

int main()
{
    const bench::Laptop laptop("1280x800x24");
    Onlooker onlooker;
    onlooker.paintDesktop(desktopColor);
    printLoad("beginning");
    measureStart(onlooker);
    measureIdle(onlooker);
    measureClicks(onlooker);
    measureGallery(onlooker);
    printLoad("end");
}
