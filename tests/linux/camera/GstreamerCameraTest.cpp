#include "platform/linux/GstreamerCamera.h"

#include "platform/simulated/SimulatedStorage.h"
#include "rigs/CollectedLines.h"
#include "rigs/Deadline.h"
#include "rigs/VirtualCamera.h"

#include <QImage>

#include <gmock/gmock.h>

#include <future>
#include <optional>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using rigs::CameraConduct;
using rigs::VirtualCamera;
using ::testing::HasSubstr;

constexpr auto patience = 30s;

class GstreamerCameraTest : public ::testing::Test {
protected:
    ~GstreamerCameraTest() override
    {
        camera.reset();
        devices.clear();
        g_object_unref(machine);
    }

    VirtualCamera& plug(int number, VirtualCamera::Model model = {})
    {
        return *devices.emplace_back(std::make_unique<VirtualCamera>(machine, number, std::move(model)));
    }
    void make(std::chrono::milliseconds pictureTimeLimit = patience)
    {
        camera.emplace(GstreamerCamera::Options{"/nowhere/camera.json", nullptr, pictureTimeLimit}, files, lines);
    }
    std::future<Camera::PhotoResult> request()
    {
        auto promise = std::make_shared<std::promise<Camera::PhotoResult>>();
        camera->capturePhoto([promise](const Camera::PhotoResult& result) { promise->set_value(result); });
        return promise->get_future();
    }
    Camera::PhotoResult shoot()
    {
        auto answer = request();
        return answer.wait_for(2 * patience) == std::future_status::ready ? answer.get() : Camera::Error{"no answer"};
    }
    std::string photo()
    {
        const auto result = shoot();
        const auto* taken = std::get_if<Camera::Photo>(&result);
        if (!taken)
            ADD_FAILURE() << std::get<Camera::Error>(result).description;
        return taken ? taken->jpeg : "";
    }
    std::string error()
    {
        const auto result = shoot();
        const auto* failure = std::get_if<Camera::Error>(&result);
        return failure ? failure->description : "a photo";
    }
    static void waitForPictures(const VirtualCamera& device, unsigned count)
    {
        ASSERT_TRUE(rigs::waitUntil([&] { return device.picturesMade() >= count; }, patience));
    }

    UMockdevTestbed* machine = umockdev_testbed_new();
    std::vector<std::unique_ptr<VirtualCamera>> devices;
    SimulatedFiles files;
    rigs::CollectedLines lines;
    std::optional<GstreamerCamera> camera;
};

TEST_F(GstreamerCameraTest, APictureIsTheCamerasOwnFileOfTheMomentAskedForAndTheLightGoesOffAfterIt)
{
    auto& device = plug(0);
    make();
    EXPECT_TRUE(camera->configure());
    EXPECT_FALSE(device.isOpen()) << "the light is on before it is asked for";

    for (int round = 0; round < 2; ++round) {
        camera->start();
        EXPECT_TRUE(camera->isRunning());
        waitForPictures(device, device.picturesMade() + 5);
        const auto made = device.picturesMade();
        const auto jpeg = photo();
        EXPECT_GT(VirtualCamera::numberOf(jpeg), made);
        EXPECT_EQ(jpeg, VirtualCamera::jpeg(VirtualCamera::numberOf(jpeg))) << "not as the camera made it";

        camera->stop();
        EXPECT_FALSE(camera->isRunning());
        EXPECT_FALSE(device.isStreaming());
        EXPECT_FALSE(device.isOpen());
    }
}

TEST_F(GstreamerCameraTest, PicturesThatWaitedSomewhereOnTheWayAreNotTheMomentAskedFor)
{
    auto& device = plug(0);
    device.setBacklog(300ms);
    make();
    camera->start();
    waitForPictures(device, 5);
    const auto made = device.picturesMade();
    EXPECT_GE(VirtualCamera::numberOf(photo()), made + 7) << "300 ms are nine pictures";
}

TEST_F(GstreamerCameraTest, ARawPictureBecomesAJpegOfItsSizeAndBrightness)
{
    plug(0, {.makesJpeg = false});
    make();
    camera->start();
    const auto jpeg = photo();
    const auto image = QImage::fromData(QByteArray::fromStdString(jpeg), "JPG");
    EXPECT_EQ(image.size(), QSize(VirtualCamera::width, VirtualCamera::height));
    EXPECT_LT(qGray(image.pixel(100, 240)), 5);
    EXPECT_GT(qGray(image.pixel(540, 240)), 250);
}

TEST_F(GstreamerCameraTest, WhatIsWrongWithTheCameraIsToldInItsOwnWords)
{
    make();
    EXPECT_FALSE(camera->configure());
    EXPECT_EQ(lines.count("Camera unavailable: no camera found"), 1);
    camera->start();
    EXPECT_THAT(error(), HasSubstr("no camera found"));

    auto& device = plug(0, {.conduct = CameraConduct::isNotACamera});
    EXPECT_FALSE(camera->configure());
    EXPECT_EQ(lines.count("Camera unavailable: /dev/video0 is not a camera"), 1);

    device.setConduct(CameraConduct::works);
    EXPECT_TRUE(camera->configure());
    camera->start();
    camera->stop();
    EXPECT_EQ(error(), "the camera is not running");
}

TEST_F(GstreamerCameraTest, ACameraUnpluggedMidwayIsAnErrorAndWorksOnceItIsBack)
{
    auto& device = plug(0);
    make();
    camera->start();
    waitForPictures(device, 3);
    device.setConduct(CameraConduct::isUnplugged);
    EXPECT_THAT(error(), HasSubstr("the camera was unplugged"));
    camera->stop();
    EXPECT_FALSE(device.isOpen());

    device.setConduct(CameraConduct::works);
    camera->start();
    EXPECT_FALSE(photo().empty());
}

TEST_F(GstreamerCameraTest, StoppingAndEndingWaitForNoPicture)
{
    auto& device = plug(0, {.conduct = CameraConduct::neverDelivers});
    make(1h);
    camera->start();
    auto stopped = request();
    waitForPictures(device, 2);
    camera->stop();
    ASSERT_EQ(stopped.wait_for(patience), std::future_status::ready);
    EXPECT_TRUE(std::holds_alternative<Camera::Error>(stopped.get()));

    camera->start();
    auto abandoned = request();
    waitForPictures(device, device.picturesMade() + 2);
    camera.reset();
    EXPECT_FALSE(device.isOpen());
    EXPECT_THROW(abandoned.get(), std::future_error) << "an answer to nobody";
}

TEST_F(GstreamerCameraTest, TheBuiltInCameraIsTheDefaultWhateverElseIsThere)
{
    plug(0, {.port = VirtualCamera::Port::software, .name = "Invented Pictures"});
    plug(1, {.port = VirtualCamera::Port::removable, .name = "Desk Camera"});
    plug(2, {.conduct = CameraConduct::isNotACamera});
    plug(3, {.name = "Integrated IR Camera"});
    auto& expected = plug(10, {.name = "First Camera"});
    make();
    camera->start();
    EXPECT_FALSE(photo().empty());
    EXPECT_GT(expected.picturesMade(), 0U);
}

} // namespace
} // namespace kestrovan
