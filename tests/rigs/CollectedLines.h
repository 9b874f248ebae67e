#pragma once

#include "platform/Diagnostics.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace kestrovan::rigs {

/// Keeps what the program says, to be looked at.
class CollectedLines final : public Diagnostics {
public:
    void line(std::string_view text) override
    {
        const std::scoped_lock lock(mutex_);
        lines_.emplace_back(text);
    }

    std::vector<std::string> all() const
    {
        const std::scoped_lock lock(mutex_);
        return lines_;
    }
    /// How many of the lines have `part` in them.
    std::ptrdiff_t count(const std::string& part) const
    {
        const auto lines = all();
        return std::ranges::count_if(lines, [&](const auto& line) { return line.find(part) != std::string::npos; });
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

} // namespace kestrovan::rigs
