#include "platform/linux/PulseSystemVolume.h"

#include "platform/linux/PulseLoudness.h"

namespace kestrovan {

PulseSystemVolume::PulseSystemVolume(PulseConnection& connection)
    : loudness_(connection, [](PulseServer& server) { return std::make_unique<PulseLoudness>(server); })
{}

PulseSystemVolume::~PulseSystemVolume() = default;

void PulseSystemVolume::maximize()
{
    loudness_.perform([](PulseLoudness& loudness) { loudness.maximize(); });
}

Subscription PulseSystemVolume::keepAtMaximum()
{
    loudness_.perform([](PulseLoudness& loudness) { loudness.hold(); });
    return Subscription(
        lifetime_.guard([this] { loudness_.perform([](PulseLoudness& loudness) { loudness.release(); }); }));
}

} // namespace kestrovan
