#pragma once

#include <QImage>

namespace kestrovan {

/// The image with its corners cut off round; null if it is. `cornerRadius` is in pixels. Any thread.
QImage roundedImage(const QImage& image, double cornerRadius);

} // namespace kestrovan
