#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace kestrovan {

/// Lets the user choose a picture among their files. Main thread.
class PicturePicker {
public:
    struct Texts {
        std::string title;
        std::string confirmButton;
    };

    virtual ~PicturePicker() = default;

    /// One file, of any kind of picture; none if the user thinks better of it. The dialog is modal: this returns when
    /// it is answered, and the main queue runs meanwhile.
    virtual std::optional<std::filesystem::path> choose(const Texts& texts) = 0;
};

} // namespace kestrovan
