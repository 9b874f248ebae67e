#pragma once

#include "platform/linux/Descriptor.h"

#include <sys/eventfd.h>

#include <cstdint>

namespace kestrovan {

/// Ends another thread's poll(): that thread polls descriptor() for reading and calls acknowledge().
/// The calls that came in between are one wake-up. Any thread.
class WakeUp {
public:
    void call() const
    {
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = ::write(event_.get(), &one, sizeof one);
    }
    void acknowledge() const
    {
        std::uint64_t count = 0;
        [[maybe_unused]] const auto taken = ::read(event_.get(), &count, sizeof count);
    }
    int descriptor() const { return event_.get(); }

private:
    Descriptor event_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
};

} // namespace kestrovan
