#pragma once

#include <QImage>
#include <QSize>

#include <cstdint>
#include <optional>
#include <string>

namespace kestrovan {

/// Pictures in files of the user's choice, which may be anything. Any thread but the main one: files can be slow.
namespace pictureFile {

/// What tells one state of a file from the next.
struct Stamp {
    std::int64_t bytes = 0;
    std::int64_t changed = 0; ///< milliseconds since 1970
    bool operator==(const Stamp&) const = default;
};

/// None unless there is a regular file at `path`.
std::optional<Stamp> stampOf(const std::string& path);

/// The picture scaled, with its proportions kept, until it covers `size`; what stands out is cut off on both sides.
/// Null if the file is not a picture, is broken or cut short, is a drawing rather than a raster, or is larger than any
/// screen can use (256 MiB of file or 100 million pixels): it is never decoded in full if its format can do otherwise.
QImage cover(const std::string& path, QSize size);

} // namespace pictureFile

} // namespace kestrovan
