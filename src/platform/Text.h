#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kestrovan {

/// Unicode as people see it; all texts are UTF-8, and a malformed byte counts as a character of its own. Any thread.
class Text {
public:
    virtual ~Text() = default;

    /// Whole characters (extended grapheme clusters, UAX #29), not bytes or code points.
    virtual std::size_t countCharacters(std::string_view text) const = 0;
    virtual std::string prefix(std::string_view text, std::size_t characters) const = 0;
    virtual std::string withoutLastCharacter(std::string_view text) const = 0;

    /// Without white space and line breaks (the Unicode property White_Space) at both ends.
    virtual std::string trimmed(std::string_view text) const = 0;

    /// The first character if its first code point has a Unicode numeric type other than none, else empty.
    virtual std::string leadingNumeric(std::string_view text) const = 0;
};

} // namespace kestrovan
