#include "GuardTest.h"

#include <random>

namespace kestrovan::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

#ifdef __SANITIZE_THREAD__
constexpr bool watchesThreads = true; // each step takes ten times as long, and there is but one thread
#else
constexpr bool watchesThreads = false;
#endif
constexpr milliseconds second{1000};
constexpr milliseconds pollInterval{150}; ///< of the lid, counted from the start of the program
constexpr auto never = milliseconds::max();
constexpr const char* rightPin = "7391";

/// The guard in one page: what it should be doing, whatever has happened to it.
struct Model {
    enum class State { disarmed, arming, armed, alarm };

    State state = State::disarmed;
    AlarmReason reason = AlarmReason::test;
    bool pinOn = false;
    bool lidOn = true;
    bool chargerOn = true;
    bool armedScreenOn = true;
    bool alarmScreenOn = true;
    bool screenShown = false;
    bool pinError = false;
    std::string entry;
    std::int64_t countdown = 0;
    std::int64_t failures = 0;
    std::int64_t lockout = 0;
    milliseconds now{};
    milliseconds armTick = never;
    milliseconds lockoutTick = never;

    void arm()
    {
        if (state != State::disarmed)
            return;
        state = State::arming;
        countdown = 3;
        armTick = now + second;
    }
    void sensor(AlarmReason why, bool enabled)
    {
        if (state != State::armed || !enabled)
            return;
        state = State::alarm;
        reason = why;
        entry.clear();
        pinError = false;
        screenShown = screenShown || armedScreenOn || alarmScreenOn;
    }
    void reset()
    {
        state = State::disarmed;
        armTick = never;
        screenShown = false;
        entry.clear();
        pinError = false;
    }
    bool disarm(bool rightOne)
    {
        if (lockout > 0)
            return false;
        if (state == State::alarm && pinOn && !rightOne) {
            pinError = true;
            if (++failures >= 5) {
                lockout = 30;
                lockoutTick = now + second;
            }
            return false;
        }
        failures = 0;
        reset();
        return true;
    }
    void type(char digit)
    {
        if (state != State::alarm || lockout > 0 || entry.size() >= 12)
            return;
        pinError = false;
        entry += digit;
    }
    void advance(milliseconds duration)
    {
        const auto end = now + duration;
        while (std::min(armTick, lockoutTick) <= end) {
            now = std::min(armTick, lockoutTick);
            if (armTick == now)
                tickCountdown();
            if (lockoutTick == now)
                tickLockout();
        }
        now = end;
    }
    void tickCountdown()
    {
        armTick = --countdown < 1 ? never : now + second;
        if (countdown >= 1)
            return;
        state = State::armed;
        screenShown = armedScreenOn;
    }
    void tickLockout()
    {
        lockoutTick = --lockout < 1 ? never : now + second;
        if (lockout >= 1)
            return;
        failures = 0;
        pinError = false;
    }
    GuardState guardState() const
    {
        switch (state) {
        case State::disarmed:
            return GuardState::disarmed();
        case State::arming:
            return GuardState::arming(countdown);
        case State::armed:
            return GuardState::armed();
        case State::alarm:
            break;
        }
        return GuardState::alarmTriggered(reason);
    }
};

class GuardModelTest : public GuardTest {
protected:
    struct Event {
        const char* name;
        std::function<void()> happen;
    };

    void pass(milliseconds duration)
    {
        laptop.advance(duration);
        model.advance(duration);
    }
    void pullCharger()
    {
        laptop.unplugCharger();
        if (std::exchange(onMains, false))
            model.sensor(AlarmReason::chargerDisconnected, model.chargerOn);
    }
    void plugCharger()
    {
        laptop.plugCharger();
        onMains = true;
    }
    void drain()
    {
        percent = percent == 100 ? 20 : percent + 20;
        laptop.setBattery(percent);
        if (!onMains)
            model.sensor(AlarmReason::chargerDisconnected, model.chargerOn);
    }
    // The lid is seen by the next poll; a countdown that ends before it makes the guard armed in time.
    void shutLid()
    {
        laptop.closeLid();
        pass(pollInterval - model.now % pollInterval);
        if (!std::exchange(lidClosed, true))
            model.sensor(AlarmReason::lidClosed, model.lidOn);
    }
    void openLid()
    {
        lidClosed = false;
        laptop.openLid();
        pass(pollInterval);
    }
    void idleTimer()
    {
        const bool vetoed = model.lidOn && (model.state == Model::State::armed || model.state == Model::State::alarm);
        EXPECT_EQ(laptop.askForSleep(), !vetoed);
        model.sensor(AlarmReason::lidClosed, model.lidOn);
    }
    void sleepMenu()
    {
        laptop.fallAsleep();
        // The notice comes in the same turn as the announcement, the announcement's own report one turn later.
        model.sensor(AlarmReason::sleepAttempted, model.lidOn);
    }
    void submit(const char* pin)
    {
        EXPECT_EQ(guard().disarm(pin ? std::optional<std::string>(pin) : std::nullopt),
                  model.disarm(pin && std::string_view(pin) == rightPin));
    }
    void typeDigit(char digit)
    {
        EXPECT_EQ(laptop.type(std::string(1, digit)), model.state == Model::State::alarm);
        model.type(digit);
    }
    void pressReturn()
    {
        const bool listens = model.state == Model::State::alarm;
        EXPECT_EQ(laptop.press(KeyEvent::returnKey), listens);
        if (listens)
            model.disarm(model.entry == rightPin);
    }
    void arm()
    {
        guard().startArming();
        model.arm();
    }
    void cancel()
    {
        if (model.state != Model::State::arming)
            return; // only the countdown offers it
        guard().cancelArming();
        model.reset();
    }

