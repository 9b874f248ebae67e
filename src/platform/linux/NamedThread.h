#pragma once

#include "platform/MainQueue.h"

#include <optional>
#include <string>
#include <thread>

namespace kestrovan {

/// A thread that debuggers show under the last dotted part of `label` (15 bytes of it, the kernel's limit) and that
/// the scheduler treats as at least `nice` (0 normal, up to 19 yielding). None if the system has no thread to give.
[[nodiscard]] std::optional<std::thread> startNamedThread(const std::string& label, int nice, Task body);

} // namespace kestrovan
