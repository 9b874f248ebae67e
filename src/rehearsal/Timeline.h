#pragma once

#include "core/Guard.h"
#include "platform/simulated/SimulatedLaptop.h"

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace kestrovan {

/// Writes down what happens on a simulated laptop, with times, as somebody in the café would notice it.
class Timeline {
public:
    Timeline(SimulatedLaptop& laptop, const AppState& guard) : laptop_(laptop), guard_(guard) {}

    /// What a person does, or a remark.
    void note(const std::string& text);
    /// Notes whatever has changed since the last look.
    void look();
    /// Notes whether something that must hold does.
    void expect(bool holds, const std::string& what);

    int failures() const { return failures_; }
    const std::vector<std::string>& lines() const { return lines_; }

private:
    void say(const std::string& sign, const std::string& text);
    std::map<std::string, std::string> observe() const;
    std::string holds() const;
    std::string kiosk() const;

    SimulatedLaptop& laptop_;
    const AppState& guard_;
    std::map<std::string, std::string> last_;
    std::vector<std::string> lines_;
    std::size_t diagnosticsSeen_ = 0;
    int beepsSeen_ = 0;
    int failures_ = 0;
};

} // namespace kestrovan
