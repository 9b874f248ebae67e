#pragma once

#include "platform/Lifetime.h"

#include <string>

namespace kestrovan {

/// What the lockdown needs of the guard: the PIN entry that the filtered keys drive, and the siren. Main thread.
class PinEntry {
public:
    virtual ~PinEntry() = default;

    virtual const std::string& pinEntryText() const = 0;
    virtual void setPinEntryText(std::string text) = 0;
    virtual void clearPinError() = 0;
    virtual bool isLockedOut() const = 0;
    virtual void submitPinEntry() = 0;
    virtual void restartSiren() = 0;

    /// What waits to drive the entry holds it by this.
    virtual const Lifetime& lifetime() const = 0;
};

} // namespace kestrovan
