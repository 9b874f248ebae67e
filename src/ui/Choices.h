#pragma once

#include <algorithm>
#include <array>

namespace kestrovan {

/// Where a value stands among the choices of a picker; -1 if it is none of them.
template <class T, std::size_t count>
int indexOf(const std::array<T, count>& choices, const T& value)
{
    const auto found = std::find(choices.begin(), choices.end(), value);
    return found == choices.end() ? -1 : static_cast<int>(found - choices.begin());
}

/// The choice of that place; none if there is no such.
template <class T, std::size_t count>
const T* at(const std::array<T, count>& choices, int index)
{
    return index >= 0 && index < static_cast<int>(count) ? &choices[static_cast<std::size_t>(index)] : nullptr;
}

} // namespace kestrovan
