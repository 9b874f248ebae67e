#include "rehearsal/Rehearsal.h"

#include "core/IntruderRecord.h"
#include "core/SettingsKeys.h"
#include "platform/simulated/SimulatedPicture.h"
#include "responses/WavEncoding.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <thread>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

// Short enough that the timeline shows what a person would tell apart.
constexpr auto slice = 50ms;
constexpr const char* ownersPin = "7391";
constexpr std::uint32_t kioskOptions = 506;

bool isWholeJpeg(const std::string& bytes)
{
    return bytes.size() > 1000 && bytes.starts_with("\xFF\xD8\xFF") && bytes.ends_with("\xFF\xD9");
}

bool writeFile(const std::filesystem::path& file, std::string_view bytes)
{
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return stream.good();
}

bool isSilent(const std::vector<std::int16_t>& samples)
{
    return std::ranges::all_of(samples, [](auto sample) { return sample == 0; });
}

// How loud the quietest tenth of a second is: a gap would show as nothing.
int quietestTenth(const std::vector<std::int16_t>& samples)
{
    constexpr std::size_t length = std::size_t{wavFramesPerSecond} / 10 * 2;
    int quietest = 32767;
    for (std::size_t start = 0; start + length <= samples.size(); start += length) {
        int peak = 0;
        for (std::size_t i = start; i < start + length; ++i)
            peak = std::max(peak, std::abs(static_cast<int>(samples[i])));
        quietest = std::min(quietest, peak);
    }
    return quietest;
}

} // namespace

Rehearsal::Rehearsal(Text& text, DeterrentScreens& screens, RehearsalOptions options)
    : options_(std::move(options)), laptop_(text), guard_(laptop_.platform(), screens),
      timeline_(laptop_, guard_.appState)
{
    laptop_.camera().nextPhoto = Camera::Photo{pictureOfSomebody()};
}

bool Rehearsal::run()
{
    guard().setLanguage(options_.language);
    guard().togglePinRequirement(true);
    timeline_.look();
    arm();
    robbery();
    breakout();
    wrongPin();
    rightPin();
    checkSiren();
    checkPhoto();
    const bool written = writeResults();
    std::cout << (timeline_.failures() == 0 && written ? "The rehearsal went well." : "The rehearsal FAILED.")
              << std::endl;
    return timeline_.failures() == 0 && written;
}

void Rehearsal::pass(std::chrono::milliseconds duration)
{
    for (; duration > 0ms; duration -= slice) {
        if (options_.realTime)
            std::this_thread::sleep_for(slice);
        laptop_.advance(slice);
        timeline_.look();
    }
}

void Rehearsal::type(const std::string& digits)
{
    for (const char digit : digits) {
        laptop_.type(std::string(1, digit));
        pass(200ms);
    }
    laptop_.press(KeyEvent::returnKey);
    pass(slice);
}

void Rehearsal::arm()
{
    timeline_.note("the owner arms the guard and goes for a coffee");
    guard().startArming();
    pass(5s);
    timeline_.expect(guard().guardState->isArmed(), "the guard is armed after its countdown");
    timeline_.expect(laptop_.power().declaredVeto && laptop_.holds().count() == 4,
                     "the machine is kept awake: two assertions, an activity, a child process");
    timeline_.expect(!laptop_.camera().isLightOn && laptop_.desktop().presentationOptions == 0,
                     "camera and keyboard are left alone so far");
}

void Rehearsal::robbery()
{
    timeline_.note("somebody pulls the charger");
    alarmStart_ = laptop_.time().steadyNow();
    laptop_.unplugCharger();
    timeline_.look();
    timeline_.expect(laptop_.speaker().isLooping(), "the siren sounds at once");
    timeline_.expect(laptop_.speaker().volumePercent() == 100 && !laptop_.speaker().isMuted(), "at full volume");
    pass(1s);
    timeline_.note("they mute it, ask for sleep, and close the lid");
    laptop_.speaker().setVolume(5, true);
    timeline_.expect(!laptop_.askForSleep(), "sleep is refused");
    laptop_.closeLid();
    pass(1s);
    timeline_.expect(!laptop_.speaker().isMuted() && laptop_.speaker().volumePercent() == 100, "it stays loud");
    timeline_.expect(guard().guardState.get() == GuardState::alarmTriggered(AlarmReason::chargerDisconnected),
                     "it is one alarm, with its first reason");
    pass(2s);
}

