#include "SoundTest.h"

namespace kestrovan {
namespace {

// Waiting for a server that does not answer takes 30 s, for one that is not there a moment: no caller waits.
constexpr auto atOnce = 1s;

class SoundFaultsTest : public SoundTest {};

INSTANTIATE_TEST_SUITE_P(OnPulseAudio, SoundFaultsTest, ::testing::Values(SoundServer::Kind::pulseAudio));
INSTANTIATE_TEST_SUITE_P(OnPipeWire, SoundFaultsTest, ::testing::Values(SoundServer::Kind::pipeWire));

TEST_P(SoundFaultsTest, WithoutAServerTheSirenBeginsWhenOneComesAndAnAlertIsLost)
{
    Subscription hold;
    std::unique_ptr<AudioPlayer> player;
    EXPECT_LT(timeOf([&] {
                  volume.maximize();
                  hold = volume.keepAtMaximum();
                  player = startSiren();
                  alert.play();
              }),
              atOnce);
    EXPECT_TRUE(waitUntil([&] { return lines.count("Sound server unavailable: ") == 1; }));

    ASSERT_TRUE(server.start());
    EXPECT_TRUE(becomesLoud("first"));
    const auto inputs = SoundServer::pactl("list sink-inputs");
    EXPECT_NE(inputs.find("\"Siren\""), std::string::npos);
    EXPECT_EQ(inputs.find("\"Alert\""), std::string::npos) << "nobody expects it any more";
    EXPECT_EQ(lines.all().size(), 1U);
}

TEST_P(SoundFaultsTest, TheSirenSurvivesTheDeathOfTheServer)
{
    ASSERT_TRUE(startAndConnect());
    const auto hold = volume.keepAtMaximum();
    const auto player = startSiren();
    ASSERT_TRUE(becomesLoud("first"));
    for (int death = 1; death <= 2; ++death) {
        const auto saidBefore = lines.count("Sound server unavailable: ");
        server.kill();
        EXPECT_TRUE(waitUntil([&] { return lines.count("Sound server unavailable: ") == saidBefore + 1; }));
        ASSERT_TRUE(server.start());
        SoundServer::pactl("set-sink-volume first 10%");
        EXPECT_TRUE(becomesLoud("first"));
        EXPECT_TRUE(SoundServer::isLoud("first"));
    }
}

TEST_P(SoundFaultsTest, NobodyWaitsForAServerThatHangs)
{
    ASSERT_TRUE(startAndConnect());
    server.signal(SIGSTOP);
    EXPECT_LT(timeOf([&] {
                  const auto hold = volume.keepAtMaximum();
                  for (int round = 0; round < 3; ++round) {
                      volume.maximize();
                      const auto player = startSiren();
                      alert.play();
                  }
              }),
              atOnce);
    const auto player = startSiren();
    server.signal(SIGCONT);
    EXPECT_TRUE(becomesLoud("first"));
    EXPECT_TRUE(waitUntil([] { return SoundServer::inputs() == 1; })) << "what was begun meanwhile has ended";
}

TEST_P(SoundFaultsTest, EndingWaitsForNothing)
{
    ASSERT_TRUE(server.start());
    auto owner = std::make_unique<PulseConnection>(lines);
    auto speakers = std::make_unique<PulseAudioOutput>(*owner, lines);
    const auto player = speakers->makePlayer(siren()).player;
    player->play();
    ASSERT_TRUE(waitUntil([] { return SoundServer::inputs() == 1; }));
    server.signal(SIGSTOP);
    EXPECT_LT(timeOf([&] {
                  speakers.reset();
                  owner.reset();
                  player->play(); // A task that waits its turn may have kept the player.
                  player->stop();
              }),
              atOnce);
    server.signal(SIGCONT);
    EXPECT_TRUE(waitUntil([] { return SoundServer::inputs() == 0; }));
}

} // namespace
} // namespace kestrovan
