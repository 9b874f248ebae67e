#include "responses/AlarmManager.h"

#include "platform/linux/IcuText.h"
#include "platform/simulated/SimulatedLaptop.h"

#include <gmock/gmock.h>

namespace kestrovan {
namespace {

using namespace std::chrono_literals;

class AlarmManagerTest : public ::testing::Test {
protected:
    IcuText text;
    SimulatedLaptop laptop{text};
    SimulatedSpeaker& speaker = laptop.speaker();
    std::unique_ptr<AlarmManager> alarm = std::make_unique<AlarmManager>(laptop.platform());
};

TEST_F(AlarmManagerTest, AnAlarmLoopsAtFullVolumeUntilItOrItsManagerEnds)
{
    alarm->startAlarm();
    alarm->startAlarm();
    EXPECT_EQ(speaker.playing(), 1);
    EXPECT_EQ(speaker.beeps(), 1);
    EXPECT_EQ(speaker.volumePercent(), 100);

    laptop.advance(1s);
    EXPECT_GE(speaker.maximizations(), 3) << "whoever lowers it, and however";
    speaker.setVolume(5, true);
    EXPECT_EQ(speaker.volumePercent(), 100);
    EXPECT_TRUE(speaker.isLooping());

    alarm->stopAlarm();
    alarm->stopAlarm();
    EXPECT_EQ(speaker.playing(), 0);
    speaker.setVolume(10, true);
    laptop.advance(2s);
    EXPECT_TRUE(speaker.isMuted());
    alarm->startAlarm();
    alarm.reset();
    laptop.advance(1s);
    EXPECT_EQ(speaker.playing(), 0);
    EXPECT_EQ(laptop.time().waiting(), 0U);
}

TEST_F(AlarmManagerTest, WithoutAPlayerTheAlarmIsStillOn)
{
    speaker.failure = "no decoder";
    alarm->startAlarm();
    laptop.advance(1s);
    EXPECT_THAT(laptop.diagnostics().lines, ::testing::ElementsAre("AVAudioPlayer error: no decoder"));
    EXPECT_TRUE(alarm->isPlaying);
    EXPECT_EQ(speaker.beeps(), 1);
    EXPECT_GE(speaker.maximizations(), 3);
    alarm->stopAlarm();
    EXPECT_FALSE(alarm->isPlaying);
    EXPECT_FALSE(speaker.isHeld());
}

TEST_F(AlarmManagerTest, ATestSoundEndsByItselfAndLeavesTheAlarmAlone)
{
    alarm->startAlarm();
    alarm->playTestBeep();
    EXPECT_EQ(speaker.playing(), 2);
    laptop.advance(2s);
    EXPECT_EQ(speaker.playing(), 1);
    EXPECT_TRUE(alarm->isPlaying);
    alarm->stopAlarm();

    alarm->playTestBeep();
    EXPECT_FALSE(alarm->isPlaying);
    alarm.reset();
    EXPECT_EQ(speaker.playing(), 1);
    laptop.advance(2s);
    EXPECT_EQ(speaker.playing(), 0);
}

} // namespace
} // namespace kestrovan
