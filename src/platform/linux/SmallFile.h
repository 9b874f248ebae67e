#pragma once

#include "platform/linux/Descriptor.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace kestrovan {

/// The first line of a file of the kernel's (sysfs, procfs), without the white space at its end; `path` is relative to
/// the open folder `folder` (AT_FDCWD for none). None if it cannot be read. What is longer than a page is no such file.
inline std::optional<std::string> readSmallFile(int folder, const std::string& path)
{
    const Descriptor file(::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    std::array<char, 4096> buffer{};
    const auto length = file ? ::read(file.get(), buffer.data(), buffer.size()) : -1;
    if (length < 0)
        return std::nullopt;
    std::string text(buffer.data(), static_cast<std::size_t>(length));
    text.erase(std::min(text.find('\n'), text.size()));
    text.erase(text.find_last_not_of(" \t\r") + 1);
    return text;
}

} // namespace kestrovan
