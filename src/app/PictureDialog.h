#pragma once

#include "platform/PicturePicker.h"

namespace kestrovan {

/// The desktop's file dialog, for pictures, before the main window. The deterrent screens work on while it is open.
/// Needs the QApplication. Main thread.
class PictureDialog final : public PicturePicker {
public:
    std::optional<std::filesystem::path> choose(const Texts& texts) override;
};

} // namespace kestrovan
