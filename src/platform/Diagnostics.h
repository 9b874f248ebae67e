#pragma once

#include <string_view>

namespace kestrovan {

/// Where the program says what went wrong: one line each, without levels. Any thread; never blocks.
class Diagnostics {
public:
    virtual ~Diagnostics() = default;

    virtual void line(std::string_view text) = 0;
};

} // namespace kestrovan
