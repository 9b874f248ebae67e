#include "core/Guard.h"
#include "core/NoDeterrentScreens.h"
#include "platform/linux/GstreamerCamera.h"
#include "platform/linux/IcuText.h"
#include "platform/linux/JsonSettingsStore.h"
#include "platform/linux/PosixFiles.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ThreadWorkers.h"
#include "platform/simulated/SimulatedLaptop.h"
#include "rigs/CollectedLines.h"
#include "rigs/Deadline.h"
#include "rigs/Disk.h"
#include "rigs/LoopMainQueue.h"
#include "rigs/MixedPlatform.h"
#include "rigs/TemporaryFolder.h"
#include "rigs/VirtualCamera.h"

#include <gmock/gmock.h>
#include <sys/mount.h>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using rigs::CameraConduct;
using rigs::contentOf;
using rigs::modeOf;
using rigs::VirtualCamera;
using testing::HasSubstr;

constexpr const char* refusal = "Camera permission not granted or self deallocated.";

/// A guard whose camera, files and settings are a real machine's, and its user.
class Machine {
public:
    Machine(const std::filesystem::path& home, std::vector<std::function<void(bool)>>& questions,
            std::chrono::milliseconds pictureTimeLimit)
        : settings_(home / ".config/kestrovan/settings.json", lines),
          camera_({.answerFile = home / ".config/kestrovan/camera.json",
                   .ask = [&questions](auto answer) { questions.push_back(std::move(answer)); },
                   .pictureTimeLimit = pictureTimeLimit},
                  files_, lines),
          cameraManager(rigs::mixed(laptop.platform(), {.mainQueue = &mainQueue,
                                                        .workers = &workers_,
                                                        .clock = &clock_,
                                                        .diagnostics = &lines,
                                                        .files = &files_,
                                                        .camera = &camera_})),
          guard(rigs::mixed(laptop.platform(), {.clock = &clock_, .settings = &settings_, .files = &files_}),
                {.powerMonitor = others_.powerMonitor,
                 .lidMonitor = others_.lidMonitor,
                 .alarmManager = others_.alarmManager,
                 .cameraManager = cameraManager,
                 .updateManager = others_.updateManager,
                 .powerAssertionManager = others_.powerAssertionManager,
                 .securityLockdownManager = others_.securityLockdownManager,
                 .deterrentScreens = screens_})
    {
        guard.setCameraDelay(1);
    }

    /// False if the capture does not come to an end.
    bool alarm()
    {
        guard.triggerAlarm(AlarmReason::lidClosed);
        laptop.settle();
        return mainQueue.runUntil([this] { return cameraManager.isCapturing.get(); }) &&
               mainQueue.runUntil([this] { return !cameraManager.isCapturing; }) && runToTheAnswer();
    }
    bool sounds()
    {
        laptop.settle();
        return guard.guardState->isAlarmTriggered() && laptop.speaker().isLooping();
    }

    rigs::CollectedLines lines;
    rigs::LoopMainQueue mainQueue;
    IcuText text;
    SimulatedLaptop laptop{text};

private:
    // The answer is posted behind the end of the capture, once the file is written.
    bool runToTheAnswer()
    {
        return mainQueue.runUntil([this] { return guard.intruderRecords->size() == 1 || !lines.all().empty(); }) &&
               (mainQueue.runFor(50ms), true);
    }

    PosixFiles files_;
    SystemClock clock_;
    JsonSettingsStore settings_;
    GstreamerCamera camera_;
    ThreadWorkers workers_; // ends before what it works on
    NoDeterrentScreens screens_;
    Guard others_{laptop.platform(), screens_};

public:
    CameraManager cameraManager;
    AppState guard;
};

class IntruderPhotoTest : public testing::Test {
protected:
    IntruderPhotoTest()
    {
        setenv("HOME", home.path().c_str(), 1);
        for (const auto* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            unsetenv(variable);
    }
    ~IntruderPhotoTest() override
    {
        machine.reset();
        device.reset();
        g_object_unref(mock);
    }

    void plug(VirtualCamera::Model model = {}) { device = std::make_unique<VirtualCamera>(mock, 0, std::move(model)); }
    void start(std::chrono::milliseconds pictureTimeLimit = 30s)
    {
        machine.reset();
        machine = std::make_unique<Machine>(home.path(), questions, pictureTimeLimit);
    }
    void startPermitted(std::chrono::milliseconds pictureTimeLimit = 30s)
    {
        std::filesystem::create_directories(home.path() / ".config/kestrovan");
        std::ofstream(home.path() / ".config/kestrovan/camera.json") << R"({"isGranted":true})";
        start(pictureTimeLimit);
    }
    void expectFailure(const std::string& line)
    {
        ASSERT_TRUE(machine->alarm());
        EXPECT_EQ(machine->lines.count(line), 1) << testing::PrintToString(machine->lines.all());
        EXPECT_EQ(machine->lines.all().size(), 1U) << testing::PrintToString(machine->lines.all());
        EXPECT_TRUE(machine->guard.intruderRecords->empty());
        EXPECT_TRUE(machine->sounds());
        EXPECT_TRUE(lightGoesOff());
    }
    // The camera is stopped behind the photo's back.
    bool lightGoesOff() const
    {
        return !device || rigs::waitUntil([this] { return !device->isOpen(); });
    }

    UMockdevTestbed* mock = umockdev_testbed_new();
    std::unique_ptr<VirtualCamera> device;
    TemporaryFolder home;
    std::filesystem::path photos = home.path() / "Pictures/Kestrovan_Intruders";
    std::vector<std::function<void(bool)>> questions;
    std::unique_ptr<Machine> machine;
};

TEST_F(IntruderPhotoTest, AnAlarmLeavesAPhotoForTheOwnerAloneAndARecordThatARestartReadsBack)
{
    plug();
    startPermitted();
    EXPECT_FALSE(device->isOpen());
    ASSERT_TRUE(machine->alarm());
    EXPECT_TRUE(lightGoesOff());

    ASSERT_EQ(machine->guard.intruderRecords->size(), 1U);
    const auto record = machine->guard.intruderRecords->front();
    const std::filesystem::path file = record.imagePath;
    EXPECT_EQ(file.parent_path(), photos);
    EXPECT_THAT(file.filename().string(), testing::MatchesRegex("Intruder_[0-9]+-[0-9-]+_[0-9-]+\\.jpg"));
    EXPECT_EQ(record.triggerReason, localizedDescription(AlarmReason::lidClosed, machine->guard.currentLanguage));
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(modeOf(photos), 0700U);
    EXPECT_GT(VirtualCamera::numberOf(contentOf(file)), 20U) << "not a second after the light went on";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(photos), {}), 1) << "something was left behind";
    EXPECT_THAT(machine->lines.all(),
                testing::ElementsAre("✅ Intruder photo saved to: " + file.string() + " after 1.0s delay"));
    EXPECT_TRUE(machine->sounds());

    start();
    EXPECT_EQ(machine->guard.intruderRecords.get(), std::vector{record});
}

