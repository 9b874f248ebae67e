#pragma once

#include "platform/linux/ScreenCover.h"

namespace kestrovan {

/// Full-screen windows on the outputs of a Wayland compositor, which alone decides what may cover them. They have the
/// keyboard as long as the compositor leaves it to them.
class WaylandScreenCover final : public ScreenCover {
public:
    void cover(QWindow& window, QScreen& screen) override;
    bool isCovering(const QWindow& window) const override;
};

} // namespace kestrovan
