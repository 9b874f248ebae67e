#pragma once

#include "platform/Text.h"

namespace kestrovan {

/// Unicode by ICU, in its root locale: the same everywhere, whatever the user's own locale is. Should ICU's data be
/// missing, a code point counts as a character.
class IcuText final : public Text {
public:
    std::size_t countCharacters(std::string_view text) const override;
    std::string prefix(std::string_view text, std::size_t characters) const override;
    std::string withoutLastCharacter(std::string_view text) const override;
    std::string trimmed(std::string_view text) const override;
    std::string leadingNumeric(std::string_view text) const override;
};

} // namespace kestrovan