    void check(const char* event)
    {
        laptop.settle();
        checkGuard(event);
        checkLaptop(event);
    }
    void checkGuard(const char* event)
    {
        ASSERT_EQ(state(), model.guardState()) << event;
        ASSERT_EQ(screens.isShown, model.screenShown) << event;
        ASSERT_EQ(guard().enteredPin.get(), model.entry) << event;
        ASSERT_EQ(guard().pinError, model.pinError) << event;
        ASSERT_EQ(guard().failedPinAttempts, model.failures) << event;
        ASSERT_EQ(guard().lockoutSecondsRemaining, model.lockout) << event;
    }
    void checkLaptop(const char* event)
    {
        using S = Model::State;
        const bool alarm = model.state == S::alarm;
        const bool guarded = alarm || model.state == S::armed;
        ASSERT_EQ(laptop.speaker().isLooping(), alarm) << event;
        ASSERT_EQ(laptop.speaker().isHeld(), alarm) << event;
        ASSERT_EQ(laptop.desktop().presentationOptions, alarm ? 506U : 0U) << event;
        ASSERT_EQ(laptop.desktop().monitors(), alarm ? 1U : 0U) << event;
        ASSERT_EQ(laptop.holds().count(), guarded ? 4U : 0U) << event;
        ASSERT_EQ(laptop.power().declaredVeto, guarded && model.lidOn) << event;
        ASSERT_LT(laptop.time().waiting(), 60U) << event << ": something piles up";
        if (alarm) {
            ASSERT_EQ(laptop.speaker().volumePercent(), 100) << event;
            ASSERT_FALSE(laptop.speaker().isMuted()) << event;
        }
    }

    std::vector<Event> everything();

    Model model;
    bool onMains = true;
    bool lidClosed = false;
    int percent = 100;
};

std::vector<GuardModelTest::Event> GuardModelTest::everything()
{
    const auto flip = [this](bool Model::*field, void (AppState::*operation)(bool)) {
        return [this, field, operation] {
            model.*field = !(model.*field);
            (guard().*operation)(model.*field);
        };
    };
    return {{"arm", [this] { arm(); }},
            {"cancel", [this] { cancel(); }},
            {"a moment", [this] { pass(170ms); }},
            {"a second", [this] { pass(1s); }},
            {"the countdown", [this] { pass(3s); }},
            {"pull the charger", [this] { pullCharger(); }},
            {"plug the charger", [this] { plugCharger(); }},
            {"battery changes", [this] { drain(); }},
            {"shut the lid", [this] { shutLid(); }},
            {"open the lid", [this] { openLid(); }},
            {"idle timer", [this] { idleTimer(); }},
            {"sleep menu", [this] { sleepMenu(); }},
            {"right PIN", [this] { submit(rightPin); }},
            {"wrong PIN", [this] { submit("0000"); }},
            {"no PIN", [this] { submit(nullptr); }},
            {"digit 7", [this] { typeDigit('7'); }},
            {"digit 3", [this] { typeDigit('3'); }},
            {"Return", [this] { pressReturn(); }},
            {"shutdown asked", [this] { laptop.powerOff(); }},
            {"mute", [this] { laptop.speaker().setVolume(3, true); }},
            {"PIN switch", flip(&Model::pinOn, &AppState::togglePinRequirement)},
            {"lid switch", flip(&Model::lidOn, &AppState::toggleLidAlarm)},
            {"charger switch", flip(&Model::chargerOn, &AppState::toggleChargerAlarm)},
            {"armed screen switch", flip(&Model::armedScreenOn, &AppState::toggleFullscreenArmed)},
            {"alarm screen switch", flip(&Model::alarmScreenOn, &AppState::toggleFullscreenTriggered)}};
}

TEST_F(GuardModelTest, AgreesWithItsModelOverALongRandomLife)
{
    constexpr int steps = watchesThreads ? 50'000 : 500'000;
    const auto events = everything();
    std::mt19937 random(20261122);
    std::uniform_int_distribution<std::size_t> pick(0, events.size() - 1);
    for (int step = 0; step < steps; ++step) {
        const auto& event = events[pick(random)];
        event.happen();
        check(event.name);
        if (HasFatalFailure() || HasNonfatalFailure())
            FAIL() << "in step " << step << ": " << event.name;
    }
}

TEST_F(GuardModelTest, AgreesWithItsModelOverEveryShortSequence)
{
    guard().togglePinRequirement(true);
    model.pinOn = true;
    const std::vector<Event> events{{"arm", [this] { arm(); }},
                                    {"the countdown", [this] { pass(3s); }},
                                    {"pull the charger", [this] { pullCharger(); }},
                                    {"shut the lid", [this] { shutLid(); }},
                                    {"right PIN", [this] { submit(rightPin); }},
                                    {"five wrong PINs",
                                     [this] {
                                         for (int i = 0; i < 5; ++i)
                                             submit("0000");
                                     }},
                                    {"cancel", [this] { cancel(); }}};
    constexpr int depth = watchesThreads ? 4 : 5;
    std::size_t sequences = 1;
    for (int i = 0; i < depth; ++i)
        sequences *= events.size();
    for (std::size_t sequence = 0; sequence < sequences; ++sequence) {
        auto rest = sequence;
        for (int i = 0; i < depth; ++i, rest /= events.size()) {
            const auto& event = events[rest % events.size()];
            event.happen();
            check(event.name);
            if (HasFatalFailure() || HasNonfatalFailure())
                FAIL() << "in sequence " << sequence << ", step " << i << ": " << event.name;
        }
        pass(30s); // the longest lockout
        plugCharger();
        openLid();
        submit(rightPin);
    }
}

} // namespace
} // namespace kestrovan::test