void Rehearsal::breakout()
{
    timeline_.note("they try to get away from the screen: every key but the PIN's, power-off, dark screens");
    timeline_.expect(laptop_.desktop().presentationOptions == kioskOptions && laptop_.desktop().monitors() == 1,
                     "the desktop is locked down, the keys are filtered once");
    int reached = 0;
    for (const auto* key : {"q", "w", "\t", " ", "é", ""}) {
        reached += laptop_.desktop().press({KeyEvent::Type::flagsChanged, KeyEvent::otherKey, {}}) ? 0 : 1;
        reached += laptop_.type(key) ? 0 : 1;
        pass(100ms);
    }
    timeline_.expect(reached == 0 && guard().enteredPin->empty(), "all twelve keys are swallowed and enter nothing");
    laptop_.powerOff();
    laptop_.screensSleep();
    pass(500ms);
    timeline_.expect(laptop_.speaker().isLooping() && laptop_.holds().count() == 4, "siren and holds stay as they are");
}

void Rehearsal::wrongPin()
{
    timeline_.note("they type 0000");
    type("0000");
    timeline_.expect(guard().guardState->isAlarmTriggered() && guard().pinError, "a wrong PIN stops nothing");
    timeline_.note("and try other keys");
    const bool letterSwallowed = laptop_.type("q");
    timeline_.expect(letterSwallowed && guard().enteredPin->size() == 4, "which are swallowed");
    laptop_.press(KeyEvent::escape);
    pass(1s);
}

void Rehearsal::rightPin()
{
    timeline_.note("the owner is back, plugs the charger in and types the PIN");
    laptop_.openLid();
    laptop_.plugCharger();
    type(ownersPin);
    alarmEnd_ = laptop_.time().steadyNow();
    timeline_.expect(guard().guardState->isDisarmed(), "the guard is disarmed");
    pass(1s);
    timeline_.expect(laptop_.speaker().playing() == 0, "the siren is silent");
    timeline_.expect(laptop_.holds().count() == 0 && !laptop_.power().declaredVeto, "the machine may sleep again");
    timeline_.expect(laptop_.desktop().presentationOptions == 0 && !laptop_.type("q"), "the keyboard is free again");
}

void Rehearsal::checkSiren()
{
    const auto heard = laptop_.speaker().render(alarmStart_ + slice, alarmEnd_ - slice);
    timeline_.expect(quietestTenth(heard) > 20000, "the siren was loud all the time between");
    timeline_.expect(isSilent(laptop_.speaker().render(alarmEnd_, laptop_.time().steadyNow())),
                     "and not a moment longer");
}

void Rehearsal::checkPhoto()
{
    const auto stored = laptop_.settings().read<SettingsData>(settingsKey::intruderRecords);
    const auto log = stored ? decodeIntruderRecords(stored->bytes) : std::nullopt;
    timeline_.expect(log && *log == guard().intruderRecords.get() && log->size() == 1,
                     "the log of intruders reads back from the settings as one photo");
    if (!log || log->empty())
        return;
    const auto& record = log->front();
    timeline_.note(record.triggerReason + "  " + record.imagePath);
    timeline_.expect(record.triggerReason == localizedDescription(AlarmReason::chargerDisconnected, options_.language),
                     "with the reason of the alarm");
    const auto photo = laptop_.files().contents.find(record.imagePath);
    timeline_.expect(photo != laptop_.files().contents.end() && isWholeJpeg(photo->second),
                     "and a whole JPEG file where it says");
    timeline_.expect(!laptop_.camera().isLightOn && laptop_.camera().shotsRequested() == 1, "the camera is off again");
}

bool Rehearsal::writeResults()
{
    std::error_code error;
    std::filesystem::create_directories(options_.folder, error);
    const auto wav = encodeWav(laptop_.speaker().render({}, laptop_.time().steadyNow()));
    std::string timeline;
    for (const auto& line : timeline_.lines())
        timeline += line + '\n';
    const bool written =
        writeFile(options_.folder / "siren.wav", {reinterpret_cast<const char*>(wav.data()), wav.size()}) &&
        writeFile(options_.folder / "timeline.txt", timeline) && writePhotos();
    std::cout << (written ? "Timeline, siren, photo and log are in " : "Cannot write to ") << options_.folder.string()
              << std::endl;
    return written;
}

bool Rehearsal::writePhotos()
{
    const auto log = laptop_.settings().read<SettingsData>(settingsKey::intruderRecords);
    bool written = log && writeFile(options_.folder / "intruders.json", log->bytes);
    for (const auto& [file, bytes] : laptop_.files().contents)
        written = writeFile(options_.folder / file.filename(), bytes) && written;
    return written;
}

} // namespace kestrovan
