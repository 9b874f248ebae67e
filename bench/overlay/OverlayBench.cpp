// The deterrent on two screens of a real X server, drawn in software: how soon it is there, and what it costs while it
// is.
#include "LatencyTable.h"
#include "Onlooker.h"
#include "core/Guard.h"
#include "overlay/FullscreenOverlayManager.h"
#include "overlay/HostingView.h"
#include "platform/linux/IcuText.h"
#include "platform/linux/MakeScreens.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ThreadWorkers.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "rigs/CollectedLines.h"
#include "rigs/Memory.h"
#include "rigs/MixedPlatform.h"
#include "rigs/QtProgram.h"
#include "rigs/TemporaryFolder.h"
#include "rigs/TwoOutputs.h"

#include <QImage>
#include <QQuickWindow>
#include <QTimer>

#include <ctime>

using namespace kestrovan;
using namespace std::chrono_literals;
using bench::LatencyTable;
using rigs::GlaringProgram;
using rigs::mebibytes;
using rigs::TwoOutputs;

namespace {

constexpr int runs = 200;
constexpr auto costDuration = 10s;

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// The guard, whose deterrent is real; the rest of its laptop is not.
class Desk {
public:
    Desk() { views_.load(); }

    bool isReady() const { return outputs_.isReady() && screens_->screens().size() == 2; }

    template <class Condition>
    static bool until(Condition condition)
    {
        return rigs::QtProgram::until(condition);
    }
    static void live(std::chrono::milliseconds duration)
    {
        QTimer::singleShot(duration, [] { QCoreApplication::exit(); });
        QCoreApplication::exec();
    }

    void measureAlarm(LatencyTable::Row& covered, LatencyTable::Row& drawn)
    {
        const auto desktop = other_.open(GlaringProgram::Kind::popUp, {0, 0, 3840, 1080});
        until([&] { return other_.colorOf({0, 0, 3840, 1080}) == GlaringProgram::glare; });
        onlooker_.watch();
        const auto start = bench::Onlooker::Clock::now();
        state_.triggerAlarm(AlarmReason::test);
        const bool isThere = until([&] { return onlooker_.isDone(); }) && onlooker_.isAllCovered();
        if (isThere) {
            covered.add(onlooker_.covered() - start);
            drawn.add(onlooker_.drawn() - start);
        } else {
            covered.addFailure();
            drawn.addFailure();
        }
        state_.disarm(std::nullopt);
        until([&] { return !onlooker_.isAllCovered(); });
        other_.close(desktop);
    }

    /// Percent of a processor that one screen takes.
    double costOfAlarm()
    {
        state_.triggerAlarm(AlarmReason::test);
        const auto cost = costNow() / 2;
        state_.disarm(std::nullopt);
        return cost;
    }
    double costOfArmed()
    {
        arm();
        return costNow() / 2;
    }
    double costInTheDark()
    {
        outputs_.unplug(0);
        outputs_.unplug(1);
        const auto cost = costNow() / 2;
        state_.disarm(std::nullopt);
        plugBoth();
        return cost;
    }

    double memoryOfSecondScreen()
    {
        outputs_.unplug(1);
        until([&] { return screens_->screens().size() == 1; });
        arm();
        live(1s);
        const auto one = mebibytes("VmRSS:");
        state_.disarm(std::nullopt);
        plugBoth();
        arm();
        live(1s);
        const auto two = mebibytes("VmRSS:");
        state_.disarm(std::nullopt);
        return two - one;
    }

    void measureWallpaper(LatencyTable& table, const std::string& format)
    {
        const auto file = (folder_.path() / ("picture." + format)).string();
        savePicture(file);
        arm();
        live(1s);
        rigs::forgetPeak();
        const auto before = mebibytes("VmRSS:");
        auto& row = table.row("50 megapixels of " + format + " chosen -> on both screens", {bench::worst(1000)});
        const auto start = bench::Onlooker::Clock::now();
        state_.customImagePath = file;
        const auto isRed = [](std::optional<std::uint32_t> color) { return color && (*color >> 16U) > 0x70; };
        if (until([&] { return isRed(other_.colorOf({5, 5, 1, 1})) && isRed(other_.colorOf({3830, 5, 1, 1})); }))
            row.add(bench::Onlooker::Clock::now() - start);
        else
            row.addFailure();
        table.figure("  its memory, at most meanwhile", mebibytes("VmHWM:") - before, "MiB");
        live(1s);
        table.figure("  its memory, then", mebibytes("VmRSS:") - before, "MiB");
        state_.customImagePath = std::nullopt;
        state_.disarm(std::nullopt);
        live(100ms);
    }

private:
    void plugBoth()
    {
        outputs_.plug(0);
        outputs_.plug(1);
        until([&] { return screens_->screens().size() == 2; });
    }
    void arm()
    {
        state_.armDelayDuration = 0;
        state_.startArming();
        until([&] { return state_.guardState->isArmed() && onlooker_.isAllCovered(); });
    }
    static double costNow()
    {
        live(2s);
        const auto before = processorSeconds();
        live(costDuration);
        return 100 * (processorSeconds() - before) / std::chrono::duration<double>(costDuration).count();
    }
    static void savePicture(const std::string& file)
    {
        QImage picture(8660, 5774, QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixel(x, y, qRgb(250, (x ^ y) & 0x7F, (x * y) & 0x3F));
        picture.save(QString::fromStdString(file));
    }

    TwoOutputs outputs_{TwoOutputs::fullHd, TwoOutputs::fullHd};
    rigs::QtProgram program_{"xcb"};
    QtMainQueue mainQueue_;
    SystemClock clock_;
    rigs::CollectedLines lines_;
    IcuText text_;
    SimulatedLaptop laptop_{text_};
    std::unique_ptr<Screens> screens_ = makeScreens();
    ThreadWorkers workers_;
    const Platform platform_ =
        rigs::mixed(laptop_.platform(),
                    {.mainQueue = &mainQueue_, .clock = &clock_, .diagnostics = &lines_, .screens = screens_.get()});
    HostingViews views_{rigs::mixed(platform_, {.workers = &workers_})};
    FullscreenOverlayManager manager_{platform_,
                                      [this](auto& guard, auto& screens) { return views_.make(guard, screens); }};
    Guard guard_{platform_, manager_};
    AppState& state_ = guard_.appState;
    TemporaryFolder folder_;
    GlaringProgram other_;
    bench::Onlooker onlooker_{{outputs_.screens().begin(), outputs_.screens().end()}};
};

} // namespace

int main()
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    Desk desk;
    if (!desk.isReady())
        return 1;
    LatencyTable table("The deterrent on two screens of 1920x1080, drawn in software");
    auto& covered = table.row("alarm -> no pixel of anything else");
    auto& drawn = table.row("alarm -> first frame on both screens", {bench::p95(150)});
    table.figure("memory of a second screen", desk.memoryOfSecondScreen(), "MiB", 25);
    for (int run = 0; run < runs; ++run)
        desk.measureAlarm(covered, drawn);
    table.figure("strobe, of a processor and screen", desk.costOfAlarm(), "%", 18);
    table.figure("armed, glowing, of a processor and screen", desk.costOfArmed(), "%", 5);
    table.figure("armed, nothing to be seen, of a processor and screen", desk.costInTheDark(), "%", 0.5);
    for (const auto* format : {"jpg", "png"})
        desk.measureWallpaper(table, format);
    table.print();
}