TEST_F(IntruderPhotoTest, TheAlarmSoundsOnWhateverIsWrongWithTheCameraAndThatIsSaid)
{
    startPermitted();
    expectFailure("Camera unavailable: no camera found");
    plug({.conduct = CameraConduct::busy});
    startPermitted();
    expectFailure("Error capturing photo: /dev/video0 is in use by another program");
    device->setConduct(CameraConduct::neverDelivers);
    startPermitted(300ms);
    expectFailure("Error capturing photo: /dev/video0 delivers no picture");
}

// The thread sanitizer sees here whether everybody may go while others work for them.
TEST_F(IntruderPhotoTest, ItMayEndAtAnyMomentOfACapture)
{
    plug();
    for (const auto moment : {0ms, 300ms, 985ms, 995ms, 1005ms, 1015ms, 1030ms, 1060ms}) {
        startPermitted();
        machine->guard.triggerAlarm(AlarmReason::lidClosed);
        machine->laptop.settle();
        machine->mainQueue.runFor(moment);
        machine.reset();
        EXPECT_TRUE(lightGoesOff());
    }
}

TEST_F(IntruderPhotoTest, AFullDiskIsNamedAndKeepsNoPieceOfThePhoto)
{
    std::filesystem::create_directory(home.path() / "Pictures");
    ASSERT_EQ(mount("none", (home.path() / "Pictures").c_str(), "tmpfs", 0, "size=8k"), 0);
    plug();
    startPermitted();
    expectFailure("Failed to save intruder photo: ");
    EXPECT_THAT(machine->lines.all().front(), HasSubstr("No space left on device"));
    EXPECT_TRUE(std::filesystem::is_empty(photos));
    umount((home.path() / "Pictures").c_str());
}

TEST_F(IntruderPhotoTest, AnAlarmOverAnOpenQuestionTakesNoPhotoAndAsksNoSecondTime)
{
    plug();
    start();
    machine->guard.startArming();
    ASSERT_EQ(questions.size(), 1U);
    machine->guard.triggerAlarm(AlarmReason::lidClosed);
    ASSERT_TRUE(machine->mainQueue.runUntil([this] { return machine->lines.count(refusal) == 1; }));
    EXPECT_EQ(questions.size(), 1U);
    EXPECT_FALSE(machine->cameraManager.isCapturing);
    EXPECT_TRUE(machine->sounds());

    questions.front()(true);
    machine->guard.disarm(std::nullopt);
    EXPECT_TRUE(machine->guard.intruderRecords->empty());
    start();
    machine->guard.startArming();
    ASSERT_TRUE(machine->alarm());
    EXPECT_EQ(questions.size(), 1U) << "the answer is remembered";
    EXPECT_EQ(machine->guard.intruderRecords->size(), 1U);
    EXPECT_EQ(modeOf(home.path() / ".config/kestrovan/camera.json"), 0600U);
}

TEST_F(IntruderPhotoTest, ANoIsRememberedAndTheCameraNeverOpened)
{
    plug();
    start();
    machine->guard.startArming();
    questions.front()(false);
    for (int run = 0; run < 2; ++run) {
        machine->guard.triggerAlarm(AlarmReason::lidClosed);
        EXPECT_EQ(machine->lines.count(refusal), 1) << "at once";
        EXPECT_FALSE(device->isOpen());
        start();
    }
    EXPECT_EQ(questions.size(), 1U);
    EXPECT_EQ(device->picturesMade(), 0U);
}

TEST_F(IntruderPhotoTest, AQuestionThatIsClosedUnansweredIsPutAgainAtTheNextArming)
{
    plug();
    start();
    machine->guard.startArming();
    questions.clear();
    machine->guard.cancelArming();
    machine->guard.startArming();
    EXPECT_EQ(questions.size(), 1U);
}

} // namespace
} // namespace kestrovan
