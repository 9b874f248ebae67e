#include "update/VersionOrder.h"

#include <algorithm>
#include <compare>

namespace kestrovan {

namespace {

bool startsWithDigit(std::string_view text)
{
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

// Takes the run of digits off the front of `text` and returns it without its leading zeros.
std::string_view takeNumber(std::string_view& text)
{
    const auto length = std::min(text.find_first_not_of("0123456789"), text.size());
    auto digits = text.substr(0, length);
    text.remove_prefix(length);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

std::strong_ordering compareNumbers(std::string_view a, std::string_view b)
{
    return a.size() != b.size() ? a.size() <=> b.size() : a.compare(b) <=> 0;
}

// The bytes of UTF-8, unsigned, are in the order of the code points.
std::strong_ordering takeAndCompare(std::string_view& a, std::string_view& b)
{
    if (startsWithDigit(a) && startsWithDigit(b)) {
        const auto number = takeNumber(a);
        return compareNumbers(number, takeNumber(b));
    }
    const auto order = static_cast<unsigned char>(a.front()) <=> static_cast<unsigned char>(b.front());
    a.remove_prefix(1);
    b.remove_prefix(1);
    return order;
}

} // namespace

bool isVersionAfter(std::string_view a, std::string_view b)
{
    while (!a.empty() && !b.empty())
        if (const auto order = takeAndCompare(a, b); order != 0)
            return order > 0;
    return !a.empty();
}

} // namespace kestrovan
