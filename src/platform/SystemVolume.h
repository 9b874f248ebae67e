#pragma once

#include "platform/Observable.h"

namespace kestrovan {

/// The volume of the default sound output.
class SystemVolume {
public:
    virtual ~SystemVolume() = default;

    /// Sets the default output to 100 % and un-mutes it. Failure is ignored; no call waits for the sound server.
    /// May be called from any thread.
    virtual void maximize() = 0;

    /// Until the subscription ends, undoes at once what other programs do to the volume, as far as the sound server
    /// tells of it. Main thread.
    [[nodiscard]] virtual Subscription keepAtMaximum() = 0;
};

} // namespace kestrovan
