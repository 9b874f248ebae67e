#pragma once

#include "l10n/AppLanguage.h"
#include "platform/Text.h"

#include <filesystem>

namespace kestrovan {

/// Photographs the deterrent on the two screens of a simulated laptop, in each of its states and in both languages,
/// into PNG files of `folder`. Needs a QGuiApplication. False if a picture could not be had or written.
bool takeDeterrentPictures(Text& text, const std::filesystem::path& folder);

} // namespace kestrovan
