#pragma once

#include "platform/Screens.h"
#include "rigs/PrivateDisplay.h"
#include "rigs/TemporaryFolder.h"

#include <array>
#include <memory>

namespace kestrovan::rigs {

/// An X server, which DISPLAY names from then on, with two outputs side by side that can be plugged and unplugged while
/// it runs.
class TwoOutputs {
public:
    struct Size {
        int width;
        int height;
    };
    static constexpr Size small{1024, 768};
    static constexpr Size smaller{800, 600};
    static constexpr Size fullHd{1920, 1080};

    /// Sizes other than these three are none that the server knows.
    explicit TwoOutputs(Size first = small, Size second = smaller);

    bool isReady() const { return !display_->name().empty(); }
    const std::array<Screen, 2>& screens() const { return screens_; }
    void plug(std::size_t index) const;
    void unplug(std::size_t index) const;

private:
    TemporaryFolder folder_;
    std::array<Screen, 2> screens_;
    std::unique_ptr<PrivateDisplay> display_;
};

} // namespace kestrovan::rigs
