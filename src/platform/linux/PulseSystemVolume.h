#pragma once

#include "platform/Lifetime.h"
#include "platform/SystemVolume.h"
#include "platform/linux/PulseConnection.h"

namespace kestrovan {

class PulseLoudness;

/// The volume of the sound server's default sink and of what this program plays there. Nothing is set that is as it
/// should be already. While held, it is asserted again when the server returns or its default sink becomes another.
class PulseSystemVolume final : public SystemVolume {
public:
    /// The connection outlives this object.
    explicit PulseSystemVolume(PulseConnection& connection);
    PulseSystemVolume(const PulseSystemVolume&) = delete;
    PulseSystemVolume& operator=(const PulseSystemVolume&) = delete;
    ~PulseSystemVolume() override;

    void maximize() override;
    [[nodiscard]] Subscription keepAtMaximum() override;

private:
    PulseResident<PulseLoudness> loudness_;
    Lifetime lifetime_;
};

} // namespace kestrovan
