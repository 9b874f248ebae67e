// From the request of a photo to its file on the disk, on virtual devices below V4L2, and what fifty of them leave in
// memory.
#include "LatencyTable.h"
#include "platform/linux/GstreamerCamera.h"
#include "platform/linux/IcuText.h"
#include "platform/linux/PosixFiles.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ThreadWorkers.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "responses/CameraManager.h"
#include "rigs/CollectedLines.h"
#include "rigs/LoopMainQueue.h"
#include "rigs/MixedPlatform.h"
#include "rigs/TemporaryFolder.h"
#include "rigs/VirtualCamera.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <thread>

using namespace kestrovan;
using namespace std::chrono_literals;
using bench::LatencyTable;
using rigs::VirtualCamera;

namespace {

double residentMegabytes()
{
    std::ifstream statistics("/proc/self/statm");
    double total = 0, resident = 0;
    statistics >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// A camera manager as in the program, its user's answer given, in front of one virtual device.
class Studio {
public:
    explicit Studio(bool makesJpeg)
        : device_(std::make_unique<VirtualCamera>(mock_, 0, VirtualCamera::Model{.makesJpeg = makesJpeg}))
    {}
    Studio(const Studio&) = delete;
    Studio& operator=(const Studio&) = delete;
    ~Studio()
    {
        device_.reset();
        g_object_unref(mock_);
    }

    /// As arming does, some seconds before anything can be photographed.
    void prepare()
    {
        camera_.authorization();
        std::this_thread::sleep_for(3s);
    }

    void photograph(LatencyTable::Row& row)
    {
        std::optional<std::optional<std::filesystem::path>> answer;
        const auto start = std::chrono::steady_clock::now();
        manager_.captureIntruderPhoto("a benchmark", 1.0, [&answer](auto file) { answer = std::move(file); });
        const bool isAnswered = queue_.runUntil([&answer] { return answer.has_value(); });
        const auto end = std::chrono::steady_clock::now();
        if (isAnswered && *answer && std::filesystem::file_size(**answer) > 0)
            row.add(end - start);
        else
            row.addFailure();
        queue_.runUntil([this] { return !device_->isOpen(); });
    }

private:
    /// The home of somebody who has said yes to the camera.
    struct Home : TemporaryFolder {
        Home()
        {
            setenv("HOME", path().c_str(), 1);
            std::ofstream(path() / "camera.json") << R"({"isGranted":true})";
        }
    };

    UMockdevTestbed* mock_ = umockdev_testbed_new();
    Home home_;
    std::unique_ptr<VirtualCamera> device_;
    IcuText text_;
    SimulatedLaptop others_{text_};
    rigs::LoopMainQueue queue_;
    rigs::CollectedLines lines_;
    SystemClock clock_;
    PosixFiles files_;
    GstreamerCamera camera_{{.answerFile = home_.path() / "camera.json", .ask = nullptr}, files_, lines_};
    ThreadWorkers workers_; // ends before what it works on
    CameraManager manager_{rigs::mixed(others_.platform(), {.mainQueue = &queue_,
                                                            .workers = &workers_,
                                                            .clock = &clock_,
                                                            .diagnostics = &lines_,
                                                            .files = &files_,
                                                            .camera = &camera_})};
};

void measureCamera(LatencyTable& table, const std::string& kind, bool makesJpeg)
{
    constexpr int runs = 50;
    auto& first = table.row(kind + ": the first photo, delay 1.0 s -> file on the disk", {bench::worst(1350)});
    auto& row = table.row(kind + ": the following, delay 1.0 s -> file on the disk", {bench::worst(1350)});
    Studio studio(makesJpeg);
    studio.prepare();
    studio.photograph(first);
    const auto before = residentMegabytes();
    for (int run = 1; run < runs; ++run)
        studio.photograph(row);
    table.figure(kind + ": memory after 50 photos, above the first", residentMegabytes() - before, "MB", 10);
}

} // namespace

int main()
{
    LatencyTable table("Camera");
    measureCamera(table, "JPEG camera", true);
    measureCamera(table, "raw camera", false);
    table.print();
}
