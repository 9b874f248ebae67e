#pragma once

#include <QImage>

namespace kestrovan {

/// One of the program's own drawings, from its resources, as a square of `pixels` with its background transparent; no
/// image if there is no such file. (QImageReader would first look at the plug-ins of all picture formats, some
/// milliseconds of the program's start.) Any thread.
QImage drawSvg(const QString& file, int pixels);

} // namespace kestrovan
