#pragma once

#include "platform/Published.h"

namespace kestrovan {

/// Whether the user asks programs to keep still, as people do whom moving pictures distract or make ill. Main thread.
class MotionPreference : public Observable {
public:
    /// False while it is not known.
    Published<bool> isReduced{*this, false};
};

} // namespace kestrovan
