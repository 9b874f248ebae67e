#pragma once

#include <cstdint>

namespace kestrovan {

/// What the desktop may do while this program is in front: a union of the flags below. Main thread.
class PresentationOptions {
public:
    enum Flag : std::uint32_t {
        hideDock = 2,
        hideMenuBar = 8,
        disableSystemMenu = 16,
        disableProcessSwitching = 32,
        disableForceQuit = 64,
        disableSessionTermination = 128,
        disableHidingApplication = 256,
    };

    virtual ~PresentationOptions() = default;

    /// 0 puts everything back. Returns at once; what cannot be had now is retried in the background.
    virtual void setOptions(std::uint32_t options) = 0;
};

} // namespace kestrovan
