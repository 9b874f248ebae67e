#pragma once

#include "platform/Diagnostics.h"
#include "platform/PresentationOptions.h"

#include <utility>

namespace kestrovan {

/// Where there is no desktop to hold: says so the first time that it is wanted.
class NoPresentationOptions final : public PresentationOptions {
public:
    explicit NoPresentationOptions(Diagnostics& diagnostics) : diagnostics_(diagnostics) {}

    void setOptions(std::uint32_t options) override
    {
        if (options != 0 && !std::exchange(complained_, true))
            diagnostics_.line("Lockdown: this desktop offers no way to hold its keyboard");
    }

private:
    Diagnostics& diagnostics_;
    bool complained_ = false;
};

} // namespace kestrovan
