#include "responses/CameraManager.h"

#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <limits>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class CameraManagerTest : public ::testing::Test {
protected:
    CameraManagerTest()
    {
        setenv("TZ", "UTC", 1); // NOLINT(concurrency-mt-unsafe): for the time of day in file names
        tzset();                // NOLINT(concurrency-mt-unsafe)
    }

    // What becomes of the user's answers and of the camera's failures, IntruderPhotoTest checks with real ones.
    void capture(double delay)
    {
        manager->captureIntruderPhoto("why", delay, [this](auto file) { answers.push_back(file); });
    }
    const std::vector<std::string>& lines() { return laptop.diagnostics().lines; }

    IcuText text;
    SimulatedLaptop laptop{text};
    SimulatedCamera& camera = laptop.camera();
    std::optional<CameraManager> manager{laptop.platform()};
    std::vector<std::optional<std::filesystem::path>> answers;
};

TEST_F(CameraManagerTest, APhotoIsTakenAfterTheDelayAndStoredWithTheLightOffAgain)
{
    capture(2);
    laptop.settle();
    EXPECT_TRUE(manager->isCapturing.get());
    EXPECT_TRUE(camera.isLightOn);
    laptop.advance(1999ms);
    EXPECT_EQ(camera.shotsRequested(), 0);
    laptop.advance(1ms);

    ASSERT_EQ(answers.size(), 1U);
    ASSERT_TRUE(answers[0]);
    EXPECT_EQ(laptop.files().contents.at(*answers[0]), "a picture");
    EXPECT_EQ(*answers[0], "/home/owner/Pictures/Kestrovan_Intruders/Intruder_2026-03-01_14-05-11.jpg");
    EXPECT_THAT(lines(), ElementsAre("✅ Intruder photo saved to: " + answers[0]->string() + " after 2.0s delay"));
    EXPECT_FALSE(manager->isCapturing.get());
    EXPECT_FALSE(camera.isLightOn);
}

TEST_F(CameraManagerTest, TheDelayIsASecondAtLeastAndTheLineSaysWhatWasAskedFor)
{
    for (const double delay : {0.0, 0.5, -3.0, std::numeric_limits<double>::quiet_NaN()}) {
        capture(delay);
        laptop.advance(999ms);
        EXPECT_THAT(answers, IsEmpty()) << delay;
        laptop.advance(1ms);
        EXPECT_EQ(answers.size(), 1U) << delay;
        answers.clear();
    }
    EXPECT_THAT(lines()[1], HasSubstr(" after 0.5s delay"));

    capture(1e300);
    laptop.advance(1min);
    EXPECT_THAT(answers, IsEmpty());
}

TEST_F(CameraManagerTest, AnEmptyPictureIsNone)
{
    camera.nextPhoto = Camera::Photo{""};
    capture(1);
    laptop.advance(1s);
    EXPECT_THAT(answers, ElementsAre(std::nullopt));
    EXPECT_THAT(lines(), ElementsAre("Error capturing photo: nil"));
    EXPECT_FALSE(camera.isLightOn);
}

TEST_F(CameraManagerTest, WithoutAPicturesFolderPhotosGoToTheDataFolderAndTheLaterOfASecondStays)
{
    laptop.files().hasPictures = false;
    capture(1);
    laptop.advance(100ms);
    camera.nextPhoto = Camera::Photo{"a later picture"};
    laptop.advance(900ms);
    capture(1);
    laptop.advance(1s);
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0]->parent_path(), "/home/owner/.local/share/Kestrovan_Intruders");
    EXPECT_EQ(manager->intruderDirectory(), answers[0]->parent_path());

    camera.isSlow = true;
    capture(1);
    capture(1);
    laptop.advance(1s);
    camera.deliver();
    laptop.settle();
    EXPECT_EQ(laptop.files().contents.size(), 3U) << "two photos of one second are one file";
}

TEST_F(CameraManagerTest, ACaptureThatFollowsSoonKeepsTheCameraOnAndGetsItsPhoto)
{
    capture(2);
    laptop.advance(1500ms);
    capture(2);
    laptop.advance(500ms);
    EXPECT_EQ(answers.size(), 1U);
    EXPECT_TRUE(camera.isLightOn);
    laptop.advance(1500ms);
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_TRUE(answers[1]);
    EXPECT_FALSE(camera.isLightOn);
}

} // namespace
} // namespace kestrovan
