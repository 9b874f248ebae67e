#pragma once

#include <string_view>

namespace kestrovan {

/// Whether `a` comes after `b` where runs of digits count as numbers, of any length, and all else as characters in
/// the order of their code points, whatever the locale: 1.1.100 comes after 1.1.83, and 1.01 equals 1.1.
bool isVersionAfter(std::string_view a, std::string_view b);

} // namespace kestrovan
