#include "responses/AlarmManager.h"

#include "platform/Diagnostics.h"
#include "platform/Platform.h"
#include "platform/SystemVolume.h"
#include "platform/Workspace.h"
#include "responses/SirenSynthesis.h"

#include <mutex>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto enforcementInterval = 400ms;
constexpr auto enforcementLeeway = 50ms;
constexpr auto testLength = 2000ms;
constexpr auto untilStarted = 300ms; // by then the program has shown itself, and nobody has armed yet

} // namespace

/// Made once, by a worker soon after the start, or by the main thread if it cannot wait for that.
class AlarmManager::Siren {
public:
    const WavFile& wav()
    {
        std::call_once(once_, [this] { wav_ = std::make_shared<const std::vector<std::byte>>(synthesizeSiren()); });
        return wav_;
    }

private:
    std::once_flag once_;
    WavFile wav_;
};

AlarmManager::AlarmManager(const Platform& platform)
    : audioOutput_(platform.audioOutput), systemVolume_(platform.systemVolume), workspace_(platform.workspace),
      mainQueue_(platform.mainQueue), diagnostics_(platform.diagnostics), sirenWavData_(std::make_shared<Siren>()),
      volumeQueue_(platform.workers.makeSerialQueue("com.kestrovan.volume"))
{
    platform.workers.runAfter(untilStarted, Workers::Priority::userInitiated,
                              [siren = sirenWavData_] { siren->wav(); });
}

AlarmManager::~AlarmManager()
{
    stopAlarm();
}

void AlarmManager::startAlarm()
{
    if (isPlaying)
        return;
    isPlaying = true;
    maximizeVolume();
    startVolumeEnforcement();
    startSiren();
    workspace_.beep();
}

void AlarmManager::stopAlarm()
{
    if (!isPlaying)
        return;
    isPlaying = false;
    volumeEnforceTimer_.reset();
    volumeHold_.reset();
    audioPlayer_.reset();
}

void AlarmManager::playTestBeep()
{
    maximizeVolume();
    // The delayed task alone keeps the player alive: a test runs to its end whatever the alarm does meanwhile.
    const std::shared_ptr<AudioPlayer> player = audioOutput_.makePlayer(sirenWavData_->wav()).player;
    if (!player)
        return;
    player->setVolume(1.0F);
    player->play();
    mainQueue_.postAfter(testLength, [player] { player->stop(); });
}

void AlarmManager::maximizeVolume()
{
    systemVolume_.maximize();
}

void AlarmManager::startVolumeEnforcement()
{
    // The tick alone would leave a muted siren silent for up to one interval; the hold undoes what is noticed at once.
    volumeHold_ = systemVolume_.keepAtMaximum();
    volumeEnforceTimer_ = volumeQueue_->repeat(enforcementInterval, enforcementLeeway, [this] { maximizeVolume(); });
}

void AlarmManager::startSiren()
{
    auto [player, error] = audioOutput_.makePlayer(sirenWavData_->wav());
    if (!player) {
        diagnostics_.line("AVAudioPlayer error: " + error);
        return;
    }
    player->setLooping(true);
    player->setVolume(1.0F);
    player->play();
    audioPlayer_ = std::move(player);
}

} // namespace kestrovan
