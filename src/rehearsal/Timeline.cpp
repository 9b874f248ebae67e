#include "rehearsal/Timeline.h"

#include <iomanip>
#include <iostream>
#include <sstream>

namespace kestrovan {

void Timeline::note(const std::string& text)
{
    say("*", text);
}

void Timeline::expect(bool holds, const std::string& what)
{
    failures_ += holds ? 0 : 1;
    say(holds ? "ok" : "FAILED", what);
}

void Timeline::say(const std::string& sign, const std::string& text)
{
    std::ostringstream line;
    line << std::fixed << std::setprecision(2) << std::setw(7)
         << static_cast<double>(laptop_.time().elapsed().count()) / 1000.0 << " s  " << std::left << std::setw(7)
         << sign << text;
    lines_.push_back(line.str());
    std::cout << lines_.back() << std::endl;
}

// What keeps the machine awake, and under which name.
std::string Timeline::holds() const
{
    const auto& holds = laptop_.holds();
    if (holds.count() == 0)
        return "no holds";
    const std::string name = holds.assertions.empty() ? "" : " (" + holds.assertions.begin()->second + ")";
    return std::to_string(holds.assertions.size()) + " assertions, " + std::to_string(holds.activities->size()) +
           " activity, " + std::to_string(*holds.children) + " child process" + name;
}

std::string Timeline::kiosk() const
{
    const auto options = laptop_.desktop().presentationOptions;
    const auto filters = laptop_.desktop().monitors();
    return options == 0 && filters == 0
               ? "open"
               : "locked down, options " + std::to_string(options) + ", key filters: " + std::to_string(filters);
}

std::map<std::string, std::string> Timeline::observe() const
{
    const auto& entry = guard_.enteredPin.get();
    const auto& speaker = laptop_.speaker();
    return {{"guard", guard_.guardState->localizedTitle(guard_.currentLanguage)},
            {"siren", speaker.isLooping() ? "sounding" : "silent"},
            {"volume", speaker.isMuted() ? "muted" : std::to_string(speaker.volumePercent()) + " %"},
            {"awake", holds()},
            {"kiosk", kiosk()},
            {"PIN", entry.empty() ? "empty" : std::string(entry.size(), '*')},
            {"PIN error", guard_.pinError ? "wrong" : "none"},
            {"camera", laptop_.camera().isLightOn ? "light on" : "light off"},
            {"photos", std::to_string(guard_.intruderRecords->size())}};
}

void Timeline::look()
{
    const auto now = observe();
    for (const auto& [what, value] : now)
        if (last_[what] != value)
            say("", std::string(what).append(": ").append(value));
    last_ = now;
    for (; beepsSeen_ < laptop_.speaker().beeps(); ++beepsSeen_)
        say("", "beep");
    const auto& said = laptop_.diagnostics().lines;
    for (; diagnosticsSeen_ < said.size(); ++diagnosticsSeen_)
        say("says", said[diagnosticsSeen_]);
}

} // namespace kestrovan
