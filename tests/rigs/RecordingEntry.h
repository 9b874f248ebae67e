#pragma once

#include "responses/PinEntry.h"

#include <string>
#include <utility>
#include <vector>

namespace kestrovan::rigs {

/// The guard's part of the lockdown, without a guard.
class RecordingEntry final : public PinEntry {
public:
    const std::string& pinEntryText() const override { return text; }
    void setPinEntryText(std::string newText) override { text = std::move(newText); }
    void clearPinError() override { isError = false; }
    bool isLockedOut() const override { return isLocked; }
    void submitPinEntry() override { submitted.push_back(text); }
    void restartSiren() override { ++sirenRestarts; }
    const Lifetime& lifetime() const override { return life; }

    std::string text;
    bool isError = true;
    bool isLocked = false;
    int sirenRestarts = 0;
    std::vector<std::string> submitted;
    Lifetime life;
};

} // namespace kestrovan::rigs
